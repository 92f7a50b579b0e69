// The import's form: counts, calendars with a mark each, problems, and what would come.
#include <algorithm>

#include "cli/import_preview.h"
#include "cli/import_progress.h"
#include "files/system_files.h"
#include "ports/messages.h"
#include "resources/grouped_number.h"
#include "resources/ids.h"
#include "resources/import_ids.h"
#include "resources/import_templates.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr std::size_t kItemsAtOnce = 1000, kLongestCalendarName = 80;
constexpr std::size_t kMostProblems = 1000;
constexpr int kLowScreen = 300;  // at 96 dpi

}  // namespace

ImportProcedure::ImportProcedure(std::vector<std::string> files, ImportPreview preview,
                                 ReadAgain read_again, const ImportDesk& desk)
    : files_(std::move(files)),
      preview_(std::move(preview)),
      read_again_(std::move(read_again)),
      desk_(desk),
      calendars_(preview_.result.calendars),
      shown_(kItemsAtOnce) {}

void ImportProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::init:
      show(dialog);
      dialog.focus(preview_.items.empty() ? kControlCancel : kControlOk);
      return;
    case Event::command:
      if (event.control == kControlOk) dialog.close(1);
      if (event.control == kControlCancel) dialog.close(0);
      return;
    default:
      if (event.control == kControlImportFiles) source_event(dialog, event);
      if (event.control == kControlImportItems) item_event(dialog, event);
  }
}

void ImportProcedure::show(Dialog& dialog) {
  const ImportCounts& counts = preview_.result.counts;
  sources_ = source_rows();
  const Text summary = local_digits(format(load_string(StringId::import_summary, desk_.language),
                                           counts.imported, counts.updated, counts.skipped),
                                    desk_.locale);
  const Text legend = import_legend(preview_.items, desk_);
  lay_out(dialog, summary, legend);
  dialog.set_text(kControlImportText, legend.empty() ? summary : summary + u"\n" + legend);
  if (ReportList* list = dialog.report(kControlImportFiles)) {
    list->set_content(import_source_rows(sources_, list->place(), desk_));
    source_row_ = std::clamp(source_row_, 0, std::max(0, static_cast<int>(sources_.size()) - 1));
    if (!sources_.empty()) list->select({source_row_});
    list->show_row(source_row_);
  }
  show_items(dialog, 0);
  dialog.enable(kControlOk, counts.imported + counts.updated > 0);
}

void ImportProcedure::lay_out(Dialog& dialog, const Text& summary, const Text& legend) {
  const int width = dialog.report(kControlImportItems)->place().size.width;
  const int lines = lines_of(summary, width, desk_) + lines_of(legend, width, desk_);
  const bool low = desk_.screen.work.height < kLowScreen * desk_.screen.dpi_y / 96;
  const ImportPlaces places = import_places(lines, static_cast<int>(sources_.size()), low);
  dialog.show(kControlImportFiles, !sources_.empty());
  dialog.set_place(kControlImportText, places.counts);
  dialog.set_place(kControlImportFiles, places.files);
  dialog.set_place(kControlImportItems, places.items);
}

void ImportProcedure::show_items(Dialog& dialog, int row) {
  ReportList* list = dialog.report(kControlImportItems);
  list->set_content(import_item_rows(preview_.items, shown_, list->place(), desk_));
  item_row_ = row;
  list->select({row});
  list->show_row(row);
}

// One calendar alone is what OK is about, and needs no mark.
std::vector<ImportSourceRow> ImportProcedure::source_rows() const {
  std::vector<ImportSourceRow> rows;
  const bool alone = calendars_.size() < 2;
  const auto& problems = preview_.result.problems;
  if (alone && problems.empty()) return rows;
  for (const ImportedCalendar& calendar : calendars_) {
    const bool out = preview_.left_out.contains(calendar.source);
    rows.push_back({calendar_text(calendar), alone ? ReportMark::none
                                             : out ? ReportMark::clear
                                                   : ReportMark::set});
  }
  for (std::size_t i = 0; i < std::min(problems.size(), kMostProblems); ++i) {
    ImportProblem named = problems[i];
    named.file = name_in_path(named.file);
    rows.push_back({to_utf16(problem_line(named))});
  }
  if (problems.size() > kMostProblems)
    rows.push_back({format(load_string(StringId::import_more, desk_.language),
                           grouped_number(static_cast<int>(problems.size() - kMostProblems),
                                          desk_.language, desk_.locale))});
  return rows;
}

// "family.ics: 12", and with a name of its own "Family (family.ics): 12".
Text ImportProcedure::calendar_text(const ImportedCalendar& calendar) const {
  const auto text = [this](StringId id) { return load_string(id, desk_.language); };
  Text name = to_utf16(name_in_path(files_[calendar.source.file]));
  if (!calendar.source.name.empty())
    name = format(text(StringId::import_named_calendar),
                  cut(to_utf16(calendar.source.name), kLongestCalendarName), name);
  return format(text(StringId::import_file), name,
                calendar.counts.imported + calendar.counts.updated);
}

bool ImportProcedure::is_calendar(int row) const {
  return row >= 0 && static_cast<std::size_t>(row) < calendars_.size();
}

// The row that a key or the pen takes, -1: none. The one that keys stand on, `at`, goes along.
int ImportProcedure::taken_row(Dialog& dialog, const DialogEvent& event, int rows, int& at,
                               ReportPen& pen) {
  ReportList* list = dialog.report(event.control);
  if (event.kind == Event::key) {
    if (event.key == kKeySpace || event.key == kKeyReturn) return at;
    const int high = std::max(1, list->row_place(at).height);
    const auto to = walked_row(event.key, at, rows, dialog.place(event.control).height / high);
    if (!to) return -1;
    list->select({at = *to});
    list->show_row(at);
    return -1;
  }
  const int row = pen.tapped(*list, event, desk_.screen.dpi_y);
  if (row < 0 || row >= rows) return -1;
  list->select({at = row});
  return row;
}

void ImportProcedure::source_event(Dialog& dialog, const DialogEvent& event) {
  const int rows = static_cast<int>(sources_.size());
  take_source(dialog, taken_row(dialog, event, rows, source_row_, source_pen_));
}

// A calendar is left out or comes again; of a problem the whole line is told.
void ImportProcedure::take_source(Dialog& dialog, int row) {
  if (row < 0 || static_cast<std::size_t>(row) >= sources_.size()) return;
  if (!is_calendar(row)) {
    desk_.boxes.show(sources_[static_cast<std::size_t>(row)].text,
                     load_string(StringId::import_title, desk_.language), BoxIcon::none,
                     BoxButtons::ok, true);
    return;
  }
  if (calendars_.size() < 2) return;
  std::set<ImportSource> left_out = preview_.left_out;
  const ImportSource& source = calendars_[static_cast<std::size_t>(row)].source;
  if (left_out.erase(source) == 0) left_out.insert(source);
  auto preview = read_again_(std::move(left_out));
  if (!preview) return;
  preview_ = std::move(*preview);
  for (const ImportedCalendar& now : preview_.result.calendars)
    for (ImportedCalendar& known : calendars_)
      if (known.source == now.source && !preview_.left_out.contains(now.source))
        known.counts = now.counts;
  shown_ = kItemsAtOnce;
  show(dialog);
}

void ImportProcedure::item_event(Dialog& dialog, const DialogEvent& event) {
  const bool more = shown_ < preview_.items.size();
  const int rows = static_cast<int>(std::min(shown_, preview_.items.size())) + more;
  take_item(dialog, taken_row(dialog, event, rows, item_row_, item_pen_));
}

// The row behind the shown ones shows more of them.
void ImportProcedure::take_item(Dialog& dialog, int row) {
  if (shown_ >= preview_.items.size() || row != static_cast<int>(shown_)) return;
  shown_ += kItemsAtOnce;
  show_items(dialog, row);
}

}  // namespace orvello
