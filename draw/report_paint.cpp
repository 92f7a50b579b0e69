#include "draw/report_paint.h"

#include <algorithm>

#include "draw/wrap_text.h"

namespace orvello {
namespace {

void draw_pictures(const ReportContent& content, const ReportRow& row, const Rect& box, Align align,
                   Canvas& canvas) {
  const auto picture_of = [&](int index) -> const Image& {
    return content.pictures[static_cast<std::size_t>(index)];
  };
  int width = -content.picture_gap;
  for (const int index : row.pictures) width += picture_of(index).width + content.picture_gap;
  const int room = std::max(0, box.width - width);
  int x = box.x + (align == Align::left ? 0 : align == Align::right ? room : room / 2);
  for (const int index : row.pictures) {
    const Image& picture = picture_of(index);
    canvas.draw_image(picture, {0, 0, picture.width, picture.height},
                      {x, box.y + (box.height - picture.height) / 2});
    x += picture.width + content.picture_gap;
  }
}

// One below the other, the row's `count` in the middle of its height; each shortened to its width.
void draw_lines(TextView text, int count, const Rect& room, const TextStyle& style,
                Canvas& canvas) {
  const int height = style.font.height * 12 / 10;
  for (int y = room.y + (room.height - count * height) / 2; !text.empty(); y += height) {
    const std::size_t end = std::min(text.find(u'\n'), text.size());
    canvas.draw_text(shortened(canvas, text.substr(0, end), style.font, room.width),
                     {room.x, y, room.width, height}, style);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

void draw_row(const ReportContent& content, const ReportRow& row, const Rect& box, Canvas& canvas) {
  canvas.fill_rect(box, row.background);
  if (row.line_above)
    canvas.fill_rect({box.x, box.y, box.width, content.line_width}, *row.line_above);
  const FontSpec& font = row.bold ? content.bold_font : content.font;
  int x = box.x;
  for (std::size_t i = 0; i < content.columns.size(); ++i) {
    const ReportColumn& column = content.columns[i];
    const Rect cell = intersection(box, {x, box.y, column.width, box.height});
    x += column.width;
    if (static_cast<int>(i) == content.picture_column) {
      draw_pictures(content, row, cell, column.align, canvas);
      continue;
    }
    const Rect room = cell.inset(content.padding, 0);
    if (i >= row.cells.size() || row.cells[i].empty() || room.empty()) continue;
    const Color text = i == 0 ? row.first_text.value_or(row.text) : row.text;
    const TextStyle style{font, text, column.align};
    if (row.lines)
      draw_lines(row.cells[i], lines_of(row), room, style, canvas);
    else
      canvas.draw_text(shortened(canvas, row.cells[i], font, room.width), room, style);
  }
}

}  // namespace

void draw_report(const ReportContent& content, const Rect& place, Canvas& canvas) {
  canvas.set_clip(place);
  canvas.fill_rect(place, content.background);
  int y = place.y;
  for (const ReportRow& row : content.rows) {
    if (y >= place.bottom()) break;
    draw_row(content, row, {place.x, y, place.width, row.height}, canvas);
    y += row.height;
  }
  canvas.set_clip(std::nullopt);
}

}  // namespace orvello
