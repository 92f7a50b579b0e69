#include "cli/import_progress.h"

#include <algorithm>
#include <cmath>

#include "resources/grouped_number.h"
#include "resources/ids.h"
#include "resources/import_ids.h"
#include "resources/import_templates.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;
using SteadyClock = std::chrono::steady_clock;

constexpr int kTimer = 1;

// False when the run has ended.
bool run_for(ImportRun& run, std::chrono::milliseconds time) {
  const auto end = SteadyClock::now() + time;
  return run.go_on([end] { return SteadyClock::now() >= end; });
}

Text progress_text(const ImportProgress& progress, const ImportDesk& desk) {
  const Language language = desk.language;
  const Text total = grouped_number(progress.total, language, desk.locale);
  if (progress.done == 0) return format(load_string(StringId::import_found, language), total);
  const StringId text =
      progress.exact ? StringId::import_progress : StringId::import_progress_about;
  return format(load_string(text, language), grouped_number(progress.done, language, desk.locale),
                total);
}

}  // namespace

void ProgressProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::init:
      dialog.enable(kControlProgressBar, false);  // it is only looked at
      dialog.set_timer(kTimer, 1);
      dialog.focus(kControlCancel);
      return show(dialog);
    case Event::timer:
      if (!run_for(run_, desk_.slice)) return dialog.close(1);
      return show(dialog);
    case Event::paint:
      return paint(*event.canvas, event.size);
    case Event::command:
    case Event::close:
      return dialog.close(0);
    default:
      return;
  }
}

void ProgressProcedure::show(Dialog& dialog) {
  progress_ = run_.progress();
  const Text text = progress_text(progress_, desk_);
  if (dialog.text(kControlProgressText) != text) dialog.set_text(kControlProgressText, text);
  const int percent = static_cast<int>(std::lround(progress_.part * 100));
  const Rect place = dialog.place(kControlProgressBar);
  DrawnControl* bar = dialog.drawn(kControlProgressBar);
  bar->set_parts({{local_digits(format(u"%d%%", percent), desk_.locale),
                   {0, 0, place.width, place.height},
                   false}});
  bar->invalidate();
}

void ProgressProcedure::paint(Canvas& canvas, Size size) const {
  const FormColors colors = desk_.dialogs.colors();
  const Rect all{0, 0, size.width, size.height};
  canvas.fill_rect(all, colors.field);
  const int done = static_cast<int>(std::lround(size.width * progress_.part));
  canvas.fill_rect({0, 0, done, size.height}, colors.accent);
  canvas.frame_rect(all, colors.line, std::max(1, desk_.screen.dpi_x / 96));
}

bool run_with_progress(ImportRun& run, const ImportDesk& desk, StringId title) {
  if (!run_for(run, desk.patience)) return true;
  ProgressProcedure procedure(run, desk);
  const Text caption = load_string(title, desk.language);
  return desk.dialogs.run_modal(progress_dialog(caption, desk.language), procedure) == 1;
}

}  // namespace orvello
