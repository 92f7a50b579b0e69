#include "hosts/qt/hover_text.h"

#include <QPainter>
#include <algorithm>

#include "hosts/qt/qt_surface.h"
#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

std::vector<Text> lines_of(const Text& text) {
  std::vector<Text> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find(u'\n', at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

}  // namespace

HoverText::HoverText(QWidget* parent, const Density& density) : Guarded(parent), density_(density) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setObjectName(QStringLiteral("hover"));
}

void HoverText::set_label(const HoverLabel& label) {
  label_ = label;
  setAccessibleName(to_qt(label.text).replace(u'\n', u' '));
  update();
}

void HoverText::paintEvent(QPaintEvent*) {
  const Size size{density_.device(width()), density_.device(height())};
  const Rect all{0, 0, size.width, size.height};
  QtSurface surface(size);
  Canvas& canvas = surface.canvas();
  canvas.fill_rect(all, label_.background);
  canvas.frame_rect(all, label_.text_color, 1);
  canvas.set_clip(all.inset(1, 1));
  const std::vector<Text> lines = lines_of(label_.text);
  const int line_height = canvas.measure(u"X", label_.font).height;
  int y = (size.height - line_height * static_cast<int>(lines.size())) / 2;
  for (const Text& line : lines) {
    canvas.draw_text(line, {1, y, size.width - 2, line_height},
                     {label_.font, label_.text_color, Align::center, true, false});
    y += line_height;
  }
  surface.publish();
  QPainter painter(this);
  surface.paint(painter, size, density_.ratio);
}

}  // namespace orvello
