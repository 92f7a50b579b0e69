#include "calendar/iso_date.h"

#include <cstdio>

#include "calendar/rule_text.h"

namespace orvello {

std::string iso_text(const MonthDayYear& date) {
  char text[48];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.year, date.month, date.day);
  return text;
}

std::optional<MonthDayYear> parse_iso_date(std::string_view text) {
  constexpr int kFirstYear = 1601;
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
  std::string digits(text);
  std::erase(digits, '-');
  const auto midnight = parse_moment(digits);
  if (!midnight) return std::nullopt;
  const MonthDayYear date = triple_of(day_of(*midnight));
  return date.year < kFirstYear ? std::nullopt : std::optional(date);
}

std::optional<SystemTime> parse_iso_moment(std::string_view text) {
  if (text.size() != 16 || text[10] != 'T' || text[13] != ':') return std::nullopt;
  const auto date = parse_iso_date(text.substr(0, 10));
  std::string time(text.substr(11));
  std::erase(time, ':');
  const auto moment =
      date ? parse_moment(day_text(midnight_of(day_of(*date))) + "T" + time + "00") : std::nullopt;
  if (!moment) return std::nullopt;
  const int second = static_cast<int>(second_of_day(*moment));
  SystemTime read = civil_of(day_of(*moment));
  read.hour = second / 3600;
  read.minute = second / 60 % 60;
  return read;
}

}  // namespace orvello
