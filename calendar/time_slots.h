// Half-hour slots 0-47 and times of day as fractions of a day.
#pragma once

#include <array>

#include "calendar/calendar_date.h"

namespace orvello {

inline constexpr int kTimeSlots = 48;

struct HourMinute {
  int hour = 0;
  int minute = 0;
  friend bool operator==(const HourMinute&, const HourMinute&) = default;
};

// Slots 0 and 1 are 24:00 and 24:30, deliberately: whoever builds a date from a slot drops the
// whole days, so they mean midnight and half past. A slot outside 0-47 is taken as the nearest.
HourMinute TimeSlotToHourMinute(int slot);

// As a fraction of a day; whole days are dropped.
CalendarDate time_at(const HourMinute& time);

// A slot's time of day as a fraction of a day.
CalendarDate time_of_slot(int slot);

// The four times of day that divide the day into bands, rounded to single precision.
std::array<CalendarDate, 4> TimeBandBounds(int timeA, int timeB, int timeC, int timeD);

// Hour and minute of a date as a fraction of a day, seconds dropped.
CalendarDate TimeOfDayPart(CalendarDate date);

}  // namespace orvello
