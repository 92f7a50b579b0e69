#include "hosts/qt/colored_label.h"

#include <QEvent>

#include "draw/readable.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/qt_text.h"

namespace orvello {

ColoredLabel::ColoredLabel(const QString& text, QWidget* parent, const Density& density)
    : Guarded(text, parent), density_(density) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setAlignment(turned_alignment(Qt::AlignLeft) | Qt::AlignVCenter);
}

void ColoredLabel::set_color(Color color) {
  color_ = color;
  take_color();
}

void ColoredLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && color_ &&
      taken_ != legible_on(density_.colors->ground, *color_))
    take_color();
}

void ColoredLabel::take_color() {
  taken_ = legible_on(density_.colors->ground, *color_);
  QPalette colors = palette();
  for (const auto group : {QPalette::Active, QPalette::Inactive})
    colors.setColor(group, QPalette::WindowText, qt_color(taken_));
  setPalette(colors);
}

}  // namespace orvello
