#include "editor/letter_bar_paint.h"

#include <algorithm>

#include "draw/fit_text.h"

namespace orvello {
namespace {

// The tapped cell shows which of its symbols was picked.
void paint_picked(TextView label, int symbol, const Rect& cell, const FontSpec& font,
                  const FormColors& colors, Canvas& canvas) {
  canvas.fill_rect(cell, colors.accent);
  TextStyle style{font, colors.accent_text, Align::center};
  for (int i = 0; i < 3; ++i) {
    const int left = cell.width * i / 3, right = cell.width * (i + 1) / 3;
    const Rect place{cell.x + left, cell.y, right - left, cell.height};
    style.font.weight = i == symbol ? 700 : 400;
    style.color = i == symbol ? colors.accent : colors.accent_text;
    if (i == symbol) canvas.fill_rect(place.inset(0, cell.height / 8), colors.accent_text);
    canvas.draw_text(label.substr(static_cast<std::size_t>(i), 1), place, style);
  }
}

}  // namespace

Rect letter_cell(int cell, Size bar) {
  const int left = bar.width * cell / kLetterCells;
  return {left, 0, bar.width * (cell + 1) / kLetterCells - left, bar.height};
}

int letter_cell_at(int x, Size bar) {
  int cell = 0;
  while (cell < kLetterCells - 1 && x >= letter_cell(cell, bar).right()) ++cell;
  return cell;
}

void paint_letter_bar(const LetterBar& letters, Size size, const ScreenLayout& screen,
                      const FormColors& colors, Canvas& canvas) {
  canvas.fill_rect({0, 0, size.width, size.height}, colors.ground);
  std::vector<Text> labels;
  for (int i = 0; i < kLetterCells; ++i) labels.emplace_back(letters.label(i));
  const int room = size.width / kLetterCells - 4 * screen.scale;
  const FontSpec font = fitting_font(canvas, labels, room, 9, 400, screen);
  const TextStyle style{font, colors.text, Align::center};
  for (int i = 0; i < kLetterCells; ++i) {
    const Rect cell = letter_cell(i, size);
    if (i == letters.cell())
      paint_picked(labels[static_cast<std::size_t>(i)], letters.symbol(), cell, font, colors,
                   canvas);
    else
      canvas.draw_text(labels[static_cast<std::size_t>(i)], cell, style);
    if (i > 0)
      canvas.fill_rect({cell.x, 0, std::max(1, screen.scale / 2), size.height}, colors.line);
  }
  canvas.frame_rect({0, 0, size.width, size.height}, colors.line, std::max(1, screen.scale / 2));
}

}  // namespace orvello
