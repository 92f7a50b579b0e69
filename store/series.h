// A recurring appointment made ready for queries: its recurrence with counts already turned into
// last days, its exceptions, and what its occurrences show.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calendar/rule.h"
#include "calendar/rule_series.h"
#include "store/appointment_record.h"
#include "store/device_time.h"
#include "store/occurrence_list.h"
#include "store/restriction.h"

namespace orvello {

// A changed occurrence, with its own times.
struct SeriesChange {
  LocalSeconds original_start;
  LocalSeconds start;
  LocalSeconds end;
  const Zone* zone = nullptr;
  OccurrenceList::Summary summary;
};

// One occurrence as the device shows it, or many of one day: see StoreItem::many.
struct SeriesOccurrence {
  LocalSeconds original_start;  // in the series' zone
  LocalSeconds start;
  LocalSeconds end;
  const SeriesChange* change = nullptr;
  std::int64_t many = 0;
};

struct Series {
  std::int32_t oid = 0;
  const Zone* zone = nullptr;
  LocalSeconds start;
  std::int64_t duration = 0;  // seconds on the clock, first to last
  bool all_day = false;
  LocalSeconds first_start;  // the start, or a date added before it
  LocalSeconds last_start;   // of the last instance; far ahead for a series without end
  PlainSeries plain;         // of nearly all; kind none: see `rules`
  std::unique_ptr<RecurrenceSet> rules;
  bool dense = false;                 // a day may hold more instances than it has hours
  std::vector<LocalSeconds> changed;  // original starts of all exceptions, sorted
  std::vector<SeriesChange> changes;  // those not deleted, sorted by their own start
  std::int64_t longest_change = 0;    // seconds
  OccurrenceList::Summary summary;
};

// Everything `append` needs besides the series; one is kept, so that no call allocates.
struct SeriesScratch {
  std::vector<LocalSeconds> instances;
};

// Nothing when a zone could not be read.
std::optional<Series> make_series(const AppointmentRecord& record, DeviceTime& time);
// Sets the recurrence from a pattern, or from rules without counts. `start` and `last_start` are
// set before.
void set_recurrence(Series& series, const RecurrencePattern& pattern);
void set_recurrence(Series& series, RecurrenceSet rules);
// `change` is null for a deleted occurrence. After the last one the exceptions are put in order.
void add_exception(Series& series, LocalSeconds original_start, const SeriesChange* change);
void order_exceptions(Series& series);

// Adds the occurrences within the bounds. Exceptions count with their own times, so one may come in
// from outside and one may leave. Of a series that fills its days only so many rows are added to
// each that the list stays within some hundred thousand; one more row stands for the others.
void append_occurrences(const Series& series, const DayBounds& bounds, DeviceTime& time,
                        SeriesScratch& scratch, OccurrenceList& list);

// The occurrence shown at that start, else the only one that starts on that day.
std::optional<SeriesOccurrence> occurrence_at(const Series& series, LocalSeconds start,
                                              DeviceTime& time);

OccurrenceList::Summary make_summary(const AppointmentFields& fields, std::int32_t oid,
                                     bool recurring);

}  // namespace orvello
