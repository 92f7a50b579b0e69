#include "store/device_pattern.h"

#include <algorithm>
#include <utility>

#include "calendar/shifted_pattern.h"
#include "store/record_rules.h"
#include "store/series_halves.h"
#include "store/series_times.h"

namespace orvello {
namespace {

// What the device's clock shows above the record's own when its series begins; a pattern stands at
// this distance for good.
bool device_distance(const AppointmentRecord& record, DeviceTime& time, std::int64_t& seconds) {
  const auto zone = time.zone(record.zone);
  if (!zone) return false;
  seconds = *zone && !record.fields.all_day ? time.shown(record.start, *zone) - record.start : 0;
  return true;
}

// Fields that their type leaves alone may differ.
bool mean_the_same(const RecurrencePattern& a, const RecurrencePattern& b) {
  const auto length = [](const RecurrencePattern& pattern) {
    return second_of_day(to_seconds(pattern.end_time)) -
           second_of_day(to_seconds(pattern.start_time));
  };
  return a == b || (pattern_start(a) == pattern_start(b) && length(a) == length(b) &&
                    a.duration == b.duration && rule_from_pattern(a) == rule_from_pattern(b));
}

// `new_distance` is that of the record, which has its new pattern and times.
void keep_exceptions(AppointmentRecord& record, const AppointmentRecord& before,
                     std::vector<AppointmentException> exceptions, std::int64_t old_distance,
                     std::int64_t new_distance) {
  const auto time_of_day = second_of_day(record.start + new_distance);
  auto& kept = record.exceptions;
  for (AppointmentException& one : exceptions) {
    const bool with_series = stands_with(one, before);
    const Day day = day_of(one.original_start + old_distance);
    one.original_start = midnight_of(day) + time_of_day - new_distance;
    if (!has_occurrence(*record.pattern, one.original_start)) continue;
    if (with_series) {
      one.start = one.original_start;
      one.end = one.start + (record.end - record.start);
      one.zone = record.zone;
      one.fields.all_day = record.fields.all_day;
    }
    // Several of one day, which the old recurrence had: what somebody wrote comes first.
    if (kept.empty() || kept.back().original_start != one.original_start)
      kept.push_back(std::move(one));
    else if (kept.back().deleted)
      kept.back() = std::move(one);
  }
}

}  // namespace

bool device_pattern(const AppointmentRecord& record, DeviceTime& time,
                    std::optional<RecurrencePattern>& pattern) {
  pattern = record.pattern;
  std::int64_t distance = 0;
  if (!device_distance(record, time, distance)) return false;
  if (pattern) pattern = shifted_pattern(*pattern, distance);
  return true;
}

bool set_device_pattern(AppointmentRecord& record, const AppointmentRecord& before,
                        const RecurrencePattern& pattern, DeviceTime& time) {
  std::optional<RecurrencePattern> known;
  std::int64_t old_distance = 0;
  if (!device_pattern(before, time, known) || !device_distance(before, time, old_distance))
    return false;
  if (known && mean_the_same(*known, pattern) && record.fields.all_day == before.fields.all_day)
    return true;
  const auto zone = time.zone(record.fields.all_day ? "" : record.zone);
  if (!zone) return false;
  const auto start = pattern_start(pattern);
  std::int64_t distance = start - time.in_zone(start, *zone);
  const auto own = shifted_pattern(pattern, -distance);
  if (!*zone || !own) {
    record.zone.clear();
    distance = 0;
  }
  record.rules.clear();
  record.pattern = own.value_or(pattern);
  record.start = record.end = {};  // the pattern says
  auto exceptions = std::exchange(record.exceptions, {});
  if (!complete_record(record, time)) return false;
  keep_exceptions(record, before, std::move(exceptions), old_distance, distance);
  return true;
}

int changed_occurrences(const AppointmentRecord& record) {
  return static_cast<int>(std::count_if(record.exceptions.begin(), record.exceptions.end(),
                                        [](const auto& one) { return !one.deleted; }));
}

}  // namespace orvello
