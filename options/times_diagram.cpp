#include "options/times_diagram.h"

#include <algorithm>

#include "draw/readable.h"
#include "resources/times_page_ids.h"

namespace orvello {
namespace {

constexpr Color kPeriodBlue = rgb(0, 0, 200), kLineGrey = rgb(153, 153, 153);
constexpr double kSeenLine = 2.5;

// As much of the form's text colour as it takes to see the line on the form.
Color seen_on_form(Color color, const FormColors& colors) {
  for (int share = 0; share < 256; share += 32)
    if (const Color seen = mixed(color, colors.text, share);
        contrast(colors.ground, seen) >= kSeenLine)
      return seen;
  return colors.text;
}

class DiagramPainter {
 public:
  DiagramPainter(Size size, Canvas& canvas) : size_(size), canvas_(canvas) {}

  void paint(const std::array<bool, 3>& lasting, Color blue, Color grey) {
    const int spine = size_.width * 3 / 4;
    for (int list = 0; list < 4; ++list) line(spine, size_.width, middle(list), grey);
    for (std::size_t i = 0; i < lasting.size(); ++i) {
      const Color color = lasting[i] ? blue : grey;
      const int from = middle(static_cast<int>(i)), to = middle(static_cast<int>(i) + 1);
      const int gap = 3 * thick_;  // leaves the list's own line free
      bar(spine, from + gap, to - gap, color);
      line(0, spine, (from + to) / 2, color);
    }
  }

 private:
  int middle(int list) const {
    return size_.height * (kTimesFirstMiddle + list * kTimesPitch) / kTimesHeight;
  }
  void line(int left, int right, int y, Color color) {
    canvas_.fill_rect({left, y - thick_ / 2, right - left, thick_}, color);
  }
  void bar(int x, int top, int bottom, Color color) {
    canvas_.fill_rect({x - thick_ / 2, top, thick_, bottom - top}, color);
  }

  Size size_;
  Canvas& canvas_;
  int thick_ = std::max(1, size_.width / 20);
};

}  // namespace

void paint_times_diagram(const std::array<bool, 3>& lasting, Size size, const FormColors& colors,
                         Canvas& canvas) {
  canvas.fill_rect({0, 0, size.width, size.height}, colors.ground);
  DiagramPainter(size, canvas)
      .paint(lasting, seen_on_form(kPeriodBlue, colors), seen_on_form(kLineGrey, colors));
}

void paint_times_separator(Size size, const FormColors& colors, Canvas& canvas) {
  canvas.fill_rect({0, 0, size.width, size.height}, colors.ground);
  canvas.fill_rect({0, 0, size.width, std::max(1, size.height / 2)},
                   seen_on_form(kLineGrey, colors));
}

}  // namespace orvello
