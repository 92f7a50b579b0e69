#include "store/embedded/stored_pattern.h"

#include <charconv>
#include <cstdint>

namespace orvello {

std::string stored_pattern(const RecurrencePattern& pattern) {
  const std::int64_t numbers[] = {static_cast<std::int64_t>(pattern.type),
                                  static_cast<std::int64_t>(pattern.pattern_start_date),
                                  static_cast<std::int64_t>(pattern.pattern_end_date),
                                  pattern.no_end_date,
                                  pattern.occurrences,
                                  to_seconds(pattern.start_time).count(),
                                  to_seconds(pattern.end_time).count(),
                                  pattern.duration,
                                  pattern.interval,
                                  pattern.day_of_week_mask,
                                  pattern.day_of_month,
                                  pattern.instance,
                                  pattern.month_of_year};
  std::string text;
  for (std::int64_t number : numbers) text += (text.empty() ? "" : " ") + std::to_string(number);
  return text;
}

std::optional<RecurrencePattern> read_stored_pattern(std::string_view text) {
  std::int64_t numbers[13];
  const char* at = text.data();
  const char* const end = at + text.size();
  for (std::int64_t& number : numbers) {
    while (at != end && *at == ' ') ++at;
    const auto read = std::from_chars(at, end, number);
    if (read.ec != std::errc()) return std::nullopt;
    at = read.ptr;
    // Dates are far from this border, numbers of anything else as well.
    if (number < INT32_MIN || number > INT32_MAX) return std::nullopt;
  }
  if (at != end) return std::nullopt;
  const auto small = [&](int index) { return static_cast<std::int32_t>(numbers[index]); };
  RecurrencePattern pattern;
  pattern.type = static_cast<RecurrenceType>(small(0));
  if (small(0) < 0 || small(0) > 6 || small(0) == 4) return std::nullopt;  // no kind has it
  pattern.pattern_start_date = static_cast<CalendarDate>(numbers[1]);
  pattern.pattern_end_date = static_cast<CalendarDate>(numbers[2]);
  pattern.no_end_date = numbers[3] != 0;
  pattern.occurrences = small(4);
  pattern.start_time = to_calendar_date(LocalSeconds(numbers[5]));
  pattern.end_time = to_calendar_date(LocalSeconds(numbers[6]));
  pattern.duration = small(7);
  pattern.interval = small(8);
  pattern.day_of_week_mask = small(9);
  pattern.day_of_month = small(10);
  pattern.instance = small(11);
  pattern.month_of_year = small(12);
  return pattern;
}

}  // namespace orvello
