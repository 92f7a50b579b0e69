// The commands on settings: list, get, set, export and import.
#pragma once

#include <functional>
#include <iosfwd>

#include "cli/command_line.h"
#include "cli/settings_lists.h"
#include "ports/registry.h"

namespace orvello {

struct SettingsHost {
  Registry& registry;
  VolumeLists lists;
  LocaleData locale;
  std::function<Result<std::string>(const std::string&)> read_file;  // "-": standard input
  std::function<Result<std::size_t>(const std::string&, std::string_view)> write_file;
  std::ostream& out;
  std::ostream& err;
};

// The process's exit code. After a failure nothing has changed in the lists, and nothing of the
// registry may be flushed. An import changes the volume in one step and then the registry in one:
// a process that dies between leaves the new lists with the old settings, and importing again
// completes it.
int run_settings(const CommandLine& line, const SettingsHost& host);

}  // namespace orvello
