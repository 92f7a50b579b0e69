#include "calendar/time_slots.h"

#include <algorithm>

namespace orvello {

CalendarDate time_at(const HourMinute& hour_minute) {
  SystemTime time;
  time.hour = hour_minute.hour;
  time.minute = hour_minute.minute;
  CalendarDate date = 0;
  SystemTimeToVariantTime(time, date);
  return time_of_day(date);
}

HourMinute TimeSlotToHourMinute(int slot) {
  const int known = std::clamp(slot, 0, kTimeSlots - 1);
  return {known < 2 ? 24 : known / 2, known % 2 == 0 ? 0 : 30};
}

CalendarDate time_of_slot(int slot) { return time_at(TimeSlotToHourMinute(slot)); }

std::array<CalendarDate, 4> TimeBandBounds(int timeA, int timeB, int timeC, int timeD) {
  const auto bound = [](int slot) -> CalendarDate {
    return static_cast<float>(time_of_slot(slot));
  };
  return {bound(timeA), bound(timeB), bound(timeC), bound(timeD)};
}

CalendarDate TimeOfDayPart(CalendarDate date) {
  SystemTime time;
  if (!VariantTimeToSystemTime(date, time)) return 0;
  return time_at({time.hour, time.minute});
}

}  // namespace orvello
