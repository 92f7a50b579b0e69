#include "hosts/win32/date_system_time.h"

#include <commctrl.h>

#include "hosts/shared/date_keys.h"

namespace orvello {

SYSTEMTIME system_time_of(const MonthDayYear& date) {
  SYSTEMTIME time{};
  time.wYear = static_cast<WORD>(date.year);
  time.wMonth = static_cast<WORD>(date.month);
  time.wDay = static_cast<WORD>(date.day);
  time.wDayOfWeek = static_cast<WORD>(DayOfWeek(date.month, date.day, date.year));
  return time;
}

MonthDayYear date_of(const SYSTEMTIME& time) { return {time.wMonth, time.wDay, time.wYear}; }

void limit_calendar(HWND calendar) {
  const SYSTEMTIME range[2] = {system_time_of({1, 1, 1601}), system_time_of({12, 31, 9999})};
  SendMessageW(calendar, MCM_SETRANGE, GDTR_MIN | GDTR_MAX, reinterpret_cast<LPARAM>(range));
}

void color_calendar(HWND calendar, const LookColors& colors) {
  // Without the desktop's theme, which has colours of its own.
  SendMessageW(calendar, CCM_SETWINDOWTHEME, 0, reinterpret_cast<LPARAM>(L" "));
  const auto set = [&](WPARAM which, Color color) {
    SendMessageW(calendar, MCM_SETCOLOR, which, static_cast<LPARAM>(color));
  };
  set(MCSC_BACKGROUND, colors.field);
  set(MCSC_MONTHBK, colors.field);
  set(MCSC_TEXT, colors.text);
  set(MCSC_TITLEBK, colors.accent);
  set(MCSC_TITLETEXT, colors.accent_text);
  set(MCSC_TRAILINGTEXT, colors.dim_text);
}

void set_weeks(HWND calendar, const MonthDayYear& today, bool monday_first) {
  // The platform counts from Monday.
  SendMessageW(calendar, MCM_SETFIRSTDAYOFWEEK, 0, monday_first ? 0 : 6);
  const SYSTEMTIME time = system_time_of(today);
  if (is_real_date(today)) SendMessageW(calendar, MCM_SETTODAY, 0, reinterpret_cast<LPARAM>(&time));
}

}  // namespace orvello
