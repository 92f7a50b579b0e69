#include "cli/import_preview.h"

#include <algorithm>

#include "cli/import_progress.h"
#include "exchange/import_recorder.h"
#include "exchange/import_run.h"
#include "files/input_file.h"
#include "resources/ids.h"
#include "resources/import_ids.h"
#include "resources/import_templates.h"

namespace orvello {
namespace {

void tell_import_failure(const std::string& reason, const ImportDesk& desk) {
  desk.boxes.show(format(load_string(StringId::import_failed, desk.language), to_utf16(reason)),
                  load_string(StringId::box_error, desk.boxes), BoxIcon::error, BoxButtons::ok,
                  true);
}

std::optional<ImportPreview> read_preview(const std::vector<std::string>& files,
                                          std::set<ImportSource> left_out, const ImportDesk& desk) {
  ImportPreview preview{std::move(left_out), {}, {}};
  ImportList list;
  ImportRun run({files, open_input_file, preview.left_out}, desk.store, desk.clock, false, &list);
  if (!run_with_progress(run, desk, StringId::import_title_reading)) return std::nullopt;
  preview.result = run.finish();
  if (!preview.result.done) {
    tell_import_failure(preview.result.failure, desk);
    return std::nullopt;
  }
  preview.items = list.take_items();
  return preview;
}

// Nothing when the person stopped it. The transaction has ended, one way or the other, before
// anybody is told of it.
std::optional<ImportResult> import_all(const ImportRequest& request, ImportRecorder& recorder,
                                       FreshAppointments& fresh, const ImportDesk& desk) {
  ImportRun run(request, recorder, desk.clock, true, &fresh);
  if (!run_with_progress(run, desk, StringId::import_title_running)) return std::nullopt;
  return run.finish();
}

std::optional<Day> first_new_day(const std::vector<ImportItem>& items) {
  for (const ImportItem& item : items)
    if (item.change == ImportItem::Change::added && !item.contact) return day_of(item.start);
  return std::nullopt;
}

}  // namespace

void tell_import(const ImportCounts& counts, const ImportDesk& desk) {
  desk.boxes.show(format(load_string(StringId::import_done, desk.language), counts.imported,
                         counts.updated, counts.skipped),
                  load_string(StringId::import_title, desk.language), BoxIcon::none, BoxButtons::ok,
                  true);
}

ImportOutcome import_after_preview(const std::vector<std::string>& files, const ImportDesk& desk) {
  ImportOutcome outcome;
  const auto read = [&](std::set<ImportSource> left_out) {
    return read_preview(files, std::move(left_out), desk);
  };
  auto preview = read({});
  if (!preview) return outcome;
  ImportProcedure procedure(files, std::move(*preview), read, desk);
  if (desk.dialogs.run_modal(import_dialog(desk.language), procedure) != 1) return outcome;
  outcome.begun = true;
  ImportRecorder recorder(desk.store);
  FreshAppointments fresh;
  const ImportRequest request{files, open_input_file, procedure.preview().left_out};
  const auto result = import_all(request, recorder, fresh, desk);
  if (!result) {
    desk.boxes.show(load_string(StringId::import_stopped, desk.language),
                    load_string(StringId::import_title, desk.language), BoxIcon::none,
                    BoxButtons::ok, true);
    return outcome;
  }
  if (!result->done) return tell_import_failure(result->failure, desk), outcome;
  desk.history.keep(recorder.step());
  outcome.imported = true;
  outcome.counts = result->counts;
  const MonthDayYear today = TodayTriple(desk.clock.local_time());
  outcome.first_day = fresh.first_day(desk.store, day_of(today));
  if (!outcome.first_day) outcome.first_day = first_new_day(procedure.preview().items);
  return outcome;
}

}  // namespace orvello
