// Drawing into a block of pixels with the toolkit's painter.
#pragma once

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <thread>
#include <vector>

#include "ports/canvas.h"

namespace orvello {

class QtCanvas : public Canvas {
 public:
  // Draws into `pixels`, rows of `size.width` 32-bit pixels, which outlive the canvas.
  QtCanvas(std::uint32_t* pixels, Size size, QImage::Format format = QImage::Format_RGB32);

  Size size() const override { return size_; }
  void set_clip(std::optional<Rect> clip) override;
  void fill_rect(const Rect& rect, Color color) override;
  void frame_rect(const Rect& rect, Color color, int width) override;
  void polyline(const std::vector<Point>& points, Color color, int width) override;
  void fill_polygon(const std::vector<Point>& points, Color color) override;
  void draw_text(TextView text, const Rect& box, const TextStyle& style) override;
  Size measure(TextView text, const FontSpec& font) override;
  void draw_image(const Image& image, const Rect& source, Point at) override;

 private:
  struct Font {
    FontSpec spec;
    QFont font;
    QFontMetrics metrics;
  };
  const Font& font_of(const FontSpec& spec);
  void draw_line(QString text, const Rect& box, const Font& font, Align align, bool centered);
  void restore_clip();

  std::uint32_t* pixels_;
  Size size_;
  Rect clip_;
  QImage image_;
  QPainter painter_;
  // The toolkit keeps its fonts by thread: they are made again when another one draws.
  std::thread::id fonts_thread_;
  std::vector<Font> fonts_;
};

}  // namespace orvello
