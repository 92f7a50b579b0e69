// Drawing. A canvas belongs to one surface and is used by one thread at a time; it need not be the
// user-interface thread. Everything is clipped to the surface. Nothing here can fail.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "base/color.h"
#include "base/geometry.h"
#include "base/image.h"
#include "base/text.h"

namespace orvello {

// Face "Tahoma" or the host's nearest one. `height` is the em height in pixels.
struct FontSpec {
  int height = 12;
  int weight = 400;  // 400 or 700
  bool cleartype = false;
  friend bool operator==(const FontSpec&, const FontSpec&) = default;
};

enum class Align { left, center, right };

struct TextStyle {
  FontSpec font;
  Color color = kBlack;
  Align align = Align::left;
  bool vertical_center = true;  // else from the box's top
  bool word_break = false;      // else a single line
};

class Canvas {
 public:
  virtual ~Canvas() = default;
  virtual Size size() const = 0;
  virtual void set_clip(std::optional<Rect> clip) = 0;
  virtual void fill_rect(const Rect& rect, Color color) = 0;
  // Draws inside the rectangle's edge, `width` pixels wide.
  virtual void frame_rect(const Rect& rect, Color color, int width) = 0;
  virtual void polyline(const std::vector<Point>& points, Color color, int width) = 0;
  virtual void fill_polygon(const std::vector<Point>& points, Color color) = 0;
  // Clipped to the box.
  virtual void draw_text(TextView text, const Rect& box, const TextStyle& style) = 0;
  virtual Size measure(TextView text, const FontSpec& font) = 0;
  // Copies `source` of the image, unscaled; magenta pixels are left out.
  virtual void draw_image(const Image& image, const Rect& source, Point at) = 0;
};

// An off-screen picture with two sides: the one being drawn and the one that painting copies. It is
// let go of by either thread: a drawing under way keeps one that was replaced.
class Surface {
 public:
  virtual ~Surface() = default;
  virtual Canvas& canvas() = 0;
  // Makes what has been drawn so far what painting copies. Called by the drawing thread; painting
  // may go on meanwhile on the user-interface thread.
  virtual void publish() = 0;
};

class Surfaces {
 public:
  virtual ~Surfaces() = default;
  virtual std::unique_ptr<Surface> create(Size size) = 0;  // filled white on both sides
};

}  // namespace orvello
