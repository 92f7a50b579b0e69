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
constexpr std::size_t kHeadingLines = 2;  // of the subject, and of when and where
constexpr double kHalfPi = 1.57079632679;

// A quarter of a circle round `center`, from the angle `from` on, counted in quarters. Points are
// whole pixels: too many of them would make it bumpy.
void add_corner(std::vector<Point>& outline, Point center, int radius, int from) {
  const int steps = std::max(3, radius / 3);
  for (int i = 0; i <= steps; ++i) {
    const double angle = kHalfPi * (from + static_cast<double>(i) / steps);
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

int widest(const NotesBubble& bubble, Canvas& measure) {
  int width = 0;
  for (const NotesBubble::Line& line : bubble.lines) {
    const FontSpec& font = line.bold ? bubble.bold_font : bubble.font;
    width = std::max(width, measure.measure(line.text, font).width);
  }
  return width;
}

// The first of these lines; what they do not hold ends in "...".
std::vector<Text> first_lines(std::vector<Text> lines, std::size_t most, const FontSpec& font,
                              int width, Canvas& measure) {
  if (lines.size() <= most) return lines;
  for (std::size_t i = most; i < lines.size(); ++i) lines[most - 1] += u" " + lines[i];
  lines.resize(most);
  lines.back() = shortened(measure, lines.back(), font, width);
  return lines;
}

// Answers the height of all lines.
int set_lines(NotesBubble& bubble, const NotesBubbleText& text, int width, Canvas& measure) {
  bubble.lines.clear();
  int top = 0;
  const auto add = [&](const std::vector<Text>& lines, bool bold) {
    for (const Text& line : lines) {
      bubble.lines.push_back({line, bold, top});
      top += bubble.line_height;
    }
  };
  const auto heading = [&](const Text& words, const FontSpec& font) {
    if (words.empty()) return;
    add(first_lines(word_wrapped(measure, words, font, width), kHeadingLines, font, width, measure),
        &font == &bubble.bold_font);
  };
  heading(text.subject, bubble.bold_font);
  heading(text.when_and_where, bubble.font);
  if (top > 0) top += bubble.line_height / 3;
  add(word_wrapped(measure, text.notes, bubble.font, width), false);
  return top;
}

// The text in the largest font, up to the one asked for, in which it fits on the screen; answers
// its height.
int break_text(NotesBubble& bubble, const NotesBubbleInput& input, const NotesBubbleText& text,
               Size room, Canvas& measure) {
  for (int points = input.font_points;; --points) {
    bubble.font = font_of(points, 400, input.screen);
    bubble.bold_font = font_of(points, 700, input.screen);
    bubble.line_height =
        std::max(bubble.font.height * 5 / 4, measure.measure(u"Wg", bubble.font).height);
    const int height = set_lines(bubble, text, room.width, measure);
    if (height <= room.height || points <= kLeastPoints) return height;
  }
}

}  // namespace

Text NotesBubbleText::spoken() const {
  Text all = subject;
  for (const Text* next : {&when_and_where, &notes})
    if (!next->empty()) all += (all.empty() ? Text() : Text(u". ")) + *next;
  return all;
}

NotesBubble lay_out_notes_bubble(const NotesBubbleInput& input, const NotesBubbleText& text,
                                 Canvas& measure) {
  const int scale = input.screen.scale;
  const int margin = kMargin * scale, spike = kPointerHeight * scale, radius = kRadius * scale;
  const Size work = input.screen.work;
  NotesBubble bubble;
  const int most_width = work.width - 4 * scale;
  const Size room{std::min(most_width, work.width * 9 / 10) - 2 * margin, work.height - 2 * margin};
  const int body = break_text(bubble, input, text, room, measure) + 2 * margin;
  const int width = std::clamp(widest(bubble, measure) + 2 * margin, work.width / 3, most_width);
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
  // All of the line's width lies inside, and of the spike's sharp end more than that.
  const Rect line{inside.x + scale / 2, inside.y + scale / 2, inside.width - scale / 2 * 2,
                  inside.height - scale / 2 * 2};
  bubble.outline =
      bubble_outline(line, bubble.pointer, bubble.pointer_x, spike - 2 * scale, radius);
  bubble.text = inside.inset(margin, margin);
  return bubble;
}

void draw_notes_bubble_at(Point corner, Canvas& canvas, const NotesBubble& bubble,
                          const ScreenLayout& screen, const ItemColors& colors) {
  const Color background = colors[static_cast<std::size_t>(ColorSlot::notes_background)];
  const Color text = colors[static_cast<std::size_t>(ColorSlot::notes_text)];
  std::vector<Point> line = bubble.outline;
  for (Point& point : line) point = {point.x + corner.x, point.y + corner.y};
  canvas.fill_polygon(line, background);
  if (!line.empty()) line.push_back(line.front());
  TextStyle style{bubble.font, readable_on(background, text)};
  canvas.polyline(line, style.color, screen.scale);
  for (const NotesBubble::Line& one : bubble.lines) {
    style.font = one.bold ? bubble.bold_font : bubble.font;
    canvas.draw_text(one.text,
                     {bubble.text.x + corner.x, bubble.text.y + corner.y + one.top,
                      bubble.text.width, bubble.line_height},
                     style);
  }
}

}  // namespace orvello
