// Names of days and months that are short and still can be told apart.
#pragma once

#include <array>
#include <vector>

#include "base/text.h"
#include "calendar/locale_data.h"

namespace orvello {

using WeekNames = std::array<Text, 7>;
using YearNames = std::array<Text, 12>;

// Choices by what is best to read, each of names that differ: the first that fits the room is to be
// shown, else the last. Where the names cut after three letters differ they are the only choice of
// days; else the locale's abbreviations come first.
std::vector<WeekNames> short_day_names(int firstdayofweek, const LocaleData& locale);  // by column
// The same where names are abbreviated rather than cut, Monday first.
std::vector<WeekNames> abbreviated_day_names(const LocaleData& locale);
// One letter each, or as short as the locale has them, by column: above the days of a small grid,
// where it does not matter that some are alike.
WeekNames day_letters(int firstdayofweek, const LocaleData& locale);

// In full, as a device's buffers hold them: cut after 19 letters where they differ by then.
WeekNames full_day_names(const LocaleData& locale);  // Monday first
YearNames full_month_names(const LocaleData& locale);

// From the locale's abbreviations down to the months' numbers.
std::vector<YearNames> short_month_names(const LocaleData& locale);

}  // namespace orvello
