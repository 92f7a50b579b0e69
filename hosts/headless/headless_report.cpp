#include "hosts/headless/headless_report.h"

#include <algorithm>

namespace orvello {

void HeadlessReport::set_content(ReportContent content) {
  content_ = std::move(content);
  selected.clear();
  scrolled = speed_ = 0;
}

void HeadlessReport::set_mark(int row, ReportMark mark) {
  if (row >= 0 && row < static_cast<int>(content_.rows.size()))
    content_.rows[static_cast<std::size_t>(row)].mark = mark;
}

int HeadlessReport::titles_height() const {
  constexpr int kHeight = 20;
  const auto titled = [](const ReportColumn& column) { return !column.title.empty(); };
  return std::any_of(content_.columns.begin(), content_.columns.end(), titled) ? kHeight : 0;
}

int HeadlessReport::top_of(int row) const {
  int top = titles_height();
  for (int i = 0; i < row; ++i) top += content_.rows[static_cast<std::size_t>(i)].height;
  return top;
}

Rect HeadlessReport::row_place(int row) const {
  if (row < 0 || row >= static_cast<int>(content_.rows.size())) return {};
  return {place_.x, place_.y + top_of(row) - scrolled, place_.width,
          content_.rows[static_cast<std::size_t>(row)].height};
}

int HeadlessReport::row_at(Point point) const {
  if (point.y < titles_height()) return -1;
  for (int row = 0; row < static_cast<int>(content_.rows.size()); ++row)
    if (row_place(row).contains({point.x + place_.x, point.y + place_.y})) return row;
  return -1;
}

int HeadlessReport::lowest() const {
  return std::max(0, top_of(static_cast<int>(content_.rows.size())) - place_.height);
}

void HeadlessReport::scroll_by(int pixels) {
  speed_ = 0;
  scrolled = std::clamp(scrolled + pixels, 0, lowest());
}

void HeadlessReport::show_row(int row) {
  const Rect place = row_place(row);
  if (place.empty()) return;
  scroll_by(std::max(0, place.bottom() - place_.bottom()));
  scroll_by(std::min(0, row_place(row).y - place_.y - titles_height()));
}

void HeadlessReport::come_to_rest() { scroll_by(speed_ / 3); }

Point HeadlessReport::point_of(int row) const {
  const Rect place = row_place(row).moved(-place_.x, -place_.y);
  return place.center();
}

}  // namespace orvello
