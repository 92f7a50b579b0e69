// Drawing into a memory bitmap: texts by the platform, all else pixel by pixel.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "hosts/win32/pixel_shapes.h"
#include "hosts/win32/win32_fonts.h"
#include "ports/canvas.h"

namespace orvello {

class Win32Canvas : public Canvas {
 public:
  // White. The bitmap belongs to the thread that makes it, which lives as long as this.
  Win32Canvas(std::shared_ptr<Win32Fonts> fonts, Size size);
  ~Win32Canvas() override;
  Win32Canvas(const Win32Canvas&) = delete;
  Win32Canvas& operator=(const Win32Canvas&) = delete;

  Size size() const override { return block_.size; }
  void set_clip(std::optional<Rect> clip) override;
  void fill_rect(const Rect& rect, Color color) override;
  void frame_rect(const Rect& rect, Color color, int width) override;
  void polyline(const std::vector<Point>& points, Color color, int width) override;
  void fill_polygon(const std::vector<Point>& points, Color color) override;
  void draw_text(TextView text, const Rect& box, const TextStyle& style) override;
  Size measure(TextView text, const FontSpec& font) override;
  void draw_image(const Image& image, const Rect& source, Point at) override;

  // Rows of `size().width`, 0x00RRGGBB, with all that was drawn so far.
  const std::uint32_t* pixels();

 private:
  PixelBlock& block();  // for writing beside the platform
  void take_font(const FontSpec& spec);
  void draw_line(Text text, const Rect& part, const Rect& box, const TextStyle& style);
  void draw_lines(const Text& text, const Rect& part, const Rect& box, const TextStyle& style);

  std::shared_ptr<Win32Fonts> fonts_;
  HDC dc_ = nullptr;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ bitmap_before_ = nullptr, font_before_ = nullptr;
  std::vector<std::uint32_t> spare_;  // in place of a bitmap that could not be made
  PixelBlock block_;
  Rect clip_;
  FontSpec font_;
  bool has_font_ = false;
  TEXTMETRICW metrics_{};
  bool unwritten_ = false;  // the platform may not have drawn all yet
};

}  // namespace orvello
