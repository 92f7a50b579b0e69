#include "hosts/qt/flat_slider.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "hosts/qt/direction.h"
#include "hosts/qt/qt_look.h"

namespace orvello {
namespace {

constexpr double kKnobRadius = 8;  // design units, as the groove
constexpr double kGroove = 4;

}  // namespace

FlatSlider::FlatSlider(QWidget* parent, const Density& density)
    : Guarded(Qt::Horizontal, parent), density_(density) {
  setFocusPolicy(Qt::StrongFocus);
  setRange(0, 100);
}

// With room for the ring of the focus around it.
int FlatSlider::radius() const {
  return std::min(density_.scaled(kKnobRadius), std::max(2, height() / 2 - density_.scaled(3)));
}

void FlatSlider::move_to(double x) {
  const int edge = radius() + density_.scaled(3), room = std::max(1, width() - 2 * edge);
  setValue(QStyle::sliderValueFromPosition(
      minimum(), maximum(), static_cast<int>(std::lround(x)) - edge, room, is_right_to_left()));
}

void FlatSlider::paintEvent(QPaintEvent*) {
  const LookColors& look = *density_.colors;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const int knob = radius(), edge = knob + density_.scaled(3);
  const int room = std::max(1, width() - 2 * edge);
  const bool turns = is_right_to_left();
  const double x =
      edge + QStyle::sliderPositionFromValue(minimum(), maximum(), value(), room, turns);
  const double y = height() / 2.0, thick = density_.scaled(kGroove), line = density_.scaled(1);
  const QColor ink = qt_color(isEnabled() ? look.accent : look.dim_text);
  painter.setPen(Qt::NoPen);
  painter.setBrush(qt_color(isEnabled() ? look.edge : look.line));
  painter.drawRoundedRect(QRectF(edge, y - thick / 2, room, thick), thick / 2, thick / 2);
  painter.setBrush(ink);
  const double begin = turns ? x : edge, length = turns ? edge + room - x : x - edge;
  painter.drawRoundedRect(QRectF(begin, y - thick / 2, length, thick), thick / 2, thick / 2);
  painter.setBrush(qt_color(isSliderDown() ? look.accent_tint : look.field));
  painter.setPen(QPen(ink, std::max(1.0, 2 * line)));
  painter.drawEllipse(QPointF(x, y), knob - line, knob - line);
  if (!hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(qt_color(look.accent), std::max(1.0, line)));
  painter.drawEllipse(QPointF(x, y), knob + 2 * line, knob + 2 * line);
}

void FlatSlider::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return event->ignore();
  setSliderDown(true);
  move_to(event->position().x());
}

void FlatSlider::mouseMoveEvent(QMouseEvent* event) {
  if (isSliderDown()) move_to(event->position().x());
}

void FlatSlider::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) setSliderDown(false);
}

// It scrolls the form: a slider that is passed on the way is not meant.
void FlatSlider::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace orvello
