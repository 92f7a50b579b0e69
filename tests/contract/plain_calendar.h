// A calendar as a plain list of occurrences, over two years: what a store must show after a series
// of edits, without rules, exceptions, zones or transactions. For the tests of edits at random.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "calendar/recurrence_pattern.h"

namespace orvello::test {

inline constexpr int kPlainDays = 730;
inline constexpr int kDayMinutes = 1440;
Day plain_day(int day);  // the so-manieth of the two years

struct PlainOccurrence {
  int day = 0;    // on which its series has it
  int start = 0;  // minutes since the two years began
  int end = 0;
  std::string subject, location;
  bool changed = false, deleted = false;
};

struct PlainItem {
  std::string subject, location;
  bool series = false, all_day = false;
  int first_day = 0;
  int start_minute = 0, minutes = 0;  // of each occurrence, unless it was changed
  std::vector<PlainOccurrence> occurrences;

  // Puts the days of a series, or its single one. Those that were changed or deleted stay so on
  // days that it still has.
  void set_days(const std::vector<int>& days);
  void set_times(int new_start_minute, int new_minutes);
  void set_texts(const std::string& new_subject, const std::string& new_location);
  int changed_off(const std::vector<int>& days) const;  // changed ones that those days let go
  bool shows_before(int day) const;
  PlainItem split(int day);  // this keeps what was before
  // Those that a person can point at: shown, and at a time of their own.
  std::vector<std::size_t> pickable() const;

 private:
  PlainOccurrence as_series(int day) const;
};

using PlainCalendar = std::map<std::int32_t, PlainItem>;

// "OID START-END SUBJECT@LOCATION", sorted.
std::vector<std::string> shown_rows(const PlainCalendar& calendar);
std::string shown_row(std::int32_t oid, int start, int end, const std::string& subject,
                      const std::string& location);

// The days of a pattern from that day on, found by looking at each day.
std::vector<int> plain_days(const RecurrencePattern& pattern, int from);

}  // namespace orvello::test
