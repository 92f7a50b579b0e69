// Surfaces that draw nowhere and remember how often they were shown. A test that looks at drawings
// gives a recording canvas to the view itself.
#pragma once

#include <atomic>

#include "hosts/headless/recording_canvas.h"

namespace orvello {

class HeadlessSurface : public Surface, private Canvas {
 public:
  HeadlessSurface(Size size, std::atomic<int>& published) : size_(size), published_(published) {}
  Canvas& canvas() override { return *this; }
  void publish() override { ++published_; }

 private:
  Size size() const override { return size_; }
  void set_clip(std::optional<Rect>) override {}
  void fill_rect(const Rect&, Color) override {}
  void frame_rect(const Rect&, Color, int) override {}
  void polyline(const std::vector<Point>&, Color, int) override {}
  void fill_polygon(const std::vector<Point>&, Color) override {}
  void draw_text(TextView, const Rect&, const TextStyle&) override {}
  Size measure(TextView text, const FontSpec& font) override {
    return headless_text_size(text, font);
  }
  void draw_image(const Image&, const Rect&, Point) override {}

  Size size_;
  std::atomic<int>& published_;
};

class HeadlessSurfaces : public Surfaces {
 public:
  std::unique_ptr<Surface> create(Size size) override {
    sizes.push_back(size);
    return std::make_unique<HeadlessSurface>(size, published);
  }
  std::vector<Size> sizes;
  std::atomic<int> published{0};
};

}  // namespace orvello
