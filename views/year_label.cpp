#include "views/year_label.h"

#include <algorithm>

#include "draw/wrap_text.h"

namespace orvello {

namespace {

// Subjects may hold line ends; a line of the label is one line.
Text one_line(Text text) {
  std::replace_if(
      text.begin(), text.end(), [](char16_t c) { return c < u' '; }, u' ');
  return text;
}

std::vector<Text> label_lines(TextView date_text, const std::vector<CompactRow>& rows,
                              const LocaleData& locale) {
  std::vector<Text> lines{Text(date_text)};
  for (const CompactRow& row : rows) {
    const auto left = static_cast<int>(&rows.back() - &row) + 1;
    if (static_cast<int>(lines.size()) == kLabelLines - 1 && left > 1) {
      lines.push_back(local_digits(format(u"+%d", left), locale));
      break;
    }
    const Text time = local_digits(row.time, locale);
    lines.push_back(row.subject.empty() ? time : time + u" " + row.subject);
  }
  return lines;
}

}  // namespace

Rect place_beside(const Rect& cell, Size size, Size work, int gap) {
  const int x =
      std::clamp(cell.center().x - size.width / 2, 0, std::max(0, work.width - size.width));
  const int y =
      std::clamp(cell.center().y - size.height / 2, 0, std::max(0, work.height - size.height));
  const int above = cell.y - gap - size.height, below = cell.bottom() + gap;
  if (above >= 0) return {x, above, size.width, size.height};
  if (below + size.height <= work.height) return {x, below, size.width, size.height};
  const int left = cell.x - gap - size.width, right = cell.right() + gap;
  return {left >= 0 ? left : std::min(right, std::max(0, work.width - size.width)), y, size.width,
          size.height};
}

YearLabel year_label(TextView date_text, const std::vector<CompactRow>& rows, const Rect& cell,
                     const ScreenLayout& screen, const LocaleData& locale, Canvas& canvas) {
  YearLabel label;
  label.font = screen.fonts.normal8;
  const int margin = 4 * screen.scale;
  const int widest = std::min(screen.work.width * 3 / 4, 3 * screen.dpi_x);
  Size size{0, 2 * screen.scale + 2};
  for (const Text& line : label_lines(date_text, rows, locale)) {
    const Text shown = shortened(canvas, one_line(line), label.font, widest - 2 * margin);
    if (!label.text.empty()) label.text += u'\n';
    label.text += shown;
    const Size text = canvas.measure(shown, label.font);
    size.width = std::max(size.width, text.width + 2 * margin);
    size.height += text.height;
  }
  label.place = place_beside(cell, size, screen.work, 2 * screen.scale);
  return label;
}

}  // namespace orvello
