// A canvas whose x is counted from the right edge: what is drawn as if lines ran from left to right
// comes out mirrored. Texts and pictures keep their own shape, only their places change.
#pragma once

#include "ports/canvas.h"

namespace orvello {

class MirroredCanvas : public Canvas {
 public:
  // `canvas` outlives this one.
  explicit MirroredCanvas(Canvas& canvas) : canvas_(canvas) {}

  Size size() const override { return canvas_.size(); }
  void set_clip(std::optional<Rect> clip) override;
  void fill_rect(const Rect& rect, Color color) override;
  void frame_rect(const Rect& rect, Color color, int width) override;
  void polyline(const std::vector<Point>& points, Color color, int width) override;
  void fill_polygon(const std::vector<Point>& points, Color color) override;
  void draw_text(TextView text, const Rect& box, const TextStyle& style) override;
  Size measure(TextView text, const FontSpec& font) override { return canvas_.measure(text, font); }
  void draw_image(const Image& image, const Rect& source, Point at) override;

 private:
  Rect flipped(const Rect& rect) const;
  std::vector<Point> flipped(std::vector<Point> points, int edge) const;
  Canvas& canvas_;
};

}  // namespace orvello
