// The Month and Year views in words, for a screen reader: a cell a day, named by its date and how
// much is on it.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "calendar/locale_data.h"
#include "ports/accessibility.h"
#include "resources/strings.h"
#include "views/month_layout.h"
#include "views/year_layout.h"

namespace orvello {

struct AccessibleWords {
  const LocaleData& locale;
  Language language = Language::english;
  MonthDayYear today;
  MonthDayYear selected;  // the keyboard's day
};

// How many appointments a day has; an empty function leaves them out of the names.
using DayCount = std::function<int(const MonthDayYear&)>;
inline constexpr int kUnreadableCount = -1;  // they could not be read
// From what count_days() answered for the days from `from_day` on.
DayCount day_count_of(std::vector<int> counts, Day from_day);

// "21 November, 3 appointments, today"; with the year where it is not `shown_year`.
Text accessible_day_name(const MonthDayYear& date, std::optional<int> count, int shown_year,
                         const AccessibleWords& words);

// Seven columns, the cells in the layout's order. One that is not drawn has neither name nor place.
AccessibleGrid accessible_month(const MonthLayout& layout, const DayCount& count,
                                const AccessibleWords& words);
// A row a month, a column a day. Days that a month lacks have neither name nor place.
AccessibleGrid accessible_year(const YearLayout& layout, const DayCount& count,
                               const AccessibleWords& words);

// The date of a cell of these grids; none for cells without a name.
std::optional<MonthDayYear> accessible_month_date(const MonthLayout& layout, int cell);
std::optional<MonthDayYear> accessible_year_date(const YearLayout& layout, int cell);

}  // namespace orvello
