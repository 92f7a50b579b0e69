#include "calendar/rule_text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <utility>

#include "calendar/rule.h"
#include "calendar/rule_days.h"

namespace orvello {
namespace {

constexpr const char* kFrequencies[] = {"SECONDLY", "MINUTELY", "HOURLY", "DAILY",
                                        "WEEKLY",   "MONTHLY",  "YEARLY"};
constexpr const char* kWeekdays[] = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};

struct NumberPart {
  const char* name;
  std::vector<int> Rule::*values;
  int low, high;
  bool may_count_back;
};
constexpr NumberPart kTimeParts[] = {
    {"BYSECOND", &Rule::by_second, 0, 60, false},
    {"BYMINUTE", &Rule::by_minute, 0, 59, false},
    {"BYHOUR", &Rule::by_hour, 0, 23, false},
};
constexpr NumberPart kDayParts[] = {
    {"BYMONTHDAY", &Rule::by_month_day, 1, 31, true},
    {"BYYEARDAY", &Rule::by_year_day, 1, 366, true},
    {"BYWEEKNO", &Rule::by_week_no, 1, 53, true},
    {"BYMONTH", &Rule::by_month, 1, 12, false},
    {"BYSETPOS", &Rule::by_set_pos, 1, 366, true},
};

template <std::size_t N>
int index_in(const char* const (&names)[N], std::string_view name) {
  const auto found = std::find(std::begin(names), std::end(names), name);
  return found == std::end(names) ? -1 : static_cast<int>(found - std::begin(names));
}

bool parse_numbers(const NumberPart& part, std::string_view text, Rule& rule) {
  for (auto item : split_bytes(text, ',')) {
    if (item.empty()) continue;
    const auto number = parse_whole_number(item);
    if (!number) return false;
    const int size = part.may_count_back && *number < 0 ? -*number : *number;
    if (size < part.low || size > part.high) return false;
    (rule.*part.values).push_back(*number);
  }
  return true;
}

bool parse_days(std::string_view text, Rule& rule) {
  for (auto item : split_bytes(text, ',')) {
    if (item.empty()) continue;
    if (item.size() < 2) return false;
    RuleDay day;
    day.weekday = index_in(kWeekdays, item.substr(item.size() - 2));
    item.remove_suffix(2);
    if (!item.empty()) {
      const auto ordinal = parse_whole_number(item);
      if (!ordinal || *ordinal == 0 || *ordinal < -53 || *ordinal > 53) return false;
      day.ordinal = *ordinal;
    }
    if (day.weekday < 0) return false;
    rule.by_day.push_back(day);
  }
  return true;
}

bool parse_until(std::string_view text, Rule& rule) {
  rule.until = parse_moment(text);
  if (!rule.until) return false;
  rule.until_is_date = text.size() == 8;
  rule.until_is_utc = text.back() == 'Z';
  if (rule.until_is_date) *rule.until += kSecondsPerDay - 1;
  return true;
}

bool parse_positive(std::string_view text, int& value) {
  const auto number = parse_whole_number(text);
  if (!number || *number < 1) return false;
  value = *number;
  return true;
}

bool parse_known(std::string_view name, std::string_view text, Rule& rule, bool& known) {
  known = true;
  if (name == "FREQ") {
    const int index = index_in(kFrequencies, text);
    if (index >= 0) rule.frequency = static_cast<Frequency>(index);
    return index >= 0;
  }
  if (name == "INTERVAL") return parse_positive(text, rule.interval);
  if (name == "COUNT") return parse_positive(text, rule.count);
  if (name == "UNTIL") return parse_until(text, rule);
  if (name == "BYDAY") return parse_days(text, rule);
  if (name == "WKST") {
    rule.week_start = index_in(kWeekdays, text);
    return rule.week_start >= 0;
  }
  for (const NumberPart& part : kTimeParts)
    if (name == part.name) return parse_numbers(part, text, rule);
  for (const NumberPart& part : kDayParts)
    if (name == part.name) return parse_numbers(part, text, rule);
  // The calendar and the days that a month lacks as they are taken here anyway.
  if (name == "RSCALE") return text == "GREGORIAN";
  known = name == "SKIP" && text == "OMIT";
  return known;
}

// A part that says nothing, or nothing that is known.
bool is_odd(std::string_view name, std::string_view text) {
  return text.find_first_not_of(',') == std::string_view::npos ||
         (name == "INTERVAL" && parse_whole_number(text) == 0);
}

void write_numbers(const NumberPart& part, const Rule& rule, std::string& text) {
  char separator = '=';
  for (int value : rule.*part.values) {
    text += separator == '=' ? std::string(";") + part.name + "=" : ",";
    text += std::to_string(value);
    separator = ',';
  }
}

void write_days(const Rule& rule, std::string& text) {
  if (rule.by_day.empty()) return;
  text += ";BYDAY=";
  for (const RuleDay& day : rule.by_day) {
    if (&day != &rule.by_day.front()) text += ',';
    if (day.ordinal != 0) text += std::to_string(day.ordinal);
    text += kWeekdays[day.weekday];
  }
}

}  // namespace

std::vector<std::string_view> split_bytes(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  for (;;) {
    const auto end = text.find(separator);
    pieces.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + 1);
  }
}

std::optional<int> parse_whole_number(std::string_view text) {
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<LocalSeconds> parse_moment(std::string_view text) {
  const bool is_day = text.size() == 8;
  if (text.size() == 16 && (text.back() == 'Z' || text.back() == 'z')) text.remove_suffix(1);
  if (!is_day && (text.size() != 15 || (text[8] != 'T' && text[8] != 't'))) return std::nullopt;
  for (std::size_t i = 0; i < text.size(); ++i)
    if (i != 8 && (text[i] < '0' || text[i] > '9')) return std::nullopt;
  const auto number = [text](std::size_t at, std::size_t size) {
    return parse_whole_number(text.substr(at, size)).value_or(0);
  };
  const int year = number(0, 4), month = number(4, 2), day = number(6, 2);
  if (year < 1 || month < 1 || month > 12) return std::nullopt;
  if (day < 1 || day > month_length(year * 12 + month - 1)) return std::nullopt;
  const LocalSeconds midnight = midnight_of(day_of(year, month, day));
  if (is_day) return midnight;
  const int hour = number(9, 2), minute = number(11, 2), second = number(13, 2);
  if (hour > 23 || minute > 59 || second > 60) return std::nullopt;
  return midnight + hour * 3600 + minute * 60 + std::min(second, 59);
}

std::string day_text(LocalSeconds moment) {
  const auto civil = civil_of(day_of(moment));
  char text[40];
  std::snprintf(text, sizeof text, "%04d%02d%02d", civil.year, civil.month, civil.day);
  return text;
}

std::string moment_text(LocalSeconds moment) {
  const int time = static_cast<int>(second_of_day(moment));
  char text[40];
  std::snprintf(text, sizeof text, "T%02d%02d%02d", time / 3600, time / 60 % 60, time % 60);
  return day_text(moment) + text;
}

std::string moment_text(UtcSeconds moment) { return moment_text(local_at_offset(moment, 0)) + "Z"; }

Result<Rule> parse_rule(std::string_view text, std::vector<std::string>* oddities) {
  const auto failure = [](std::string_view part, const char* fault) {
    return Result<Rule>::failure("recurrence rule: " + std::string(part) + fault);
  };
  const auto note = [&](std::string_view part) {
    if (oddities) oddities->emplace_back(part);
  };
  std::string upper(text);
  for (char& unit : upper)
    if (unit >= 'a' && unit <= 'z') unit = static_cast<char>(unit - 'a' + 'A');
  if (!upper.empty() && upper.back() == ';') upper.pop_back();  // some programs end a rule so
  Rule rule;
  std::vector<std::string_view> seen;
  for (auto part : split_bytes(upper, ';')) {
    const auto equals = std::min(part.find('='), part.size());
    const auto name = part.substr(0, equals);
    const auto value = part.substr(std::min(equals + 1, part.size()));
    const auto before = std::find_if(seen.begin(), seen.end(), [&](std::string_view other) {
      return other.substr(0, other.find('=')) == name;
    });
    if (is_odd(name, value) || (before != seen.end() && *before == part)) {
      note(part);
      continue;
    }
    if (before != seen.end()) return failure(part, " is there twice");
    seen.push_back(part);
    bool known = true;
    if (parse_known(name, value, rule, known)) continue;
    if (known) return failure(part, " is not understood");
    note(part);
  }
  const bool has_frequency = std::any_of(
      seen.begin(), seen.end(), [](std::string_view part) { return part.starts_with("FREQ="); });
  if (!has_frequency) return failure("FREQ", " is missing");
  if (rule.count > 0 && rule.until) note("COUNT with UNTIL: the earlier end counts");
  return rule;
}

Rule by_whole_days(Rule rule) {
  if (rule.frequency < Frequency::daily) {
    constexpr std::int64_t kUnits[] = {1, 60, 3600};
    const auto days = kUnits[static_cast<int>(rule.frequency)] * rule.interval / kSecondsPerDay;
    rule.interval = static_cast<int>(std::max<std::int64_t>(1, days));
    rule.frequency = Frequency::daily;
  }
  if (rule.frequency == Frequency::daily) rule.by_set_pos.clear();  // of one day
  rule.by_hour.clear();
  rule.by_minute.clear();
  rule.by_second.clear();
  return rule;
}

std::string rule_text(const Rule& rule) {
  std::string text = std::string("FREQ=") + kFrequencies[static_cast<int>(rule.frequency)];
  if (rule.until)
    text += ";UNTIL=" + (rule.until_is_date ? day_text(*rule.until) : moment_text(*rule.until)) +
            (rule.until_is_utc ? "Z" : "");
  if (rule.count > 0) text += ";COUNT=" + std::to_string(rule.count);
  if (rule.interval != 1) text += ";INTERVAL=" + std::to_string(rule.interval);
  for (const NumberPart& part : kTimeParts) write_numbers(part, rule, text);
  write_days(rule, text);
  for (const NumberPart& part : kDayParts) write_numbers(part, rule, text);
  if (rule.week_start != 1) text += std::string(";WKST=") + kWeekdays[rule.week_start];
  return text;
}

}  // namespace orvello
