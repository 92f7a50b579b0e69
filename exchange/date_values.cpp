#include "exchange/date_values.h"

#include <libical/ical.h>

#include <cstdio>

#include "base/text.h"
#include "calendar/rule_days.h"
#include "calendar/rule_text.h"

namespace orvello {
namespace {

int digits(std::string_view text, std::size_t at, std::size_t count) {
  int value = 0;
  for (std::size_t i = at; i < at + count; ++i) {
    if (text[i] < '0' || text[i] > '9') return -1;
    value = value * 10 + (text[i] - '0');
  }
  return value;
}

}  // namespace

std::optional<DateValue> parse_date(std::string_view text) {
  text = trimmed(text);
  const auto local = parse_moment(text);
  // The calendar date's own range begins in the year 100.
  if (!local || *local < kFirstRuleSecond) return std::nullopt;
  return DateValue{*local, text.size() == 8, text.size() == 16};
}

std::optional<DurationValue> parse_duration(std::string_view text) {
  constexpr std::size_t kLongest = 40;
  if (text.empty() || text.size() > kLongest) return std::nullopt;
  const icaldurationtype duration = icaldurationtype_from_string(std::string(text).c_str());
  if (icaldurationtype_is_bad_duration(duration)) return std::nullopt;
  constexpr unsigned kMostDays = 100000, kMostHours = 100000;
  if (duration.days > kMostDays || duration.weeks > kMostDays / 7 || duration.hours > kMostHours ||
      duration.minutes > kMostHours * 60 || duration.seconds > kMostHours * 3600)
    return std::nullopt;
  const int sign = duration.is_neg ? -1 : 1;
  return DurationValue{
      sign * static_cast<int>(duration.days + duration.weeks * 7),
      sign * static_cast<int>(duration.hours * 3600 + duration.minutes * 60 + duration.seconds)};
}

std::string duration_text(std::int64_t seconds) {
  constexpr std::int64_t kLargest = 20000 * kSecondsPerDay;
  if (seconds > kLargest || seconds < -kLargest) seconds = seconds < 0 ? -kLargest : kLargest;
  char* text =
      icaldurationtype_as_ical_string_r(icaldurationtype_from_int(static_cast<int>(seconds)));
  std::string result = text ? text : "PT0S";
  icalmemory_free_buffer(text);
  return result;
}

std::optional<int> parse_utc_offset(std::string_view text) {
  const bool signed_text = !text.empty() && (text[0] == '+' || text[0] == '-');
  const std::string_view rest = text.substr(signed_text ? 1 : 0);
  if (rest.size() != 4 && rest.size() != 6) return std::nullopt;
  const int hour = digits(rest, 0, 2), minute = digits(rest, 2, 2);
  const int second = rest.size() == 6 ? digits(rest, 4, 2) : 0;
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59)
    return std::nullopt;
  const int offset = hour * 3600 + minute * 60 + second;
  return text[0] == '-' ? -offset : offset;
}

std::string utc_offset_text(int seconds) {
  const int size = seconds < 0 ? -seconds : seconds;
  char text[16];
  std::snprintf(text, sizeof text, "%c%02d%02d", seconds < 0 ? '-' : '+', size / 3600 % 100,
                size / 60 % 60);
  std::string result = text;
  if (size % 60 != 0) {
    std::snprintf(text, sizeof text, "%02d", size % 60);
    result += text;
  }
  return result;
}

}  // namespace orvello
