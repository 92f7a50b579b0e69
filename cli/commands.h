// The commands that need no window. Results go to `out`, problems to `err`; the answer is the
// process's exit code. Why `out` did not take everything is for whoever opened it to say.
#pragma once

#include <iosfwd>

#include "cli/command_line.h"
#include "ports/clock.h"
#include "settings/settings_record.h"
#include "store/record_calendar_store.h"

namespace orvello {

inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1;
inline constexpr int kExitUsage = 2;

int run_import(const CommandLine& line, RecordStore& store, const Clock& clock, std::ostream& out,
               std::ostream& err);
// `content` takes what is exported to "-", byte for byte.
int run_export(const CommandLine& line, RecordStore& store, const Clock& clock,
               std::ostream& content, std::ostream& err);
int run_agenda(const CommandLine& line, RecordCalendarStore& store, const Clock& clock,
               const SettingsRecord& settings, std::ostream& out, std::ostream& err);

}  // namespace orvello
