#include "views/period_note.h"

#include <algorithm>

#include "draw/wrap_text.h"

namespace orvello {

int note_height(const ScreenLayout& screen) {
  constexpr int kEmsOfALine = 40;
  const bool narrow = screen.work.width < kEmsOfALine * screen.fonts.normal8.height;
  return narrow ? screen.fonts.normal8.height * 11 / 4 : screen.fonts.normal9.height * 3 / 2;
}

void draw_note(TextView text, const Rect& place, Color color, const ScreenLayout& screen,
               Canvas& canvas) {
  const int width = place.width - 8 * screen.scale;
  if (text.empty() || width <= 0) return;
  std::vector<Text> lines;
  FontSpec font;
  int line_height = 1;
  std::size_t most = 1;
  for (const FontSpec& each : {screen.fonts.normal9, screen.fonts.normal8}) {
    font = each;
    line_height = font.height * 5 / 4;
    most = static_cast<std::size_t>(std::max(1, place.height / line_height));
    lines = word_wrapped(canvas, text, font, width);
    if (lines.size() <= most) break;
  }
  if (lines.size() > most) {
    for (std::size_t i = most; i < lines.size(); ++i) lines[most - 1] += u" " + lines[i];
    lines.resize(most);
    lines.back() = shortened(canvas, lines.back(), font, width);
  }
  const int height = static_cast<int>(lines.size()) * line_height;
  int y = place.y + (place.height - height) / 2;
  for (const Text& line : lines) {
    canvas.draw_text(line, {place.x, y, place.width, line_height}, {font, color, Align::center});
    y += line_height;
  }
}

}  // namespace orvello
