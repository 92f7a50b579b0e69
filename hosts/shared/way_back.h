// The way back from a damaged calendar: its copies, and what can still be read of it.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "base/result.h"
#include "cli/command_line.h"
#include "hosts/shared/paths.h"
#include "ports/clock.h"
#include "store/embedded/calendar_check.h"
#include "store/embedded/calendar_copies.h"

namespace orvello {

std::string calendar_file(const Paths& paths);
// Held by everybody who uses the calendar, and alone by who replaces it.
std::string calendar_lock(const Paths& paths);

// What a start can see of the calendar's health in a moment. One that is gone, or empty, is missing
// when there are copies of it, and otherwise new: good.
CalendarCheck look_at_calendar(const Paths& paths, MonthDayYear today);

struct Restored {
  std::optional<CalendarCopy> copy;  // nothing: made anew of what could be read
  std::string kept;                  // the file as it was; empty: there was none
  std::string saved;                 // the calendar file with what could be read of it; empty: none
  std::int64_t appointments = 0;     // in that
  std::string saved_contacts;        // the same for contacts
  std::int64_t doubtful = 0;         // of those, from pages that changed on the disk
};

// Restores the copy of `day`, or the newest good one. What can still be read of a damaged calendar
// is saved beside it first; without a copy a new calendar is made of that. Fails with the reason,
// also while anybody uses the calendar.
Result<Restored> restore_calendar(const Paths& paths, std::optional<MonthDayYear> day,
                                  const Clock& clock);
std::string restored_text(const Restored& restored);

// The commands. Answers are exit codes.
int run_restore(const CommandLine& line, const Paths& paths, const Clock& clock, std::ostream& out,
                std::ostream& err);
int run_backup(const Paths& paths, const Clock& clock, std::ostream& out, std::ostream& err);

// Before a command changes the calendar. False when it is damaged and must be left alone; that no
// copy could be made is only said.
bool copy_before_change(const Paths& paths, const Clock& clock, std::ostream& err);

}  // namespace orvello
