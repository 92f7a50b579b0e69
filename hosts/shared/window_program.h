// The window, and pictures of it.
#pragma once

#include <chrono>
#include <string>

#include "cli/command_line.h"
#include "hosts/shared/program_system.h"
#include "store/embedded/embedded_store.h"

namespace orvello {

// How long the window may stand still over another program's lock.
inline constexpr std::chrono::milliseconds kLockWait{300};

struct WindowParts {
  CommandLine line;
  Paths paths;
  const Clock& clock;
  RecordCalendarStore* store = nullptr;  // null: could not be opened,
  std::string reason;                    // because of this
  EmbeddedStore* file = nullptr;         // what that is when it is no device's own
};

// The local time of --now.
std::optional<LocalSeconds> fixed_time(const CommandLine& line);

// `offscreen` needs no display.
WindowHostOptions host_options(const WindowParts& parts, bool offscreen);

int run_window(ProgramSystem& system, const WindowParts& parts);

// Draws the window that the options ask for into the first of the line's files.
int run_render(ProgramSystem& system, const WindowParts& parts);

}  // namespace orvello
