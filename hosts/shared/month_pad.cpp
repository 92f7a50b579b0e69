#include "hosts/shared/month_pad.h"

#include <cmath>
#include <string>

#include "hosts/shared/date_keys.h"
#include "ports/messages.h"

namespace orvello {
namespace {

constexpr int kPadTouch = 27, kPadYear = 44, kPadNames = 18;  // design units

}  // namespace

void MonthPad::set_size(Size size, double unit) {
  size_ = size;
  unit_ = unit;
}

int MonthPad::scaled(int design) const { return static_cast<int>(std::lround(design * unit_)); }

Rect MonthPad::place(int part) const {
  const int side = scaled(kPadTouch), year = scaled(kPadYear), wide = size_.width;
  if (part < kArrows) {
    const int x[kArrows] = {0, wide - 3 * side - year, wide - 2 * side - year, wide - side};
    return {x[part], 0, side, side};
  }
  const int column = (part - kArrows) % kColumns, row = (part - kArrows) / kColumns;
  const int top = side + scaled(kPadNames), rest = size_.height - top;
  const int x = wide * column / kColumns, y = top + rest * row / kRows;
  return {x, y, wide * (column + 1) / kColumns - x, top + rest * (row + 1) / kRows - y};
}

int MonthPad::part_at(Point point) const {
  for (int part = 0; part < kParts; ++part)
    if (place(part).contains(point)) return part;
  return -1;
}

Rect MonthPad::between(int back, int on) const {
  const Rect before = place(back), after = place(on);
  return {before.right(), before.y, after.x - before.right(), before.height};
}

Rect MonthPad::names_room(int column) const {
  const Rect below = place(kArrows + column);
  return {below.x, scaled(kPadTouch), below.width, scaled(kPadNames)};
}

int MonthPad::weekday(int column) const { return monday_first_ ? column : (column + 6) % 7; }

MonthDayYear MonthPad::day(int part) const {
  const int sunday_based = DayOfWeek(date_.month, 1, date_.year);
  const int before = monday_first_ ? (sunday_based + 6) % 7 : sunday_based;
  return triple_of(day_of(date_.year, date_.month, 1 + part - kArrows - before));
}

MonthDayYear MonthPad::target(int part) const {
  if (part >= kArrows) return within_dates(day(part));
  const std::uint32_t key = part % 2 == 0 ? kKeyPageUp : kKeyPageDown;
  return date_after_key(date_, key, part >= 2).value_or(date_);
}

Text MonthPad::name(int part, const LocaleData& locale) const {
  static constexpr const char16_t* kNames[kArrows] = {u"Previous month", u"Next month",
                                                      u"Previous year", u"Next year"};
  if (part < kArrows) return kNames[part];
  const MonthDayYear shown = day(part);
  const Text& month = locale.genitive_month_names[static_cast<std::size_t>(shown.month - 1)];
  const auto digits = [](int number) {
    const std::string written = std::to_string(number);
    return Text(written.begin(), written.end());
  };
  return digits(shown.day) + u' ' + month + u' ' + digits(shown.year);
}

}  // namespace orvello
