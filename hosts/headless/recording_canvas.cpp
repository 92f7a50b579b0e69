#include "hosts/headless/recording_canvas.h"

namespace orvello {

namespace {

// Widths in hundredths of the em height.
int letter_width(char16_t c) {
  const TextView narrow = u"iljI.,:;'!|()[] ft";
  const TextView wide = u"mwMWЖШЩЮжшщюмфыЫМФ@%";
  if (c >= u'0' && c <= u'9') return 55;
  if (narrow.find(c) != TextView::npos) return 33;
  if (wide.find(c) != TextView::npos) return 76;
  const bool capital = (c >= u'A' && c <= u'Z') || (c >= u'А' && c <= u'Я');
  return capital ? 64 : 55;
}

Rect span_of(const std::vector<Point>& points) {
  if (points.empty()) return {};
  Point low = points[0], high = points[0];
  for (const Point& point : points) {
    low = {std::min(low.x, point.x), std::min(low.y, point.y)};
    high = {std::max(high.x, point.x), std::max(high.y, point.y)};
  }
  return {low.x, low.y, high.x - low.x, high.y - low.y};
}

}  // namespace

void RecordingCanvas::fill_rect(const Rect& rect, Color color) {
  operations_.push_back({.kind = DrawnOperation::Kind::fill, .box = rect, .color = color});
}

void RecordingCanvas::frame_rect(const Rect& rect, Color color, int width) {
  operations_.push_back(
      {.kind = DrawnOperation::Kind::frame, .box = rect, .color = color, .width = width});
}

void RecordingCanvas::polyline(const std::vector<Point>& points, Color color, int width) {
  operations_.push_back({.kind = DrawnOperation::Kind::polyline,
                         .box = span_of(points),
                         .color = color,
                         .width = width,
                         .points = points});
}

void RecordingCanvas::fill_polygon(const std::vector<Point>& points, Color color) {
  operations_.push_back({.kind = DrawnOperation::Kind::polygon,
                         .box = span_of(points),
                         .color = color,
                         .points = points});
}

void RecordingCanvas::draw_text(TextView text, const Rect& box, const TextStyle& style) {
  operations_.push_back({.kind = DrawnOperation::Kind::text,
                         .box = box,
                         .color = style.color,
                         .text = Text(text),
                         .style = style,
                         .text_size = measure(text, style.font)});
}

Size headless_text_size(TextView text, const FontSpec& font) {
  int hundredths = 0;
  for (const char16_t c : text) hundredths += letter_width(c) + (font.weight >= 700 ? 8 : 0);
  return {(hundredths * font.height + 99) / 100, font.height * 6 / 5};
}

void RecordingCanvas::draw_image(const Image& image, const Rect& source, Point at) {
  operations_.push_back({.kind = DrawnOperation::Kind::image,
                         .box = {at.x, at.y, source.width, source.height},
                         .image = &image,
                         .source = source});
}

std::vector<DrawnOperation> RecordingCanvas::of_kind(DrawnOperation::Kind kind) const {
  std::vector<DrawnOperation> found;
  for (const DrawnOperation& operation : operations_)
    if (operation.kind == kind) found.push_back(operation);
  return found;
}

std::vector<Text> RecordingCanvas::clipped_texts() const {
  std::vector<Text> clipped;
  for (const DrawnOperation& drawn : operations_) {
    if (drawn.kind != DrawnOperation::Kind::text || drawn.style.word_break) continue;
    // The line's leading may be cut, the em may not.
    if (drawn.text_size.width > drawn.box.width || drawn.style.font.height > drawn.box.height)
      clipped.push_back(drawn.text);
  }
  return clipped;
}

std::optional<Color> RecordingCanvas::fill_at(Point point) const {
  std::optional<Color> color;
  for (const DrawnOperation& drawn : operations_)
    if (drawn.kind == DrawnOperation::Kind::fill && drawn.box.contains(point)) color = drawn.color;
  return color;
}

}  // namespace orvello
