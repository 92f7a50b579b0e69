#include "calendar/date_text.h"

#include <algorithm>

#include "calendar/date_pictures.h"
#include "calendar/short_names.h"
#include "calendar/time_slots.h"

namespace orvello {
namespace {

// The fixed buffers that times are read into hold a terminator too.
constexpr std::size_t kTimeLength = 10;
constexpr std::size_t kComboTimeLength = 79;
constexpr std::size_t kDesignatorLength = 9;

// `from_monday`: 0 Monday .. 6 Sunday.
Text day_name(int from_monday, bool truncate, const LocaleData& locale) {
  const auto day = static_cast<std::size_t>(from_monday);
  return truncate ? cut(locale.day_names[day], 3) : full_day_names(locale)[day];
}

Text time_text(CalendarDate date, bool clock24, const LocaleData& locale) {
  SystemTime time;
  if (!VariantTimeToSystemTime(date, time)) return {};
  return FormatTimePicture(clock24 ? u"H:mm" : u"h':'mm tt", time, locale);
}

bool is_digit(char16_t c) { return c >= u'0' && c <= u'9'; }

// Takes the next run of digits off the front of `text`; 0 when there is none.
int take_number(TextView& text) {
  constexpr std::int64_t kMost = 100000;  // more hours or minutes than anyone types
  while (!text.empty() && !is_digit(text[0])) text.remove_prefix(1);
  const std::int64_t value = leading_number(text);
  while (!text.empty() && is_digit(text[0])) text.remove_prefix(1);
  return static_cast<int>(std::min(value, kMost));
}

Text designator_at(int hour, const LocaleData& locale) {
  SystemTime time{.year = 2007, .month = 1, .day = 1, .hour = hour};
  return cut(FormatTimePicture(u"tt", time, locale), kDesignatorLength);
}

}  // namespace

Text DayNameForColumn(int column, bool truncate, int firstdayofweek, const LocaleData& locale) {
  if (column < 0 || column > 6) return {};
  return day_name(firstdayofweek == 0 ? (column + 6) % 7 : column, truncate, locale);
}

Text DayNameForWeekday(int weekday, bool truncate, const LocaleData& locale) {
  return DayNameForColumn(weekday, truncate, 0, locale);
}

void LoadMonthNames(MonthNames& names, const LocaleData& locale) {
  names = full_month_names(locale);
}

Text FormatTimeOfDay(CalendarDate date, bool clock24, const LocaleData& locale) {
  return cut(time_text(date, clock24, locale), kTimeLength);
}

void ShowTimeInCombo(ChoiceList& combo, CalendarDate date, bool clock24, const LocaleData& locale) {
  combo.edit_text = cut(time_text(date, clock24, locale), kComboTimeLength);
  const auto found = std::find(combo.items.begin(), combo.items.end(), combo.edit_text);
  combo.selected = found == combo.items.end() ? -1 : static_cast<int>(found - combo.items.begin());
}

Text AppointmentTimeText(int hour, int minute, bool clock24) {
  if (clock24) return format(u"%d:%.2d", hour, minute);
  if (hour == 0) return format(u"%d:%.2da", 12, minute);
  if (hour == 12) return format(u"%d:%.2dp", 12, minute);
  return hour > 12 ? format(u"%d:%.2dp", hour - 12, minute) : format(u"%d:%.2da", hour, minute);
}

bool ParseTimeText(TextView typed, CalendarDate& time_of_day) {
  time_of_day = 0;
  if (typed.empty()) return false;
  Text text = upper_ascii(typed);
  // Dots and the M go first, so that the half of the day is the last letter of "a.m." as of "a".
  for (char16_t& c : text)
    if (c == u'.' || c == u'M') c = u' ';
  while (!text.empty() && text.back() == u' ') text.pop_back();
  const char16_t half = text.empty() ? u' ' : text.back();

  TextView digits = text;
  SystemTime time;
  time.hour = take_number(digits);
  time.minute = take_number(digits);
  if (half == u'P' && time.hour != 12) time.hour += 12;
  if (half == u'A' && time.hour == 12) time.hour = 0;
  SystemTimeToVariantTime(time, time_of_day);
  time_of_day = orvello::time_of_day(time_of_day);
  return true;
}

void FillHalfHourList(ChoiceList& combo, bool clock24, const LocaleData& locale) {
  combo = {};
  combo.items.reserve(kTimeSlots);
  for (int slot = 0; slot < kTimeSlots; ++slot) {
    const int hour = slot / 2, minute = slot % 2 * 30;
    if (clock24) {
      combo.items.push_back(format(u"%d:%.2d", hour, minute));
    } else {
      const int shown = hour % 12 == 0 ? 12 : hour % 12;
      const Text designator = designator_at(hour < 12 ? 7 : 14, locale);
      combo.items.push_back(format(u"%d:%.2d %s", shown, minute, designator));
    }
  }
}

std::array<Text, 4> recurrence_choice_texts(CalendarDate start, const LocaleData& locale) {
  SystemTime time;
  VariantTimeToSystemTime(start, time);
  return {u"Once", format(u"Every %s", FormatDatePicture(u"dddd", time, locale)),
          format(u"Every %d of the month", time.day),
          format(u"Every %s %d", FormatDatePicture(u"MMMM", time, locale), time.day)};
}

}  // namespace orvello
