#include "store/record_rules.h"

#include <algorithm>
#include <cstdio>
#include <random>

#include "calendar/rule_days.h"
#include "calendar/rule_text.h"

namespace orvello {
namespace {

constexpr std::int64_t kMinute = 60;

// Days that an all-day length in minutes covers; a length of exactly one day is that one day.
std::int64_t days_of_length(std::int64_t minutes) {
  return std::max<std::int64_t>(1, ceil_div(minutes, 24 * 60));
}

// Times of its own, where `fields` does not give them.
template <typename Item>
bool has_times(const Item& item) {
  return item.start != LocalSeconds() || item.end != LocalSeconds();
}

void complete_pattern(AppointmentRecord& record) {
  RecurrencePattern& pattern = *record.pattern;
  if (has_times(record)) {
    pattern.duration = static_cast<std::int32_t>((record.end - record.start) / kMinute);
  } else {
    const auto first = to_seconds(pattern.start_time);
    const auto last = to_seconds(pattern.end_time);
    // A length that does not lead to the end time is what an earlier pattern left behind.
    if ((first - last + pattern.duration * kMinute) % kSecondsPerDay != 0 || pattern.duration < 0)
      pattern.duration =
          static_cast<std::int32_t>(floor_mod(last - first, kSecondsPerDay) / kMinute);
  }
  if (record.fields.all_day) {
    pattern.start_time = 0;
    pattern.duration = static_cast<std::int32_t>(days_of_length(pattern.duration) * 24 * 60 - 1);
  }
  record.start = pattern_start(pattern);
  record.end = record.start + pattern.duration * kMinute;
  pattern.pattern_start_date = to_calendar_date(day_of(record.start));
  pattern.start_time = to_calendar_date(LocalSeconds(second_of_day(record.start)));
  pattern.end_time = to_calendar_date(LocalSeconds(second_of_day(record.end)));
  const auto last = last_instance(pattern);
  pattern.no_end_date = !last;
  pattern.pattern_end_date = last ? to_calendar_date(day_of(*last)) : kNoDate;
}

bool complete_times(AppointmentRecord& record, DeviceTime& time) {
  const bool own_times = has_times(record);
  const bool all_day = record.fields.all_day;
  if (all_day) record.zone.clear();
  if (!own_times && !record.pattern) {
    const auto zone = time.zone(record.zone);
    if (!zone) return false;
    record.start = time.in_zone(to_seconds(record.fields.start), *zone);
    record.end = time.in_zone(to_seconds(record.fields.end), *zone);
  }
  record.end = std::max(record.start, record.end);
  if (all_day) {
    record.start = midnight_of(day_of(record.start));
    if (own_times || !record.pattern) record.end = all_day_end(record.end);
  }
  return true;
}

bool complete_exceptions(AppointmentRecord& record, DeviceTime& time) {
  if (!record.recurring()) record.exceptions.clear();
  for (AppointmentException& exception : record.exceptions) {
    if (record.fields.all_day)
      exception.original_start = midnight_of(day_of(exception.original_start));
    if (exception.deleted) continue;
    if (!has_times(exception)) {
      const auto zone = time.zone(exception.zone);
      if (!zone) return false;
      exception.start = time.in_zone(to_seconds(exception.fields.start), *zone);
      exception.end = time.in_zone(to_seconds(exception.fields.end), *zone);
    }
    exception.end = std::max(exception.start, exception.end);
    if (!exception.fields.all_day) continue;
    exception.zone.clear();
    exception.start = midnight_of(day_of(exception.start));
    exception.end = all_day_end(exception.end);
  }
  // The last one told of an occurrence stands.
  auto& list = record.exceptions;
  std::reverse(list.begin(), list.end());
  std::stable_sort(list.begin(), list.end(), [](const auto& a, const auto& b) {
    return a.original_start < b.original_start;
  });
  list.erase(std::unique(
                 list.begin(), list.end(),
                 [](const auto& a, const auto& b) { return a.original_start == b.original_start; }),
             list.end());
  return true;
}

}  // namespace

std::string made_up_uid() {
  std::random_device source;
  char text[48];
  std::snprintf(text, sizeof text, "%08x%08x%08x%08x@orvello", source(), source(), source(),
                source());
  return text;
}

LocalSeconds all_day_end(LocalSeconds end) { return midnight_of(day_of(end) + 1) - kMinute; }

RecurrenceSet read_rules(const std::string& lines, LocalSeconds start, const Zone* zone,
                         bool all_day) {
  RecurrenceSet set;
  set.start = start;
  for_each_rule_line(lines, [&](std::string_view name, std::string_view value) {
    if (name == "RDATE" || name == "EXDATE") {
      auto& dates = name == "RDATE" ? set.dates : set.excluded_dates;
      for (std::string_view date : split_bytes(value, ','))
        if (const auto moment = parse_moment(date)) dates.push_back(*moment);
      return;
    }
    if (name != "RRULE" && name != "EXRULE") return;
    auto rule = parse_rule(value);
    if (!rule) return;
    if (all_day) rule = by_whole_days(std::move(*rule));
    if (rule->until_is_utc && rule->until) {
      if (zone) rule->until = zone->from_utc(utc_at_offset(*rule->until, 0));
      rule->until_is_utc = false;
    }
    (name == "RRULE" ? set.rules : set.excluded_rules).push_back(std::move(*rule));
  });
  std::sort(set.dates.begin(), set.dates.end());
  std::sort(set.excluded_dates.begin(), set.excluded_dates.end());
  return set;
}

std::string resolved_rules(const AppointmentRecord& record, const Zone* zone) {
  RecurrenceSet set = read_rules(record.rules, record.start, zone, record.fields.all_day);
  std::string text;
  const auto add_rules = [&](std::vector<Rule>& rules, const char* name) {
    for (Rule& rule : rules) {
      if (rule.count > 0) {
        rule.until = last_instance(rule, record.start);
        rule.count = 0;
        rule.until_is_date = false;
      }
      text += name + rule_text(rule) + "\n";
    }
  };
  const auto add_dates = [&](const std::vector<LocalSeconds>& dates, const char* name) {
    if (dates.empty()) return;
    text += name;
    for (LocalSeconds date : dates) text += moment_text(date) + ",";
    text.back() = '\n';
  };
  add_rules(set.rules, "RRULE:");
  add_rules(set.excluded_rules, "EXRULE:");
  add_dates(set.dates, "RDATE:");
  add_dates(set.excluded_dates, "EXDATE:");
  return text;
}

LocalSeconds first_start(const AppointmentRecord& record, const Zone* zone) {
  if (record.rules.find("RDATE") == std::string::npos) return record.start;
  const auto set = read_rules(record.rules, record.start, zone, record.fields.all_day);
  return set.dates.empty() ? record.start : std::min(record.start, set.dates.front());
}

std::optional<LocalSeconds> last_start(const AppointmentRecord& record, const Zone* zone) {
  if (record.pattern) return last_instance(*record.pattern);
  if (record.rules.empty()) return record.start;
  return last_instance(read_rules(record.rules, record.start, zone, record.fields.all_day));
}

bool complete_record(AppointmentRecord& record, DeviceTime& time) {
  if (record.uid.empty()) record.uid = made_up_uid();
  if (record.pattern) record.rules.clear();
  if (!complete_times(record, time)) return false;
  if (record.pattern) complete_pattern(record);
  return complete_exceptions(record, time);
}

bool localize_record(AppointmentRecord& record, DeviceTime& time) {
  const auto localize = [&](auto& times, const std::string& name) {
    const auto zone = time.zone(name);
    if (!zone) return false;
    const auto span = time.shown(times.start, times.end, *zone, times.fields.all_day);
    times.fields.start = to_calendar_date(span.start);
    times.fields.end = to_calendar_date(span.end);
    return true;
  };
  if (!localize(record, record.zone)) return false;
  return std::all_of(record.exceptions.begin(), record.exceptions.end(), [&](auto& exception) {
    return exception.deleted || localize(exception, exception.zone);
  });
}

}  // namespace orvello
