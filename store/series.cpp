#include "store/series.h"

#include <algorithm>

#include "calendar/rule_days.h"
#include "store/record_rules.h"

namespace orvello {
namespace {

// A zone may show a moment this much earlier or later than another one does.
constexpr LocalSeconds kZoneMargin = 2 * kSecondsPerDay;

// How far a series without end is shown to who sets no bound.
constexpr LocalSeconds kUnboundedSpan = 731 * kSecondsPerDay;

LocalSeconds today(DeviceTime& time) {
  const auto now = time.clock().local_time();
  return day_number(now.year, now.month, now.day) * kSecondsPerDay;
}

std::int32_t day_number_of(LocalSeconds moment) {
  return static_cast<std::int32_t>(day_of(moment));
}

const SeriesException* exception_at(const Series& series, LocalSeconds original) {
  const auto found = std::lower_bound(
      series.exceptions.begin(), series.exceptions.end(), original,
      [](const SeriesException& e, LocalSeconds value) { return e.original_start < value; });
  return found != series.exceptions.end() && found->original_start == original ? &*found : nullptr;
}

// The instances whose occurrences may lie within the bounds, in the series' own time.
void find_instances(const Series& series, const DayBounds& bounds, DeviceTime& time,
                    std::vector<LocalSeconds>& out) {
  out.clear();
  LocalSeconds from = static_cast<LocalSeconds>(bounds.start_from) * kSecondsPerDay;
  LocalSeconds to = (static_cast<LocalSeconds>(bounds.start_to) + 1) * kSecondsPerDay;
  from =
      std::max(from, static_cast<LocalSeconds>(bounds.end_from) * kSecondsPerDay - series.duration);
  to = std::min(to, (static_cast<LocalSeconds>(bounds.end_to) + 1) * kSecondsPerDay);
  if (series.zone) {
    from -= kZoneMargin;
    to += kZoneMargin;
  } else if (from > 0 && time.skips_on(day_number_of(from) - 1)) {
    from -= kSecondsPerDay;  // a skipped time before midnight is shown on the next day
  }
  if (series.last_start >= kEndOfRules && std::min(bounds.start_to, bounds.end_to) >= kLastDay)
    to = std::max(series.start, today(time)) + kUnboundedSpan;
  from = std::max(from, series.start);
  to = std::min(to, series.last_start + 1);
  if (from >= to) return;
  if (series.rules) {
    append_instances(*series.rules, from, to, out);
    return;
  }
  if (from <= series.start) out.push_back(series.start);
  append_series(series.plain, from, to, out);
}

// The occurrence of an instance as the device shows it.
SeriesOccurrence shown(const Series& series, LocalSeconds instance, DeviceTime& time) {
  const auto span = time.shown(instance, instance + series.duration, series.zone, series.all_day);
  return {instance, span.start, span.end, -1};
}

// Calls take(occurrence) for everything within the bounds; exceptions come last.
template <typename Take>
void for_each_occurrence(const Series& series, const DayBounds& bounds, DeviceTime& time,
                         std::vector<LocalSeconds>& instances, Take take) {
  if (bounds.empty()) return;
  find_instances(series, bounds, time, instances);
  for (LocalSeconds instance : instances) {
    if (!series.exceptions.empty() && exception_at(series, instance)) continue;
    const auto occurrence = shown(series, instance, time);
    if (bounds.admit(day_number_of(occurrence.start), day_number_of(occurrence.end)))
      take(occurrence);
  }
  for (std::size_t i = 0; i < series.exceptions.size(); ++i) {
    const SeriesException& exception = series.exceptions[i];
    if (exception.deleted) continue;
    const bool all_day = exception.summary && exception.summary->all_day;
    const auto span = time.shown(exception.start, exception.end, exception.zone, all_day);
    if (bounds.admit(day_number_of(span.start), day_number_of(span.end)))
      take(SeriesOccurrence{exception.original_start, span.start, span.end, static_cast<int>(i)});
  }
}

}  // namespace

OccurrenceList::Summary make_summary(const AppointmentFields& fields, std::int32_t oid,
                                     bool recurring) {
  auto summary = std::make_shared<AppointmentSummary>();
  summary->oid = oid;
  summary->subject = fields.subject;
  summary->location = fields.location;
  summary->categories = fields.categories;
  summary->all_day = fields.all_day;
  summary->has_notes = !fields.body.empty() || !fields.body_ink.empty();
  summary->reminder_set = fields.reminder_set;
  summary->recurring = recurring;
  summary->reminder_minutes = fields.reminder_minutes;
  summary->sensitivity = fields.sensitivity;
  summary->busy_status = fields.busy_status;
  return summary;
}

Series make_series(const AppointmentRecord& record, DeviceTime& time) {
  Series series;
  series.oid = record.oid;
  series.zone = time.zone(record.zone);
  series.start = record.start;
  series.duration = record.end - record.start;
  series.all_day = record.fields.all_day;
  const auto last = last_start(record, series.zone);
  series.last_start = last.value_or(kEndOfRules);
  if (record.pattern)
    set_recurrence(series, *record.pattern);
  else
    set_recurrence(series, read_rules(resolved_rules(record.rules, record.start, series.zone),
                                      record.start, nullptr));
  for (const AppointmentException& exception : record.exceptions) {
    SeriesException kept;
    kept.original_start = exception.original_start;
    kept.deleted = exception.deleted;
    if (!exception.deleted) {
      kept.start = exception.start;
      kept.end = exception.end;
      kept.zone = time.zone(exception.zone);
      kept.summary = make_summary(exception.fields, record.oid, true);
    }
    series.exceptions.push_back(std::move(kept));
  }
  series.summary = make_summary(record.fields, record.oid, true);
  return series;
}

void set_recurrence(Series& series, const RecurrencePattern& pattern) {
  Rule rule = rule_from_pattern(pattern);
  rule.count = 0;  // last_start says where it ends
  rule.until.reset();
  series.plain = plain_series(rule, series.start);
  if (series.plain.kind != PlainSeries::Kind::none) return;
  series.rules = std::make_unique<RecurrenceSet>();
  series.rules->start = series.start;
  series.rules->rules.push_back(std::move(rule));
}

void set_recurrence(Series& series, RecurrenceSet rules) {
  if (rules.rules.size() == 1 && rules.dates.empty() && rules.excluded_rules.empty() &&
      rules.excluded_dates.empty())
    series.plain = plain_series(rules.rules[0], series.start);
  if (series.plain.kind == PlainSeries::Kind::none)
    series.rules = std::make_unique<RecurrenceSet>(std::move(rules));
}

void append_occurrences(const Series& series, const DayBounds& bounds, DeviceTime& time,
                        SeriesScratch& scratch, OccurrenceList& list) {
  const OccurrenceList::Summary* shown = nullptr;
  for_each_occurrence(series, bounds, time, scratch.instances, [&](const SeriesOccurrence& found) {
    const auto& summary =
        found.exception < 0 ? series.summary
                            : series.exceptions[static_cast<std::size_t>(found.exception)].summary;
    if (shown != &summary) list.show(summary);
    shown = &summary;
    list.add(found.start, found.end);
  });
}

std::vector<SeriesOccurrence> occurrences_of(const Series& series, const DayBounds& bounds,
                                             DeviceTime& time) {
  std::vector<LocalSeconds> instances;
  std::vector<SeriesOccurrence> found;
  for_each_occurrence(series, bounds, time, instances,
                      [&](const SeriesOccurrence& occurrence) { found.push_back(occurrence); });
  return found;
}

std::optional<SeriesOccurrence> occurrence_at(const Series& series, LocalSeconds start,
                                              DeviceTime& time) {
  DayBounds day;
  day.start_from = day.start_to = day_number_of(start);
  std::optional<SeriesOccurrence> moved;
  int nearby = 0;
  for (const SeriesOccurrence& occurrence : occurrences_of(series, day, time)) {
    if (occurrence.start == start) return occurrence;
    if (occurrence.exception >= 0) continue;
    // Asked for by its usual time of day, which on this day the clocks moved.
    const auto usual = floor_mod(time.shown(series.start, series.zone), kSecondsPerDay);
    const auto asked = floor_mod(start, kSecondsPerDay);
    if (asked == usual || occurrence.original_start == start) {
      moved = occurrence;
      ++nearby;
    }
  }
  const bool clocks_matter = series.zone || time.skips_on(day.start_from);
  return nearby == 1 && clocks_matter ? moved : std::nullopt;
}

}  // namespace orvello
