// Check boxes and radio buttons whose marks grow with the screen's density. All of their place can
// be tapped.
#pragma once

#include <QCheckBox>
#include <QRadioButton>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/density.h"

namespace orvello {

// Draws the mark and the text of either.
void paint_choice(QAbstractButton& button, const Density& density, bool round);

// A check box's tick in a box, in the pen's colour.
void paint_tick(QPainter& painter, const QRectF& box);

template <typename Button, bool kRound>
class FlatChoice : public Guarded<Button> {
 public:
  FlatChoice(const QString& text, QWidget* parent, const Density& density)
      : Guarded<Button>(text, parent), density_(density) {}

 protected:
  void paintEvent(QPaintEvent*) override { paint_choice(*this, density_, kRound); }
  bool hitButton(const QPoint& point) const override { return this->rect().contains(point); }

 private:
  const Density& density_;
};

using FlatCheckBox = FlatChoice<QCheckBox, false>;
using FlatRadioButton = FlatChoice<QRadioButton, true>;

}  // namespace orvello
