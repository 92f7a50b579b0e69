#include "draw/report_paint.h"

#include <algorithm>

#include "draw/wrap_text.h"

namespace orvello {
namespace {

bool is_picture(const ReportContent& content, int index) {
  return index >= 0 && static_cast<std::size_t>(index) < content.pictures.size();
}

void draw_pictures(const ReportContent& content, const ReportRow& row, const Rect& box, Align align,
                   Canvas& canvas) {
  const int room = std::max(0, box.width - pictures_width(content, row));
  int x = box.x + (align == Align::left ? 0 : align == Align::right ? room : room / 2);
  for (const int index : row.pictures) {
    if (!is_picture(content, index)) continue;
    const Image& picture = content.pictures[static_cast<std::size_t>(index)];
    const int seen = std::clamp(box.right() - x, 0, picture.width);
    canvas.draw_image(picture, {0, 0, seen, picture.height},
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

// In the row's own colours, so that it can be seen on any of them.
void draw_mark(ReportMark mark, const Rect& box, Color color, Canvas& canvas) {
  if (mark == ReportMark::none) return;
  const int line = std::max(1, box.width / 14);
  canvas.frame_rect(box, color, line);
  if (mark != ReportMark::set) return;
  const auto at = [&](int across, int down) {
    return Point{box.x + box.width * across / 100, box.y + box.height * down / 100};
  };
  canvas.polyline({at(22, 52), at(43, 73), at(79, 29)}, color, std::max(2, box.width * 13 / 100));
}

void draw_cell(const ReportContent& content, const ReportRow& row, std::size_t column,
               const Rect& cell, Color color, Canvas& canvas) {
  const Rect room = cell.inset(content.padding, 0);
  if (column >= row.cells.size() || row.cells[column].empty() || room.empty()) return;
  const FontSpec& font = row.bold ? content.bold_font : content.font;
  const TextStyle style{font, color, content.columns[column].align};
  if (row.lines) return draw_lines(row.cells[column], lines_of(row), room, style, canvas);
  canvas.draw_text(shortened(canvas, report_line(row.cells[column]), font, room.width), room,
                   style);
}

}  // namespace

int pictures_width(const ReportContent& content, const ReportRow& row) {
  int width = 0;
  for (const int index : row.pictures) {
    if (!is_picture(content, index)) continue;
    width +=
        (width ? content.picture_gap : 0) + content.pictures[static_cast<std::size_t>(index)].width;
  }
  return width;
}

Text report_line(TextView cell) {
  Text line(cell);
  for (char16_t& unit : line)
    if (unit == u'\n' || unit == u'\r' || unit == u'\t') unit = u' ';
  return line;
}

void draw_report_row(const ReportContent& content, const ReportRow& row, const Rect& box,
                     const ReportRowLook& look, bool selected, Canvas& canvas) {
  canvas.fill_rect(box, selected ? content.selected_background : row.background);
  if (row.line_above)
    canvas.fill_rect({box.x, box.y, box.width, content.line_width}, *row.line_above);
  int x = box.x;
  for (std::size_t i = 0; i < content.columns.size(); ++i) {
    Rect cell = intersection(box, {x, box.y, look.widths[i], box.height});
    x += look.widths[i];
    if (cell.empty()) continue;
    const Color text = i == 0 ? row.first_text.value_or(row.text) : row.text;
    const Color color = selected ? content.selected_text : text;
    if (i == 0 && look.mark_side > 0) {
      draw_mark(row.mark,
                {cell.x + content.padding, box.y + (box.height - look.mark_side) / 2,
                 look.mark_side, look.mark_side},
                color, canvas);
      cell = {cell.x + look.mark_width, cell.y, cell.width - look.mark_width, cell.height};
    }
    if (static_cast<int>(i) == content.picture_column)
      draw_pictures(content, row, cell, content.columns[i].align, canvas);
    else
      draw_cell(content, row, i, cell, color, canvas);
  }
}

void draw_report(const ReportContent& content, const Rect& place, Canvas& canvas) {
  canvas.set_clip(place);
  canvas.fill_rect(place, content.background);
  ReportRowLook look;
  for (const ReportColumn& column : content.columns) look.widths.push_back(column.width);
  int y = place.y;
  for (const ReportRow& row : content.rows) {
    if (y >= place.bottom()) break;
    draw_report_row(content, row, {place.x, y, place.width, row.height}, look, false, canvas);
    y += row.height;
  }
  canvas.set_clip(std::nullopt);
}

}  // namespace orvello
