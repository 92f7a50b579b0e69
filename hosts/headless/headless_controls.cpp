#include "hosts/headless/headless_controls.h"

namespace orvello {

TextView within_limit(TextView text, int limit) {
  if (limit <= 0 || text.size() <= static_cast<std::size_t>(limit)) return text;
  text = text.substr(0, static_cast<std::size_t>(limit));
  if (text.back() >= 0xD800 && text.back() <= 0xDBFF) text.remove_suffix(1);
  return text;
}

void HeadlessChoice::set_rows(const std::vector<Text>& rows) {
  rows_ = rows;
  selected_ = -1;
}

void HeadlessChoice::select(int row) {
  const bool there = row >= 0 && row < static_cast<int>(rows_.size());
  selected_ = there ? row : -1;
  if (text_)
    *text_ = there ? Text(within_limit(rows_[static_cast<std::size_t>(row)], limit_)) : u"";
}

Text HeadlessChoice::text() const {
  if (text_) return *text_;
  return selected_ >= 0 ? rows_[static_cast<std::size_t>(selected_)] : Text();
}

int HeadlessChoice::row_of(TextView text) const {
  const auto found = std::find(rows_.begin(), rows_.end(), text);
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

void HeadlessList::set_rows(const std::vector<Text>& rows) {
  rows_ = rows;
  selected_.clear();
}

void HeadlessList::select(const std::vector<int>& rows) {
  selected_.clear();
  for (const int row : rows)
    if (is_row(row)) selected_.push_back(row);
  if (!several_ && selected_.size() > 1) selected_.resize(1);
  std::sort(selected_.begin(), selected_.end());
  selected_.erase(std::unique(selected_.begin(), selected_.end()), selected_.end());
}

Text HeadlessList::text() const {
  return selected_.empty() ? Text() : rows_[static_cast<std::size_t>(selected_.front())];
}

void HeadlessList::select_text(TextView text) {
  const auto found = std::find(rows_.begin(), rows_.end(), text);
  select({found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin())});
}

void HeadlessDate::set_date(const MonthDayYear& date) {
  if (triple_of(calendar_date_of(date)) == date) date_ = date;
}

void HeadlessRange::set_range(int least, int most) {
  least_ = least;
  most_ = std::max(least, most);
  set_position(position_);
}

void HeadlessRange::set_position(int position) { position_ = std::clamp(position, least_, most_); }

}  // namespace orvello
