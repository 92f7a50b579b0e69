#include "views/accessible_text.h"

#include "calendar/date_pictures.h"

namespace orvello {

namespace {

constexpr int kDaysOfRow = 31;

Text count_text(int count, Language language) {
  if (count == kUnreadableCount) return load_string(StringId::day_unreadable, language);
  if (count == 0) return load_string(StringId::day_no_appointments, language);
  return load_count(StringId::day_appointments, count, language);
}

AccessibleCell cell_for(const MonthDayYear& date, const Rect& place, int shown_year,
                        const DayCount& count, const AccessibleWords& words) {
  const auto number = count ? std::optional(count(date)) : std::nullopt;
  return {accessible_day_name(date, number, shown_year, words), place, date == words.selected};
}

}  // namespace

DayCount day_count_of(std::vector<int> counts, Day from_day) {
  return [counts = std::move(counts), from_day](const MonthDayYear& date) {
    const std::int32_t place = day_of(date) - from_day;
    return place >= 0 && place < static_cast<std::int32_t>(counts.size())
               ? counts[static_cast<std::size_t>(place)]
               : 0;
  };
}

Text accessible_day_name(const MonthDayYear& date, std::optional<int> count, int shown_year,
                         const AccessibleWords& words) {
  SystemTime time;
  time.year = date.year;
  time.month = date.month;
  time.day = date.day;
  Text name =
      FormatDatePicture(date.year == shown_year ? u"d MMMM" : u"d MMMM yyyy", time, words.locale);
  if (count) name += u", " + count_text(*count, words.language);
  if (date == words.today) name += u", " + load_string(StringId::day_is_today, words.language);
  return name;
}

std::optional<MonthDayYear> accessible_month_date(const MonthLayout& layout, int cell) {
  if (cell < 0 || cell >= static_cast<int>(layout.cells.size())) return std::nullopt;
  const MonthCell& found = layout.cells[static_cast<std::size_t>(cell)];
  return found.drawn ? std::optional(found.date) : std::nullopt;
}

std::optional<MonthDayYear> accessible_year_date(const YearLayout& layout, int cell) {
  if (cell < 0 || cell >= 12 * kDaysOfRow) return std::nullopt;
  const MonthDayYear date{cell / kDaysOfRow + 1, cell % kDaysOfRow + 1, layout.year};
  return cell_place(layout, date).empty() ? std::nullopt : std::optional(date);
}

AccessibleGrid accessible_month(const MonthLayout& layout, const DayCount& count,
                                const AccessibleWords& words) {
  AccessibleGrid grid;
  grid.name = format(u"%s %s", words.locale.month_names[static_cast<std::size_t>(layout.month - 1)],
                     local_digits(format(u"%d", layout.year), words.locale));
  grid.columns = 7;
  for (std::size_t i = 0; i < layout.cells.size(); ++i) {
    const auto date = accessible_month_date(layout, static_cast<int>(i));
    grid.cells.push_back(date ? cell_for(*date, layout.cells[i].box, layout.year, count, words)
                              : AccessibleCell());
  }
  return grid;
}

AccessibleGrid accessible_year(const YearLayout& layout, const DayCount& count,
                               const AccessibleWords& words) {
  AccessibleGrid grid;
  grid.name = local_digits(format(u"%d", layout.year), words.locale);
  grid.columns = kDaysOfRow;
  for (int i = 0; i < 12 * kDaysOfRow; ++i) {
    const auto date = accessible_year_date(layout, i);
    grid.cells.push_back(date
                             ? cell_for(*date, cell_place(layout, *date), layout.year, count, words)
                             : AccessibleCell());
  }
  return grid;
}

}  // namespace orvello
