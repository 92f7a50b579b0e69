// Day, month and time texts as the screens show them, and a typed time read back.
#pragma once

#include <array>
#include <vector>

#include "base/text.h"
#include "calendar/calendar_date.h"
#include "calendar/locale_data.h"

namespace orvello {

// An editable combo box as a plain value.
struct ChoiceList {
  std::vector<Text> items;
  Text edit_text;
  int selected = -1;
  friend bool operator==(const ChoiceList&, const ChoiceList&) = default;
};

// Truncated names are the first three letters of the full name, deliberately not the locale's
// abbreviations.
Text DayNameForColumn(int column, bool truncate, int firstdayofweek, const LocaleData& locale);
Text DayNameForWeekday(int weekday, bool truncate, const LocaleData& locale);

using MonthNames = std::array<Text, 12>;
void LoadMonthNames(MonthNames& names, const LocaleData& locale);

Text FormatTimeOfDay(CalendarDate date, bool clock24, const LocaleData& locale);

// Puts the time into the combo's edit text and selects the item that reads the same, if any.
void ShowTimeInCombo(ChoiceList& combo, CalendarDate date, bool clock24, const LocaleData& locale);

// The short time on appointment lines and bars: "9:05", or "9:05a" without a blank.
Text AppointmentTimeText(int hour, int minute, bool clock24);

// False and 0.0 for empty text. Otherwise true and a time of day: what is out of range rolls
// forward and only the time of day is kept.
bool ParseTimeText(TextView typed, CalendarDate& time_of_day);

// Item i of the list is half-hour slot i.
void FillHalfHourList(ChoiceList& combo, bool clock24, const LocaleData& locale);

// The repeat list of the appointment editor, in its order.
std::array<Text, 4> recurrence_choice_texts(CalendarDate start, const LocaleData& locale);

// English in every locale: the recurrence editor's sentences are built from them.
inline constexpr std::array<TextView, 5> kOrdinalWords = {u"first", u"second", u"third", u"fourth",
                                                          u"last"};
inline constexpr std::array<TextView, 7> kEnglishDayNames = {
    u"Sunday", u"Monday", u"Tuesday", u"Wednesday", u"Thursday", u"Friday", u"Saturday"};

}  // namespace orvello
