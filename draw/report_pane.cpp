#include "draw/report_pane.h"

#include <algorithm>
#include <numeric>

#include "draw/wrap_text.h"

namespace orvello {

bool ReportPane::any_mark() const {
  return std::any_of(content_.rows.begin(), content_.rows.end(),
                     [](const ReportRow& row) { return row.mark != ReportMark::none; });
}

void ReportPane::set_content(ReportContent content, Canvas& canvas) {
  content_ = std::move(content);
  selected_.clear();
  first_selected_ = -1;
  row_look_ = {};
  if (any_mark()) {
    row_look_.mark_side = look_.mark_side;
    row_look_.mark_width = look_.mark_side + look_.mark_gap;
  }
  for (std::size_t i = 0; i < content_.columns.size(); ++i) {
    const int width = content_.columns[i].width;
    row_look_.widths.push_back(width > 0 ? width : needed_width(i, canvas));
  }
  tops_.assign(1, 0);
  tops_.reserve(content_.rows.size() + 1);
  for (const ReportRow& row : content_.rows)
    tops_.push_back(tops_.back() + std::max(1, row.height));
  const bool titled = std::any_of(content_.columns.begin(), content_.columns.end(),
                                  [](const ReportColumn& column) { return !column.title.empty(); });
  titles_ = titled ? canvas.measure({}, content_.bold_font).height + look_.title_gap : 0;
  top_ = left_ = 0;
  set_room(room_);
}

// Nothing where there is nothing to show. Texts that cannot be wider than the widest one so far are
// not measured.
int ReportPane::needed_width(std::size_t column, Canvas& canvas) const {
  int width = 0;
  if (static_cast<int>(column) == content_.picture_column) {
    for (const ReportRow& row : content_.rows)
      width = std::max(width, pictures_width(content_, row));
    return width;
  }
  CharacterWidths plain(canvas, content_.font), bold(canvas, content_.bold_font);
  const Text& title = content_.columns[column].title;
  if (!title.empty()) width = canvas.measure(title, content_.bold_font).width;
  const int mark = column == 0 ? row_look_.mark_width : 0;
  width = std::max(width, mark);
  for (const ReportRow& row : content_.rows) {
    if (column >= row.cells.size() || row.cells[column].empty()) continue;
    for (const Text& piece : split(row.cells[column], row.lines ? u'\n' : u'\0')) {
      const Text line = report_line(piece);
      if ((row.bold ? bold : plain).surely_fits(line, width - mark)) continue;
      const FontSpec& font = row.bold ? content_.bold_font : content_.font;
      width = std::max(width, canvas.measure(line, font).width + mark);
    }
  }
  return width > 0 ? width + 2 * content_.padding : 0;
}

int ReportPane::whole_width() const {
  return std::accumulate(row_look_.widths.begin(), row_look_.widths.end(), 0);
}

// Columns that just fill the list do not scroll when a scroll bar takes some of their room.
void ReportPane::set_room(Size room) {
  room_ = room;
  sideways_ = whole_width() > room.width;
  keep_within();
}

Rect ReportPane::view() const {
  const int below = sideways_ ? look_.bar : 0;
  const int height = std::max(0, room_.height - titles_ - below);
  const int beside = rows_height() > height ? look_.bar : 0;
  return {0, titles_, std::max(0, room_.width - beside), height};
}

int ReportPane::lowest() const { return std::max(0, rows_height() - view().height); }

int ReportPane::farthest() const {
  return sideways_ ? std::max(0, whole_width() - view().width) : 0;
}

void ReportPane::keep_within() {
  top_ = std::clamp(top_, 0, lowest());
  left_ = std::clamp(left_, 0, farthest());
}

bool ReportPane::set_top(int top) {
  top_ = top;
  keep_within();
  return top_ == top;
}

void ReportPane::set_left(int left) {
  left_ = left;
  keep_within();
}

int ReportPane::top_for(int row) const {
  if (!has_row(row)) return top_;
  const auto at = static_cast<std::size_t>(row);
  const int below = tops_[at + 1] - view().height;
  return top_ > tops_[at] ? tops_[at] : std::min(std::max(top_, below), tops_[at]);
}

int ReportPane::row_at(Point point) const {
  const Rect rows = view();
  if (!rows.contains(point)) return -1;
  const int y = point.y - rows.y + top_;
  if (y >= rows_height()) return -1;
  const auto next = std::upper_bound(tops_.begin(), tops_.end(), y);
  return static_cast<int>(next - tops_.begin()) - 1;
}

Rect ReportPane::row_place(int row) const {
  if (!has_row(row)) return {};
  const auto at = static_cast<std::size_t>(row);
  const Rect rows = view();
  const int width = sideways_ ? std::max(whole_width(), rows.width) : rows.width;
  return {rows.x - left_, rows.y + tops_[at] - top_, width, tops_[at + 1] - tops_[at]};
}

void ReportPane::set_mark(int row, ReportMark mark) {
  if (has_row(row)) content_.rows[static_cast<std::size_t>(row)].mark = mark;
}

void ReportPane::select(const std::vector<int>& rows) {
  selected_.clear();
  first_selected_ = -1;
  for (const int row : rows) {
    if (!has_row(row)) continue;
    if (first_selected_ < 0) first_selected_ = row;
    selected_.push_back(row);
  }
  std::sort(selected_.begin(), selected_.end());
}

bool ReportPane::is_selected(int row) const {
  return std::binary_search(selected_.begin(), selected_.end(), row);
}

void ReportPane::paint_titles(Canvas& canvas) const {
  if (titles_ == 0) return;
  const Rect all{0, 0, view().width, titles_};
  canvas.set_clip(all);
  canvas.fill_rect(all, look_.title_ground);
  canvas.fill_rect({0, titles_ - look_.line, all.width, look_.line}, look_.title_line);
  int x = -left_;
  for (std::size_t i = 0; i < content_.columns.size(); ++i) {
    const ReportColumn& column = content_.columns[i];
    const Rect box =
        Rect{x, 0, row_look_.widths[i], titles_ - look_.line}.inset(content_.padding, 0);
    x += row_look_.widths[i];
    if (column.title.empty() || box.empty()) continue;
    canvas.draw_text(shortened(canvas, column.title, content_.bold_font, box.width), box,
                     {content_.bold_font, look_.title_text, column.align});
  }
}

void ReportPane::paint(Canvas& canvas) const {
  paint_titles(canvas);
  const Rect rows = view();
  canvas.set_clip(rows);
  canvas.fill_rect(rows, content_.background);
  for (int row = row_at({rows.x, rows.y}); has_row(row); ++row) {
    const Rect box = row_place(row);
    if (box.y >= rows.bottom()) break;
    draw_report_row(content_, content_.rows[static_cast<std::size_t>(row)], box, row_look_,
                    is_selected(row), canvas);
  }
  canvas.set_clip(std::nullopt);
}

}  // namespace orvello
