// Dates as the platform's date controls take them, and what is alike of their calendars.
#pragma once

#include <windows.h>

#include "calendar/dates.h"
#include "draw/look_colors.h"

namespace orvello {

SYSTEMTIME system_time_of(const MonthDayYear& date);
MonthDayYear date_of(const SYSTEMTIME& time);

// Of a month calendar, also of one that a picker drops down.
void limit_calendar(HWND calendar);  // to the dates that can be chosen
void color_calendar(HWND calendar, const LookColors& colors);
void set_weeks(HWND calendar, const MonthDayYear& today, bool monday_first);

}  // namespace orvello
