// `orvello search`: the appointments of all years with some words.
#pragma once

#include <iosfwd>

#include "cli/command_line.h"
#include "ports/clock.h"
#include "settings/settings_record.h"
#include "store/record_calendar_store.h"

namespace orvello {

// By start, whatever the profile: for people as the agenda's rows, with --json as its objects. A
// series is one of them, at its next occurrence, else at its last. Nothing is written where the
// store cannot be read. The answer is the process's exit code.
int run_search(const CommandLine& line, RecordCalendarStore& store, const Clock& clock,
               const SettingsRecord& settings, std::ostream& out, std::ostream& err);

}  // namespace orvello
