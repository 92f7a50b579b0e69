// The command line as a value: what was asked for, or what is wrong with it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "base/result.h"
#include "calendar/calendar_date.h"
#include "calendar/dates.h"

namespace orvello {

struct CommandLine {
  enum class Command {
    window,
    import_files,
    export_file,
    agenda,
    search,
    render,
    backup,
    restore,
    settings,
    help,
    version
  };
  Command command = Command::window;
  enum class SettingsAction { list, get, set, export_file, import_file };
  SettingsAction settings_action = SettingsAction::list;
  std::string setting_name, setting_value;  // of get and set
  std::string search_text;                  // the words of search, a blank between two
  std::vector<std::string> files;           // .ics files; the file to write for export and render
  std::string data_folder;                  // --data
  std::string language;                     // --language, a code that is known, or empty
  std::optional<SystemTime> now;            // --now
  std::optional<MonthDayYear> date;         // --date
  std::optional<MonthDayYear> from, to;     // export's options, agenda's words; the day of restore
  int view = -1;                            // --view, or render's word: 0 Day, 1 Month, 2 Year
  std::optional<Size> screen;               // --screen
  int dpi = 0;                              // --dpi, 0: not given
  bool new_appointment = false;             // --new
  bool device_store = false;                // --device-store, where there can be one
  bool json = false;
  bool list = false;  // of restore
  enum class Measure { nothing, start, turn, edit };
  Measure measure = Measure::nothing;
};

// `words` are the arguments after the program's name; `device_store`: this system's devices have a
// store of their own to ask for. Fails with a sentence for a person.
Result<CommandLine> parse_command_line(const std::vector<std::string>& words,
                                       bool device_store = false);

// Whether a file of that name holds contacts: "FILE.vcf".
bool names_contacts(const std::string& file);

std::string usage_text(bool device_store = false);

}  // namespace orvello
