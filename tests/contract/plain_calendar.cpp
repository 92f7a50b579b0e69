#include "tests/contract/plain_calendar.h"

#include <algorithm>

#include "calendar/dates.h"

namespace orvello::test {
namespace {

int month_number(const SystemTime& date) { return date.year * 12 + date.month - 1; }

int monday_before(int day) { return day - (weekday_of(plain_day(day)) + 6) % 7; }

bool is_last_of_its_weekday(int day) {
  return civil_of(plain_day(day)).month != civil_of(plain_day(day + 7)).month;
}

// Whether the day is of the pattern's kind, whatever its interval.
bool is_of_kind(const RecurrencePattern& pattern, int day) {
  const SystemTime date = civil_of(plain_day(day));
  const bool weekday = (pattern.day_of_week_mask >> weekday_of(plain_day(day)) & 1) != 0;
  switch (pattern.type) {
    case RecurrenceType::weekly:
      return weekday;
    case RecurrenceType::monthly:
      return date.day == pattern.day_of_month;
    case RecurrenceType::month_nth:
      return weekday && (pattern.instance == 5 ? is_last_of_its_weekday(day)
                                               : (date.day - 1) / 7 + 1 == pattern.instance);
    case RecurrenceType::yearly:
      return date.day == pattern.day_of_month && date.month == pattern.month_of_year;
    default:
      return true;
  }
}

// How many of the pattern's units lie between two days.
int units_between(const RecurrencePattern& pattern, int first, int day) {
  if (pattern.type == RecurrenceType::daily) return day - first;
  if (pattern.type == RecurrenceType::weekly)
    return (monday_before(day) - monday_before(first)) / 7;
  if (pattern.type == RecurrenceType::yearly) return 0;
  return month_number(civil_of(plain_day(day))) - month_number(civil_of(plain_day(first)));
}

}  // namespace

Day plain_day(int day) { return day_of(2026, 1, 5) + day; }

std::vector<int> plain_days(const RecurrencePattern& pattern, int from) {
  std::vector<int> days;
  for (int day = from; day < kPlainDays; ++day) {
    if (pattern.occurrences > 0 && static_cast<int>(days.size()) == pattern.occurrences) break;
    if (!pattern.no_end_date && pattern.occurrences <= 0 &&
        plain_day(day) > whole_day(pattern.pattern_end_date))
      break;
    if (!is_of_kind(pattern, day)) continue;
    if (!days.empty() && units_between(pattern, days.front(), day) % pattern.interval != 0)
      continue;
    days.push_back(day);
  }
  return days;
}

PlainOccurrence PlainItem::as_series(int day) const {
  const int start = day * kDayMinutes + start_minute;
  return {day, start, start + minutes, subject, location, false, false};
}

void PlainItem::set_days(const std::vector<int>& days) {
  std::vector<PlainOccurrence> kept;
  for (const int day : days) {
    const auto known = std::find_if(occurrences.begin(), occurrences.end(),
                                    [&](const PlainOccurrence& one) { return one.day == day; });
    const bool stays = series && known != occurrences.end() && (known->changed || known->deleted);
    kept.push_back(stays ? *known : as_series(day));
  }
  occurrences = std::move(kept);
  if (!days.empty()) first_day = days.front();
}

void PlainItem::set_times(int new_start_minute, int new_minutes) {
  const int old_start = start_minute, old_minutes = minutes;
  start_minute = new_start_minute;
  minutes = new_minutes;
  for (PlainOccurrence& one : occurrences) {
    const bool with_series =
        one.start == one.day * kDayMinutes + old_start && one.end == one.start + old_minutes;
    if (!with_series) continue;
    one.start = as_series(one.day).start;
    one.end = as_series(one.day).end;
  }
}

void PlainItem::set_texts(const std::string& new_subject, const std::string& new_location) {
  subject = new_subject;
  location = new_location;
  for (PlainOccurrence& one : occurrences) {
    if (one.changed) continue;
    one.subject = subject;
    one.location = location;
  }
}

int PlainItem::changed_off(const std::vector<int>& days) const {
  return static_cast<int>(
      std::count_if(occurrences.begin(), occurrences.end(), [&](const PlainOccurrence& one) {
        return one.changed && !one.deleted &&
               std::find(days.begin(), days.end(), one.day) == days.end();
      }));
}

bool PlainItem::shows_before(int day) const {
  return std::any_of(occurrences.begin(), occurrences.end(),
                     [&](const PlainOccurrence& one) { return one.day < day && !one.deleted; });
}

PlainItem PlainItem::split(int day) {
  PlainItem rest = *this;
  rest.first_day = day;
  std::erase_if(rest.occurrences, [&](const PlainOccurrence& one) { return one.day < day; });
  std::erase_if(occurrences, [&](const PlainOccurrence& one) { return one.day >= day; });
  return rest;
}

std::vector<std::size_t> PlainItem::pickable() const {
  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < occurrences.size(); ++i) {
    const auto same =
        std::count_if(occurrences.begin(), occurrences.end(), [&](const PlainOccurrence& other) {
          return !other.deleted && other.start == occurrences[i].start;
        });
    if (!occurrences[i].deleted && same == 1) found.push_back(i);
  }
  return found;
}

std::string shown_row(std::int32_t oid, int start, int end, const std::string& subject,
                      const std::string& location) {
  return std::to_string(oid) + " " + std::to_string(start) + "-" + std::to_string(end) + " " +
         subject + "@" + location;
}

std::vector<std::string> shown_rows(const PlainCalendar& calendar) {
  std::vector<std::string> rows;
  for (const auto& [oid, item] : calendar)
    for (const PlainOccurrence& one : item.occurrences)
      if (!one.deleted)
        rows.push_back(shown_row(oid, one.start, one.end, one.subject, one.location));
  std::sort(rows.begin(), rows.end());
  return rows;
}

}  // namespace orvello::test
