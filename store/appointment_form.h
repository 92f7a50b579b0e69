// The working copy of one appointment: what the editor fills, and what is read and saved as a
// whole.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "calendar/recurrence_pattern.h"
#include "ports/calendar_store.h"

namespace orvello {

// What of a recurring appointment is meant. One that does not recur is a `series` of one.
enum class EditScope {
  series,      // a new, a single or all of a recurring appointment
  occurrence,  // one of them
  following    // one and all that follow: the series is split there
};

// What is to be edited.
struct EditorChoice {
  std::int32_t oid = 0;               // 0: a new appointment
  CalendarDate occurrence = kNoDate;  // its start, where a row of a series was touched
  EditScope scope = EditScope::series;
  friend bool operator==(const EditorChoice&, const EditorChoice&) = default;
};

inline constexpr std::size_t kSubjectLength = 4096, kLocationLength = 1024;
inline constexpr std::size_t kCategoriesLength = 1024;
inline constexpr std::size_t kAttendeeNameLength = 40, kAttendeeAddressLength = 80;

struct AppointmentForm {
  EditorChoice choice;  // which appointment this is
  Text subject;
  Text location;
  CalendarDate start_date = 0, end_date = 0;  // whole days; the end kNoDate where a series has none
  CalendarDate start_time = 0, end_time = 0;  // fractions of a day
  bool all_day = false;
  bool reminder_set = false;
  std::int32_t reminder_minutes = 0;
  bool is_private = false;
  int busy_status = 0;  // as listed: 0 busy, 1 free, 2 out of office, 3 tentative
  Text categories;      // comma-separated, empty for none
  std::vector<StoreRecipient> attendees;
  bool recurring = false;
  // Of a recurring one whose rule a pattern holds; of another one its duration alone counts.
  RecurrencePattern pattern;
  // Recurrence lines that no pattern holds (StorePattern::rules); kept as long as it is not empty,
  // while the times may change.
  std::string rules;
  Text body;        // the notes' plain text
  std::string ink;  // the notes pane's block; empty: the notes are `body` alone
  friend bool operator==(const AppointmentForm&, const AppointmentForm&) = default;
};

// The store's value of an index into the list of states, and back.
BusyStatus busy_status_of(int index);
int index_of(BusyStatus status);

}  // namespace orvello
