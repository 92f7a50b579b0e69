// A text on a form, perhaps in a colour of its own.
#pragma once

#include <QLabel>
#include <optional>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

namespace orvello {

class ColoredLabel : public Guarded<QLabel> {
 public:
  // Wraps, and is never markup: it may be an appointment's text.
  ColoredLabel(const QString& text, QWidget* parent, const Density& density);

  // As it is meant on a light form; on another one it is adapted until it can be read.
  void set_color(Color color);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void take_color();

  const Density& density_;
  std::optional<Color> color_;
  Color taken_ = kBlack;
};

}  // namespace orvello
