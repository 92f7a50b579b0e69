#include "hosts/qt/qt_look.h"

#include <QPalette>
#include <QWidget>
#include <algorithm>

#include "hosts/qt/qt_fonts.h"

namespace orvello {

QFont widget_font(const Density& density, double size, bool bold) {
  FontSpec spec;
  spec.height = std::max(6, density.scaled(size));
  spec.weight = bold ? 700 : 400;
  return text_font(spec);
}

void apply_form_look(QWidget& form, const Density& density) {
  QPalette palette;
  palette.setColor(QPalette::Window, QColor(kBarGround));
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Button, QColor(kBarGround));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(role, QColor(kInk));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(kFaintInk));
  palette.setColor(QPalette::Highlight, QColor(kAccent));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  form.setPalette(palette);
  form.setFont(widget_font(density));
}

}  // namespace orvello
