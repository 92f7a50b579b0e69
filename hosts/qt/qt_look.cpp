#include "hosts/qt/qt_look.h"

#include <QPalette>
#include <QScrollBar>
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

void flatten_scroll_bar(QScrollBar& bar, const Density& density) {
  const int width = density.scaled(kScrollBarWidth), edge = std::max(1, density.scaled(2));
  const bool down = bar.orientation() == Qt::Vertical;
  const QString sheet = QStringLiteral(
      "QScrollBar{%7:%1px;margin:0;border:none;background:%2}"
      "QScrollBar::handle{min-%8:%3px;margin:%4px;border-radius:%4px;background:%5}"
      "QScrollBar::handle:pressed{background:%6}"
      "QScrollBar::add-line,QScrollBar::sub-line{%8:0}"
      "QScrollBar::add-page,QScrollBar::sub-page{background:none}");
  bar.setStyleSheet(sheet.arg(width)
                        .arg(QColor(kBarGround).name())
                        .arg(density.scaled(kTouchHeight))
                        .arg(edge)
                        .arg(QColor(kFaintInk).name(), QColor(kAccent).name(),
                             down ? QStringLiteral("width") : QStringLiteral("height"),
                             down ? QStringLiteral("height") : QStringLiteral("width")));
}

}  // namespace orvello
