// A canvas that keeps what was drawn as a list of values. Text has fixed metrics, near those of the
// face the screens are designed for.
#pragma once

#include <vector>

#include "ports/canvas.h"

namespace orvello {

struct DrawnOperation {
  enum class Kind { fill, frame, polyline, polygon, text, image };
  Kind kind = Kind::fill;
  Rect box;  // of a polyline or polygon: what it spans; of an image: where it lies
  Color color = 0;
  int width = 0;  // of the pen
  std::vector<Point> points{};
  Text text{};
  TextStyle style{};
  Size text_size{};  // as measured
  const Image* image = nullptr;
  Rect source{};
};

Size headless_text_size(TextView text, const FontSpec& font);

class RecordingCanvas : public Canvas {
 public:
  explicit RecordingCanvas(Size size) : size_(size) {}

  Size size() const override { return size_; }
  void set_clip(std::optional<Rect> clip) override { clip_ = clip; }
  void fill_rect(const Rect& rect, Color color) override;
  void frame_rect(const Rect& rect, Color color, int width) override;
  void polyline(const std::vector<Point>& points, Color color, int width) override;
  void fill_polygon(const std::vector<Point>& points, Color color) override;
  void draw_text(TextView text, const Rect& box, const TextStyle& style) override;
  Size measure(TextView text, const FontSpec& font) override {
    return headless_text_size(text, font);
  }
  void draw_image(const Image& image, const Rect& source, Point at) override;

  const std::vector<DrawnOperation>& operations() const { return operations_; }
  std::vector<DrawnOperation> of_kind(DrawnOperation::Kind kind) const;
  // Single lines that are wider than their box, or whose letters are higher.
  std::vector<Text> clipped_texts() const;
  // The colour that fills last left at a point; nothing where none did.
  std::optional<Color> fill_at(Point point) const;
  void clear() { operations_.clear(); }

 private:
  Size size_;
  std::optional<Rect> clip_;
  std::vector<DrawnOperation> operations_;
};

}  // namespace orvello
