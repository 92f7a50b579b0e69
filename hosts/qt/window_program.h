// The window, and pictures of it.
#pragma once

#include <chrono>
#include <string>

#include "cli/command_line.h"
#include "hosts/linux/paths.h"
#include "hosts/qt/qt_host.h"
#include "ports/clock.h"
#include "store/embedded/embedded_store.h"

namespace orvello {

// How long the window may stand still over another program's lock.
inline constexpr std::chrono::milliseconds kLockWait{300};

struct WindowParts {
  CommandLine line;
  Paths paths;
  const Clock& clock;
  EmbeddedStore* store = nullptr;  // null: could not be opened,
  std::string reason;              // because of this
};

// The local time of --now.
std::optional<LocalSeconds> fixed_time(const CommandLine& line);

// `offscreen` needs no display.
QtHostOptions host_options(const WindowParts& parts, bool offscreen);

int run_window(int argc, char** argv, const WindowParts& parts);

// Draws the window that the options ask for into the first of the line's files.
int run_render(int argc, char** argv, const WindowParts& parts);

}  // namespace orvello
