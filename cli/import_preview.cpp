#include "cli/import_preview.h"

#include "exchange/import_recorder.h"
#include "files/input_file.h"
#include "resources/dialog_templates.h"

namespace orvello {
namespace {

Text counts_text(StringId id, const ImportCounts& counts, Language language) {
  return format(load_string(id, language), counts.imported, counts.updated, counts.skipped);
}

std::string file_name(const std::string& path) {
  return path.substr(path.find_last_of('/') + 1);  // the whole text when there is no slash
}

}  // namespace

void ImportProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  if (event.kind == DialogEvent::Kind::init) {
    dialog.set_text(kControlImportText,
                    counts_text(StringId::import_summary, preview_.counts, language_));
    std::vector<Text> rows;
    for (const ImportedFile& file : preview_.files)
      rows.push_back(format(load_string(StringId::import_file, language_),
                            to_utf16(file_name(file.path)),
                            file.counts.imported + file.counts.updated));
    for (const ImportProblem& problem : preview_.problems) {
      ImportProblem named = problem;
      named.file = file_name(problem.file);
      rows.push_back(to_utf16(problem_line(named)));
    }
    dialog.list(kControlImportFiles)->set_rows(rows);
    const bool something = preview_.counts.imported + preview_.counts.updated > 0;
    dialog.enable(kControlOk, something);
    dialog.focus(something ? kControlOk : kControlCancel);
  } else if (event.kind == DialogEvent::Kind::command) {
    if (event.control == kControlOk) dialog.close(1);
    if (event.control == kControlCancel) dialog.close(0);
  }
}

bool import_after_preview(const std::vector<std::string>& files, RecordStore& store,
                          EditHistory& history, const Clock& clock, Dialogs& dialogs,
                          MessageBoxes& boxes, Language language) {
  const auto failed = [&](const std::string& reason) {
    boxes.show(format(load_string(StringId::import_failed, language), to_utf16(reason)), u"Error",
               BoxIcon::error, BoxButtons::ok, true);
    return false;
  };
  ImportResult preview = preview_files(files, open_input_file, store, clock);
  if (!preview.done) return failed(preview.failure);
  ImportProcedure procedure(std::move(preview), language);
  if (dialogs.run_modal(import_dialog(language), procedure) != 1) return false;
  ImportRecorder recorder(store);
  const ImportResult result = import_files(files, open_input_file, recorder, clock);
  if (!result.done) return failed(result.failure);
  history.keep(recorder.step());
  boxes.show(counts_text(StringId::import_done, result.counts, language),
             load_string(StringId::import_title, language), BoxIcon::none, BoxButtons::ok, true);
  return true;
}

}  // namespace orvello
