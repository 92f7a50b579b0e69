#include "hosts/qt/qt_look.h"

#include <QScrollBar>
#include <QWidget>
#include <algorithm>

#include "draw/readable.h"
#include "hosts/qt/callbacks.h"
#include "hosts/qt/qt_fonts.h"

namespace orvello {
namespace {

// A style sheet knows no other colours than those it was written with.
class ScrollBarLook : public Guarded<QObject> {
 public:
  ScrollBarLook(QScrollBar& bar, const Density& density)
      : Guarded(&bar), bar_(bar), density_(density) {
    bar.installEventFilter(this);
    write();
  }

 protected:
  bool filter_event(QObject*, QEvent* event) override {
    if (event->type() == QEvent::PaletteChange && written_ != density_.colors)
      later(this, [this] { write(); });
    return false;
  }

 private:
  void write();

  QScrollBar& bar_;
  const Density& density_;
  const LookColors* written_ = nullptr;
};

void ScrollBarLook::write() {
  written_ = density_.colors;
  const int width = density_.scaled(kScrollBarWidth), edge = std::max(1, density_.scaled(2));
  const bool down = bar_.orientation() == Qt::Vertical;
  const QString sheet = QStringLiteral(
      "QScrollBar{%7:%1px;margin:0;border:none;background:%2}"
      "QScrollBar::handle{min-%8:%3px;margin:%4px;border-radius:%4px;background:%5}"
      "QScrollBar::handle:pressed{background:%6}"
      "QScrollBar::add-line,QScrollBar::sub-line{%8:0}"
      "QScrollBar::add-page,QScrollBar::sub-page{background:none}");
  bar_.setStyleSheet(sheet.arg(width)
                         .arg(qt_color(written_->ground).name())
                         .arg(density_.scaled(kTouchHeight))
                         .arg(edge)
                         .arg(qt_color(written_->edge).name(), qt_color(written_->accent).name(),
                              down ? QStringLiteral("width") : QStringLiteral("height"),
                              down ? QStringLiteral("height") : QStringLiteral("width")));
}

}  // namespace

QFont widget_font(const Density& density, double size, bool bold) {
  FontSpec spec;
  // Not a pixel more than what is laid out for it, where all has grown.
  const int height =
      density.text == 1 ? density.scaled(size) : static_cast<int>(size * density.unit());
  spec.height = std::max(6, height);
  spec.weight = bold ? 700 : 400;
  return text_font(spec);
}

QPalette look_palette(const LookColors& colors) {
  QPalette palette;
  const auto set = [&](std::initializer_list<QPalette::ColorRole> roles, Color color) {
    for (const auto role : roles) palette.setColor(role, qt_color(color));
  };
  set({QPalette::Window, QPalette::Button}, colors.ground);
  set({QPalette::Base, QPalette::ToolTipBase}, colors.field);
  set({QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText},
      colors.text);
  set({QPalette::PlaceholderText}, colors.dim_text);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, qt_color(colors.dim_text));
  set({QPalette::Highlight}, colors.accent);
  set({QPalette::HighlightedText}, colors.accent_text);
  return palette;
}

QImage picture_on(const QImage& picture, Color ground) {
  if (picture.isNull() || !is_dark(ground)) return picture;
  QImage adapted = picture.convertToFormat(QImage::Format_ARGB32);
  QRgb last = 0, last_adapted = 0;
  for (int y = 0; y < adapted.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(adapted.scanLine(y));
    for (int x = 0; x < adapted.width(); ++x) {
      if (qAlpha(line[x]) == 0) continue;
      if (line[x] != last) {
        last = line[x];
        const Color color = rgb(qRed(last), qGreen(last), qBlue(last));
        const QRgb shown = to_qt(visible_on(ground, color));
        last_adapted = qRgba(qRed(shown), qGreen(shown), qBlue(shown), qAlpha(last));
      }
      line[x] = last_adapted;
    }
  }
  return adapted;
}

void flatten_scroll_bar(QScrollBar& bar, const Density& density) {
  new ScrollBarLook(bar, density);
}

}  // namespace orvello
