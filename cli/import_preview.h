// Importing from the window: what the files would bring is shown first, and comes in on OK.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "cli/import_desk.h"
#include "cli/import_rows.h"
#include "exchange/import_list.h"
#include "options/report_pen.h"

namespace orvello {

struct ImportOutcome {
  bool imported = false;  // which is then a step of the history
  bool begun = false;     // the store was written to, if only to be taken back
  ImportCounts counts;
  // The earliest day from today on that shows something new, else the earliest with something new.
  std::optional<Day> first_day;
};

ImportOutcome import_after_preview(const std::vector<std::string>& files, const ImportDesk& desk);

// How many came, in a box.
void tell_import(const ImportCounts& counts, const ImportDesk& desk);

// What files would bring, without the calendars that were left out.
struct ImportPreview {
  std::set<ImportSource> left_out;
  ImportResult result;
  std::vector<ImportItem> items;
};

// The procedure of dialog 300: result 1 on OK.
class ImportProcedure : public DialogProcedure {
 public:
  // Reads the files again for another choice of calendars; nothing when that failed, which has been
  // told, or was stopped.
  using ReadAgain = std::function<std::optional<ImportPreview>(std::set<ImportSource> left_out)>;
  ImportProcedure(std::vector<std::string> files, ImportPreview preview, ReadAgain read_again,
                  const ImportDesk& desk);
  void handle(Dialog& dialog, const DialogEvent& event) override;
  const ImportPreview& preview() const { return preview_; }  // as it was last shown

 private:
  void show(Dialog& dialog);
  void lay_out(Dialog& dialog, const Text& summary, const Text& legend);
  void show_items(Dialog& dialog, int row);
  std::vector<ImportSourceRow> source_rows() const;
  Text calendar_text(const ImportedCalendar& calendar) const;
  bool is_calendar(int row) const;
  int taken_row(Dialog& dialog, const DialogEvent& event, int rows, int& at, ReportPen& pen);
  void source_event(Dialog& dialog, const DialogEvent& event);
  void item_event(Dialog& dialog, const DialogEvent& event);
  void take_source(Dialog& dialog, int row);
  void take_item(Dialog& dialog, int row);

  std::vector<std::string> files_;
  ImportPreview preview_;
  ReadAgain read_again_;
  const ImportDesk& desk_;
  std::vector<ImportedCalendar> calendars_;  // with what each brings, also when it is left out
  std::vector<ImportSourceRow> sources_;
  std::size_t shown_ = 0;  // items
  int source_row_ = 0, item_row_ = 0;
  ReportPen source_pen_, item_pen_;
};

}  // namespace orvello
