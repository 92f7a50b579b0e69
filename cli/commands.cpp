#include "cli/commands.h"

#include <ostream>

#include "calendar/dates.h"
#include "cli/agenda.h"
#include "exchange/export.h"
#include "exchange/import.h"
#include "files/calendar_files.h"
#include "files/input_file.h"
#include "files/replace_file.h"

namespace orvello {
namespace {

std::optional<Day> day_named(const std::optional<MonthDayYear>& date) {
  if (!date) return std::nullopt;
  return day_of(*date);
}

}  // namespace

int run_import(const CommandLine& line, RecordStore& store, const Clock& clock, std::ostream& out,
               std::ostream& err) {
  const auto files = calendar_files(line.files);
  if (!files) {
    err << "orvello: nothing was imported: " << files.reason() << "\n";
    return kExitFailure;
  }
  const ImportResult result = import_files(*files, open_input_file, store, clock);
  for (const ImportProblem& problem : result.problems) err << problem_line(problem) << "\n";
  if (!result.done) {
    err << "orvello: nothing was imported: " << result.failure << "\n";
    return kExitFailure;
  }
  out << counts_line(result.counts) << "\n";
  if (!out.flush()) {
    err << "orvello: the import is made: " << counts_line(result.counts) << "\n";
    return kExitFailure;
  }
  const bool nothing_usable = result.counts.imported + result.counts.updated == 0;
  return nothing_usable && !result.problems.empty() ? kExitFailure : kExitSuccess;
}

int run_export(const CommandLine& line, RecordStore& store, const Clock& clock,
               std::ostream& content, std::ostream& err) {
  const auto text = names_contacts(line.files[0])
                        ? export_contacts(store)
                        : export_calendar(store, day_named(line.from), day_named(line.to), clock);
  if (!text) {
    err << "orvello: " << text.reason() << "\n";
    return kExitFailure;
  }
  if (line.files[0] == "-") {
    content << *text;
    return content.flush() ? kExitSuccess : kExitFailure;
  }
  const auto written = replace_file(line.files[0], *text);
  if (!written) {
    err << "orvello: " << written.reason() << "\n";
    return kExitFailure;
  }
  return kExitSuccess;
}

int run_agenda(const CommandLine& line, RecordCalendarStore& store, const Clock& clock,
               const SettingsRecord& settings, std::ostream& out, std::ostream& err) {
  const MonthDayYear today = TodayTriple(clock.local_time());
  const Day from = day_of(line.from.value_or(today));
  const Day to = day_of(line.to.value_or(line.from.value_or(today)));
  const auto written = line.json ? write_agenda_json(store, from, to, out)
                                 : write_agenda_text(store, from, to, settings, out);
  if (!written) {
    err << "orvello: " << written.reason() << "\n";
    return kExitFailure;
  }
  return out.flush() ? kExitSuccess : kExitFailure;
}

}  // namespace orvello
