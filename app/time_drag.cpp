#include "app/time_drag.h"

#include <algorithm>
#include <cmath>

#include "calendar/date_text.h"

namespace orvello {
namespace {

constexpr std::int64_t kQuarter = 15 * 60, kMinute = 60;
constexpr int kQuarterPixels = 8;  // at 96 dpi: a screen's height is most of a day

}  // namespace

std::optional<TimeDrag> TimeDrag::of(const DayRow& row, CalendarDate end, Day day, int dpi) {
  if (row.kind != DayRow::Kind::timed || row.start == kNoDate) return std::nullopt;
  if (whole_day(row.start) != day || whole_day(end) != day) return std::nullopt;
  return TimeDrag(to_seconds(row.start), to_seconds(end), day,
                  std::max(1, kQuarterPixels * dpi / 96));
}

CalendarDate TimeDrag::start_at(int pixels) const {
  const auto quarters = std::lround(static_cast<double>(pixels) / quarter_);
  if (quarters == 0) return to_calendar_date(start_);
  const std::int64_t at = start_ - midnight_of(day_);
  // A day's last moment belongs to it; an end at midnight would be the next day's.
  const std::int64_t latest = kSecondsPerDay - kMinute - (end_ - start_);
  const std::int64_t wanted = (at + quarters * kQuarter + kQuarter / 2) / kQuarter * kQuarter;
  return to_calendar_date(midnight_of(day_) +
                          std::clamp<std::int64_t>(wanted, 0, latest / kQuarter * kQuarter));
}

Text TimeDrag::label_at(int pixels, bool clock24) const {
  const CalendarDate start = start_at(pixels);
  const auto text = [clock24](CalendarDate date) {
    SystemTime time;
    VariantTimeToSystemTime(date, time);
    return AppointmentTimeText(time.hour, time.minute, clock24);
  };
  const CalendarDate end = to_calendar_date(to_seconds(start) + (end_ - start_));
  return format(u"%s-%s", text(start), text(end));
}

}  // namespace orvello
