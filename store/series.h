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

struct SeriesException {
  LocalSeconds original_start = 0;
  bool deleted = false;
  LocalSeconds start = 0;
  LocalSeconds end = 0;
  const Zone* zone = nullptr;
  OccurrenceList::Summary summary;
};

// One occurrence as the device shows it.
struct SeriesOccurrence {
  LocalSeconds original_start = 0;  // in the series' zone
  LocalSeconds start = 0;
  LocalSeconds end = 0;
  int exception = -1;  // its place in Series::exceptions
};

struct Series {
  std::int32_t oid = 0;
  const Zone* zone = nullptr;
  LocalSeconds start = 0;
  std::int64_t duration = 0;  // seconds on the clock, first to last
  bool all_day = false;
  LocalSeconds last_start = 0;  // of the last instance; far ahead for a series without end
  PlainSeries plain;            // of nearly all; kind none: see `rules`
  std::unique_ptr<RecurrenceSet> rules;
  std::vector<SeriesException> exceptions;
  OccurrenceList::Summary summary;
};

// Everything `append` needs besides the series; one is kept, so that no call allocates.
struct SeriesScratch {
  std::vector<LocalSeconds> instances;
};

Series make_series(const AppointmentRecord& record, DeviceTime& time);
// Sets the recurrence from a pattern, or from rules without counts. `start` and `last_start` are
// set before.
void set_recurrence(Series& series, const RecurrencePattern& pattern);
void set_recurrence(Series& series, RecurrenceSet rules);

// Adds the occurrences within the bounds. Exceptions count with their own times, so one may come in
// from outside and one may leave.
void append_occurrences(const Series& series, const DayBounds& bounds, DeviceTime& time,
                        SeriesScratch& scratch, OccurrenceList& list);
std::vector<SeriesOccurrence> occurrences_of(const Series& series, const DayBounds& bounds,
                                             DeviceTime& time);

// The occurrence shown at that start, or the day's only one that a change of clocks moved away from
// it.
std::optional<SeriesOccurrence> occurrence_at(const Series& series, LocalSeconds start,
                                              DeviceTime& time);

OccurrenceList::Summary make_summary(const AppointmentFields& fields, std::int32_t oid,
                                     bool recurring);

}  // namespace orvello
