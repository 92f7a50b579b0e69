#include "draw/mirrored_canvas.h"

#include "draw/mirrored.h"

namespace orvello {

Rect MirroredCanvas::flipped(const Rect& rect) const { return mirrored(rect, size().width); }

std::vector<Point> MirroredCanvas::flipped(std::vector<Point> points, int edge) const {
  for (Point& point : points) point.x = size().width - edge - point.x;
  return points;
}

void MirroredCanvas::set_clip(std::optional<Rect> clip) {
  canvas_.set_clip(clip ? std::optional(flipped(*clip)) : std::nullopt);
}

void MirroredCanvas::fill_rect(const Rect& rect, Color color) {
  canvas_.fill_rect(flipped(rect), color);
}

void MirroredCanvas::frame_rect(const Rect& rect, Color color, int width) {
  canvas_.frame_rect(flipped(rect), color, width);
}

// A line of an odd width lies on pixels, one of an even width between them.
void MirroredCanvas::polyline(const std::vector<Point>& points, Color color, int width) {
  canvas_.polyline(flipped(points, width % 2), color, width);
}

void MirroredCanvas::fill_polygon(const std::vector<Point>& points, Color color) {
  canvas_.fill_polygon(flipped(points, 0), color);
}

void MirroredCanvas::draw_text(TextView text, const Rect& box, const TextStyle& style) {
  TextStyle other = style;
  if (style.align != Align::center)
    other.align = style.align == Align::left ? Align::right : Align::left;
  canvas_.draw_text(text, flipped(box), other);
}

void MirroredCanvas::draw_image(const Image& image, const Rect& source, Point at) {
  canvas_.draw_image(image, source, {size().width - at.x - source.width, at.y});
}

}  // namespace orvello
