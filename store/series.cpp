#include "store/series.h"

#include <algorithm>

#include "calendar/instance_stream.h"
#include "calendar/rule_days.h"
#include "store/record_rules.h"

namespace orvello {
namespace {

// A zone may show a moment this much earlier or later than another one does.
constexpr std::int64_t kZoneMargin = 2 * kSecondsPerDay;

// Rows that a day has for one series; one a minute is shown in full.
constexpr std::int64_t kRowsOfADay = 1500;
// Rows of a whole query, of which each crowded series takes a part of what is left.
constexpr std::int64_t kRowsOfAQuery = 240'000;
constexpr std::int64_t kPartOfAQuery = 16;
// More instances a day than this make a series crowded.
constexpr std::int64_t kHoursOfADay = 24;

// How far a series without end is shown to who sets no bound.
constexpr std::int64_t kUnboundedSpan = 731 * kSecondsPerDay;

LocalSeconds today(DeviceTime& time) {
  const auto now = time.clock().local_time();
  return midnight_of(day_of(now.year, now.month, now.day));
}

bool is_changed(const Series& series, LocalSeconds original) {
  return std::binary_search(series.changed.begin(), series.changed.end(), original);
}

LocalSeconds bounded_midnight(Day day) {
  // A bound may lie where no clock reads anything.
  return std::clamp(midnight_of(day), kFirstRuleSecond, kEndOfRules);
}

struct LocalSpan {
  LocalSeconds from, to;
};

// Where instances may lie whose occurrences are within the bounds, in the series' own time.
LocalSpan span_of(const Series& series, const DayBounds& bounds, DeviceTime& time) {
  LocalSeconds from = std::max(bounded_midnight(bounds.start_from),
                               bounded_midnight(bounds.end_from) - series.duration);
  LocalSeconds to = bounded_midnight(std::min(bounds.start_to, bounds.end_to) + 1);
  if (series.zone) {
    from -= kZoneMargin;
    to += kZoneMargin;
  } else if (from > kFirstRuleSecond && time.skips_on(day_of(from) - 1)) {
    from -= kSecondsPerDay;  // a skipped time before midnight is shown on the next day
  }
  const bool endless = series.last_start >= kEndOfRules || series.dense;
  if (endless && std::min(bounds.start_to, bounds.end_to) >= kLastDay)
    to = std::max(series.start, today(time)) + kUnboundedSpan;
  return {std::max(from, series.first_start), std::min(to, series.last_start + 1)};
}

// The occurrence of an instance as the device shows it.
SeriesOccurrence shown(const Series& series, LocalSeconds instance, DeviceTime& time) {
  const auto span = time.shown(instance, instance + series.duration, series.zone, series.all_day);
  return {instance, span.start, span.end};
}

template <typename Take>
void take_within(const SeriesOccurrence& occurrence, const DayBounds& bounds, Take take) {
  if (bounds.admit(day_of(occurrence.start), day_of(occurrence.end))) take(occurrence);
}

template <typename Take>
void take_changes(const Series& series, const DayBounds& bounds, DeviceTime& time, Take take) {
  const LocalSeconds from = std::max(bounded_midnight(bounds.start_from),
                                     bounded_midnight(bounds.end_from) - series.longest_change) -
                            kZoneMargin;
  const LocalSeconds to =
      bounded_midnight(std::min(bounds.start_to, bounds.end_to) + 1) + kZoneMargin;
  auto change = std::lower_bound(
      series.changes.begin(), series.changes.end(), from,
      [](const SeriesChange& each, LocalSeconds moment) { return each.start < moment; });
  for (; change != series.changes.end() && change->start < to; ++change) {
    const bool all_day = change->summary && change->summary->all_day;
    const auto span = time.shown(change->start, change->end, change->zone, all_day);
    take_within({change->original_start, span.start, span.end, &*change}, bounds, take);
  }
}

// The instances of a series that fills its days, in ascending spans.
class CrowdedInstances {
 public:
  explicit CrowdedInstances(const Series& series) : series_(series) {
    if (series.rules) stream_.emplace(*series.rules, kEffort);
  }

  // The first `most` of the span that are no exceptions, and what else it holds.
  LeftOut append(LocalSeconds from, LocalSeconds to, std::size_t most,
                 std::vector<LocalSeconds>& out) {
    for (;;) {
      const std::size_t begin = out.size();
      LeftOut left = stream_ ? stream_->append(from, to, most, out)
                             : append_some(series_.plain, from, to, most, out);
      if (series_.changed.empty()) return left;
      const auto first = out.begin() + static_cast<std::ptrdiff_t>(begin);
      out.erase(std::remove_if(first, out.end(),
                               [&](LocalSeconds each) { return is_changed(series_, each); }),
                out.end());
      if (left.count == 0) return left;
      most -= out.size() - begin;
      from = left.first;
      if (most > 0 && left.count > 0) continue;
      if (left.count > 0) left.count -= exceptions_in(left);
      return left.count == 0 ? LeftOut{} : left;
    }
  }

 private:
  // Exceptions are instances of their series, or nearly all are.
  std::int64_t exceptions_in(const LeftOut& left) const {
    const auto& all = series_.changed;
    const auto first = std::lower_bound(all.begin(), all.end(), left.first);
    return std::min(left.count, static_cast<std::int64_t>(
                                    std::upper_bound(first, all.end(), left.last) - first));
  }

  // Some days of one every second that an excluding rule is asked about; a tenth of a second.
  static constexpr std::int64_t kEffort = 600'000;
  const Series& series_;
  std::optional<InstanceStream> stream_;
};

// Day by day of the device, at most `most` occurrences each and one that stands for the rest.
template <typename Take>
void take_crowded(const Series& series, const DayBounds& bounds, const LocalSpan& span,
                  std::int64_t allowance, DeviceTime& time, std::vector<LocalSeconds>& instances,
                  Take take) {
  const std::int64_t days = (span.to - span.from) / kSecondsPerDay + 1;
  const auto most =
      static_cast<std::size_t>(std::clamp<std::int64_t>(allowance / days, 1, kRowsOfADay));
  CrowdedInstances crowd(series);
  auto day = day_of(time.shown(span.from, series.zone));
  for (LocalSeconds from = span.from; from < span.to; ++day) {
    const LocalSeconds midnight = midnight_of(day + 1);
    const LocalSeconds to =
        std::min(span.to, series.zone ? time.in_zone(midnight, series.zone) : midnight);
    if (to <= from) continue;
    instances.clear();
    LeftOut left = crowd.append(from, to, most, instances);
    from = to;
    if (left.count == 1) instances.push_back(left.first);
    for (LocalSeconds instance : instances)
      take_within(shown(series, instance, time), bounds, take);
    if (left.count == 0 || left.count == 1) continue;
    SeriesOccurrence many = shown(series, left.first, time);
    many.end = std::max(many.end, shown(series, left.last, time).end);
    many.many = left.count;
    take_within(many, bounds, take);
  }
}

// At first sight: it ended before the bounds, or begins after them.
bool is_over(const Series& series, const DayBounds& bounds) {
  const auto from = std::max(bounds.start_from, bounds.end_from);
  const auto to = std::min(bounds.start_to, bounds.end_to);
  return series.last_start + series.duration + kZoneMargin < midnight_of(from) ||
         series.first_start - kZoneMargin > midnight_of(to + 1);
}

// Calls take(occurrence) for everything within the bounds; exceptions come last.
template <typename Take>
void for_each_occurrence(const Series& series, const DayBounds& bounds, std::int64_t allowance,
                         DeviceTime& time, std::vector<LocalSeconds>& instances, Take take) {
  if (bounds.empty() || (series.changes.empty() && is_over(series, bounds))) return;
  const LocalSpan span = span_of(series, bounds, time);
  if (span.from < span.to && series.dense) {
    take_crowded(series, bounds, span, allowance, time, instances, take);
  } else if (span.from < span.to) {
    instances.clear();
    if (series.rules) {
      append_instances(*series.rules, span.from, span.to, instances);
    } else {
      if (span.from <= series.start) instances.push_back(series.start);
      append_series(series.plain, span.from, span.to, instances);
    }
    for (LocalSeconds instance : instances)
      if (series.changed.empty() || !is_changed(series, instance))
        take_within(shown(series, instance, time), bounds, take);
  }
  if (!series.changes.empty()) take_changes(series, bounds, time, take);
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

std::optional<Series> make_series(const AppointmentRecord& record, DeviceTime& time) {
  Series series;
  const auto zone = time.zone(record.zone);
  if (!zone) return std::nullopt;
  series.oid = record.oid;
  series.zone = *zone;
  series.start = record.start;
  series.duration = record.end - record.start;
  series.all_day = record.fields.all_day;
  const auto last = last_start(record, series.zone);
  series.last_start = last.value_or(kEndOfRules);
  if (record.pattern)
    set_recurrence(series, *record.pattern);
  else
    set_recurrence(series, read_rules(resolved_rules(record, series.zone), record.start, nullptr,
                                      series.all_day));
  for (const AppointmentException& exception : record.exceptions) {
    SeriesChange change{exception.original_start, exception.start, exception.end, nullptr, nullptr};
    if (!exception.deleted) {
      const auto own = time.zone(exception.zone);
      if (!own) return std::nullopt;
      change.zone = *own;
      change.summary = make_summary(exception.fields, record.oid, true);
    }
    add_exception(series, exception.original_start, exception.deleted ? nullptr : &change);
  }
  order_exceptions(series);
  series.summary = make_summary(record.fields, record.oid, true);
  return series;
}

void set_recurrence(Series& series, const RecurrencePattern& pattern) {
  Rule rule = rule_from_pattern(pattern);
  rule.count = 0;  // last_start says where it ends
  rule.until.reset();
  series.first_start = series.start;
  series.plain = plain_series(rule, series.start);
  if (series.plain.kind != PlainSeries::Kind::none) return;
  series.rules = std::make_unique<RecurrenceSet>();
  series.rules->start = series.start;
  series.rules->rules.push_back(std::move(rule));
}

void set_recurrence(Series& series, RecurrenceSet rules) {
  series.first_start = rules.dates.empty() ? series.start : std::min(series.start, rules.dates[0]);
  if (rules.rules.size() == 1 && rules.dates.empty() && rules.excluded_rules.empty() &&
      rules.excluded_dates.empty())
    series.plain = plain_series(rules.rules[0], series.start);
  if (series.plain.kind != PlainSeries::Kind::none) {
    series.dense = series.plain.kind == PlainSeries::Kind::steps &&
                   series.plain.step * kHoursOfADay < kSecondsPerDay;
    return;
  }
  std::size_t a_day = rules.dates.size();
  for (const Rule& rule : rules.rules) {
    const auto times = [](const std::vector<int>& values) {
      return std::max<std::size_t>(1, values.size());
    };
    a_day += rule.frequency < Frequency::daily
                 ? kHoursOfADay + 1
                 : times(rule.by_hour) * times(rule.by_minute) * times(rule.by_second);
  }
  series.dense = a_day > static_cast<std::size_t>(kHoursOfADay);
  series.rules = std::make_unique<RecurrenceSet>(std::move(rules));
}

void add_exception(Series& series, LocalSeconds original_start, const SeriesChange* change) {
  series.changed.push_back(original_start);
  if (!change) return;
  series.changes.push_back(*change);
  series.longest_change = std::max(series.longest_change, change->end - change->start);
}

void order_exceptions(Series& series) {
  std::sort(series.changed.begin(), series.changed.end());
  std::stable_sort(series.changes.begin(), series.changes.end(),
                   [](const auto& a, const auto& b) { return a.start < b.start; });
}

void append_occurrences(const Series& series, const DayBounds& bounds, DeviceTime& time,
                        SeriesScratch& scratch, OccurrenceList& list) {
  const auto left =
      std::max<std::int64_t>(0, kRowsOfAQuery - static_cast<std::int64_t>(list.size()));
  const OccurrenceList::Summary* shown = nullptr;
  for_each_occurrence(series, bounds, left / kPartOfAQuery, time, scratch.instances,
                      [&](const SeriesOccurrence& found) {
                        const auto& summary = found.change ? found.change->summary : series.summary;
                        if (found.many != 0) {
                          list.add_many(summary, found.start, found.end, found.many);
                          shown = nullptr;
                          return;
                        }
                        if (shown != &summary) list.show(summary);
                        shown = &summary;
                        list.add(found.start, found.end);
                      });
}

std::optional<SeriesOccurrence> occurrence_at(const Series& series, LocalSeconds start,
                                              DeviceTime& time) {
  DayBounds day;
  day.start_from = day.start_to = day_of(start);
  std::vector<LocalSeconds> instances;
  std::optional<SeriesOccurrence> exact, of_day;
  std::int64_t on_day = 0;
  for_each_occurrence(series, day, 1, time, instances, [&](const SeriesOccurrence& found) {
    if (found.start == start && !exact) exact = found;
    of_day = found;
    on_day += found.many == 0 ? 1 : 2;
  });
  if (series.dense && !exact) {  // the day's others were not looked at
    const LocalSeconds asked = time.in_zone(start, series.zone);
    instances.clear();
    CrowdedInstances(series).append(asked, asked + 1, 1, instances);
    if (!instances.empty() && instances[0] == asked) exact = shown(series, asked, time);
  }
  if (exact) return exact->many == 0 ? exact : shown(series, exact->original_start, time);
  return on_day == 1 ? of_day : std::nullopt;
}

}  // namespace orvello
