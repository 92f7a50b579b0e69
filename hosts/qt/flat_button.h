// A push button that is as flat as the rest: the default one, and one that stays down, in the
// accent colour, with a picture in its edge.
#pragma once

#include <QImage>
#include <QPushButton>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

namespace orvello {

class FlatButton : public Guarded<QPushButton> {
 public:
  FlatButton(const QString& text, QWidget* parent, const Density& density)
      : Guarded(text, parent), density_(density) {}
  QSize sizeHint() const override;

  // Shown in the place of the text, which stays the button's name. Empty: the text.
  void set_picture(const QImage& picture);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void paint_picture(QPainter& painter) const;

  const Density& density_;
  QImage picture_;  // device pixels
};

}  // namespace orvello
