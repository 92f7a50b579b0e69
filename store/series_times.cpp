#include "store/series_times.h"

#include "calendar/rule_days.h"
#include "calendar/rule_text.h"
#include "calendar/shifted_pattern.h"
#include "store/record_rules.h"

namespace orvello {
namespace {

bool names_times(const Rule& rule) {
  return rule.frequency < Frequency::daily || !rule.by_hour.empty() || !rule.by_minute.empty() ||
         !rule.by_second.empty();
}

// Lines without their rules' UTC ends, which count in UTC however the series is moved.
std::optional<std::string> shifted_lines(const std::string& lines, std::int64_t seconds) {
  std::string text;
  bool kept = true;
  for_each_rule_line(lines, [&](std::string_view name, std::string_view value) {
    text += (text.empty() ? "" : "\n") + std::string(name) + ":";
    if (name == "RRULE" || name == "EXRULE") {
      auto rule = parse_rule(value);
      kept = kept && rule && !names_times(*rule);
      if (!kept) return;
      if (rule->until && !rule->until_is_date) *rule->until += seconds;
      text += rule_text(*rule);
    } else {
      std::string dates;
      for (std::string_view date : split_bytes(value, ','))
        if (const auto moment = parse_moment(date))
          dates += (dates.empty() ? "" : ",") + moment_text(*moment + seconds);
      text += dates;
    }
  });
  if (!kept) return std::nullopt;
  return text;
}

}  // namespace

bool stands_with(const AppointmentException& one, const AppointmentRecord& series) {
  return !one.deleted && one.start == one.original_start && one.zone == series.zone &&
         one.end - one.start == series.end - series.start &&
         one.fields.all_day == series.fields.all_day;
}

bool move_series(AppointmentRecord& record, LocalSeconds start, LocalSeconds end) {
  const std::int64_t shift = start - record.start;
  if (shift != 0 && record.pattern) {
    auto pattern = shifted_pattern(*record.pattern, shift);
    if (!pattern) return false;
    record.pattern = std::move(pattern);
  } else if (shift != 0) {
    auto rules = shifted_lines(record.rules, shift);
    if (day_of(start) != day_of(record.start) || !rules) return false;
    record.rules = std::move(*rules);
  }
  if (record.pattern) record.pattern->end_time = to_calendar_date(LocalSeconds(second_of_day(end)));
  for (AppointmentException& one : record.exceptions) {
    const bool with_series = stands_with(one, record);
    one.original_start += shift;
    if (!with_series) continue;
    one.start = one.original_start;
    one.end = one.start + (end - start);
  }
  record.start = start;
  record.end = end;
  return true;
}

bool make_floating(AppointmentRecord& record, DeviceTime& time) {
  for (AppointmentException& one : record.exceptions) {
    if (one.deleted || one.zone.empty()) continue;
    const auto zone = time.zone(one.zone);
    if (!zone) return false;
    const auto span = time.shown(one.start, one.end, *zone, one.fields.all_day);
    one.start = span.start;
    one.end = span.end;
    one.zone.clear();
  }
  if (record.zone.empty()) return true;
  const auto zone = time.zone(record.zone);
  if (!zone) return false;
  const auto span = time.shown(record.start, record.end, *zone, record.fields.all_day);
  if (record.recurring() && !move_series(record, span.start, span.end)) return false;
  record.start = span.start;
  record.end = span.end;
  record.zone.clear();
  return true;
}

}  // namespace orvello
