#include "views/notes_bubble.h"

#include <algorithm>
#include <cmath>

#include "draw/readable.h"
#include "draw/wrap_text.h"

namespace orvello {
namespace {

using Pointer = NotesBubble::Pointer;

// At single density.
constexpr int kMargin = 8, kPointerHeight = 10, kRadius = 8, kGap = 2;
constexpr int kLeastPoints = 6;
constexpr double kHalfPi = 1.57079632679;

// A quarter of a circle round `center`, from the angle `from` on, counted in quarters.
void add_corner(std::vector<Point>& outline, Point center, int radius, int from) {
  constexpr int kSteps = 8;
  for (int i = 0; i <= kSteps; ++i) {
    const double angle = kHalfPi * (from + static_cast<double>(i) / kSteps);
    outline.push_back({center.x + static_cast<int>(std::lround(radius * std::cos(angle))),
                       center.y + static_cast<int>(std::lround(radius * std::sin(angle)))});
  }
}

// Clockwise from the lower right corner; the pointer is a spike in the edge towards the row.
std::vector<Point> bubble_outline(const Rect& body, Pointer pointer, int pointer_x, int spike,
                                  int radius) {
  std::vector<Point> outline;
  const int left = body.x + radius, right = body.right() - 1 - radius;
  const int top = body.y + radius, bottom = body.bottom() - 1 - radius;
  add_corner(outline, {right, bottom}, radius, 0);
  if (pointer == Pointer::above) {
    outline.push_back({pointer_x + spike / 2, body.bottom() - 1});
    outline.push_back({pointer_x, body.bottom() - 1 + spike});
    outline.push_back({pointer_x - spike / 2, body.bottom() - 1});
  }
  add_corner(outline, {left, bottom}, radius, 1);
  add_corner(outline, {left, top}, radius, 2);
  if (pointer == Pointer::below) {
    outline.push_back({pointer_x - spike / 2, body.y});
    outline.push_back({pointer_x, body.y - spike});
    outline.push_back({pointer_x + spike / 2, body.y});
  }
  add_corner(outline, {right, top}, radius, 3);
  return outline;
}

int widest(const std::vector<Text>& lines, const FontSpec& font, Canvas& measure) {
  int width = 0;
  for (const Text& line : lines) width = std::max(width, measure.measure(line, font).width);
  return width;
}

// The text in the largest font, up to the one asked for, in which it fits on the screen.
void break_text(NotesBubble& bubble, const NotesBubbleInput& input, TextView notes, int room_width,
                int room_height, Canvas& measure) {
  for (int points = input.font_points;; --points) {
    bubble.font = font_of(points, 400, input.screen);
    bubble.lines = word_wrapped(measure, notes, bubble.font, room_width);
    bubble.line_height =
        std::max(bubble.font.height * 5 / 4, measure.measure(u"Wg", bubble.font).height);
    const int height = bubble.line_height * static_cast<int>(bubble.lines.size());
    if (height <= room_height || points <= kLeastPoints) return;
  }
}

}  // namespace

NotesBubble lay_out_notes_bubble(const NotesBubbleInput& input, TextView notes, Canvas& measure) {
  const int scale = input.screen.scale;
  const int margin = kMargin * scale, spike = kPointerHeight * scale, radius = kRadius * scale;
  const Size work = input.screen.work;
  NotesBubble bubble;
  const int most_width = work.width - 4 * scale;
  break_text(bubble, input, notes, std::min(most_width, work.width * 9 / 10) - 2 * margin,
             work.height - 2 * margin, measure);
  const int width = std::clamp(widest(bubble.lines, bubble.font, measure) + 2 * margin,
                               work.width / 3, most_width);
  const int body = bubble.line_height * static_cast<int>(bubble.lines.size()) + 2 * margin;
  const int height = body + spike;

  bubble.pointer = Pointer::above;
  int top = input.row.y - height - kGap * scale;
  if (top < kGap) {
    bubble.pointer = Pointer::below;
    top = input.row.bottom() + kGap * scale;
  }
  // A third of the bubble lies left of what it points at, as long as the screen lets it.
  const int x = std::clamp(input.aim_x - width / 3, 0, std::max(0, work.width - width));
  bubble.pointer_x = std::clamp(input.aim_x - x, 2 * spike, std::max(2 * spike, width - 2 * spike));
  if (top + height + kGap > work.height) {
    bubble.pointer = Pointer::none;
    top = std::max(0, work.height - height);
  }
  bubble.place = {x, top, width, std::min(height, work.height)};
  Rect inside{0, 0, width, body};
  if (bubble.pointer == Pointer::below) inside.y = spike;
  if (bubble.pointer == Pointer::none) inside.height = bubble.place.height;
  bubble.outline = bubble_outline(inside, bubble.pointer, bubble.pointer_x, spike, radius);
  bubble.text = inside.inset(margin, margin);
  return bubble;
}

void draw_notes_bubble(Canvas& canvas, const NotesBubble& bubble, const ScreenLayout& screen,
                       const ItemColors& colors) {
  canvas.fill_rect({0, 0, bubble.place.width, bubble.place.height},
                   colors[static_cast<std::size_t>(ColorSlot::notes_background)]);
  draw_notes_bubble_at({}, canvas, bubble, screen, colors);
}

void draw_notes_bubble_at(Point corner, Canvas& canvas, const NotesBubble& bubble,
                          const ScreenLayout& screen, const ItemColors& colors) {
  const Color background = colors[static_cast<std::size_t>(ColorSlot::notes_background)];
  const Color text = colors[static_cast<std::size_t>(ColorSlot::notes_text)];
  std::vector<Point> line = bubble.outline;
  for (Point& point : line) point = {point.x + corner.x, point.y + corner.y};
  canvas.fill_polygon(line, background);
  if (!line.empty()) line.push_back(line.front());
  const TextStyle style{bubble.font, readable_on(background, text)};
  canvas.polyline(line, style.color, screen.scale);
  Rect box{bubble.text.x + corner.x, bubble.text.y + corner.y, bubble.text.width,
           bubble.line_height};
  for (const Text& one : bubble.lines) {
    canvas.draw_text(one, box, style);
    box.y += bubble.line_height;
  }
}

}  // namespace orvello
