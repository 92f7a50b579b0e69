#include "tests/contract/watched_dialogs.h"

#include <functional>

namespace orvello::test {
namespace {

// Says when a dialog is first told something, and when a page of a sheet is shown.
class Watched : public DialogProcedure {
 public:
  using Seen = std::function<void(Dialog& dialog, DialogProcedure& procedure, bool shown)>;
  Watched(DialogProcedure& procedure, Seen seen) : procedure_(procedure), seen_(std::move(seen)) {}
  void handle(Dialog& dialog, const DialogEvent& event) override {
    const bool shown = event.kind == DialogEvent::Kind::page_shown;
    if (!known_ || shown) seen_(dialog, procedure_, shown);
    known_ = true;
    procedure_.handle(dialog, event);
  }
  bool may_close(Dialog& dialog) override { return procedure_.may_close(dialog); }
  bool may_leave(Dialog& dialog) override { return procedure_.may_leave(dialog); }

 private:
  DialogProcedure& procedure_;
  Seen seen_;
  bool known_ = false;
};

}  // namespace

void WatchedDialogs::put(std::size_t level, Dialog& dialog, DialogProcedure& procedure) {
  open.resize(level + 1);
  procedures_.resize(level + 1);
  open.back() = &dialog;
  procedures_.back() = &procedure;
}

void WatchedDialogs::drop(std::size_t level) {
  open.resize(level);
  procedures_.resize(level);
}

int WatchedDialogs::run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) {
  const std::size_t level = open.size();
  Watched watched(procedure,
                  [&](Dialog& made, DialogProcedure& its, bool) { put(level, made, its); });
  opened.push_back(dialog.id);
  result = dialogs_.run_modal(dialog, watched);
  drop(level);
  return result;
}

std::unique_ptr<Dialog> WatchedDialogs::open_modeless(const DialogTemplate& dialog,
                                                      DialogProcedure& procedure) {
  opened.push_back(dialog.id);
  auto made = dialogs_.open_modeless(dialog, procedure);
  modeless = made.get();
  return made;
}

int WatchedDialogs::run_sheet(TextView title, const std::vector<SheetPage>& sheet) {
  if (fail_sheets) return kSheetFailed;
  const std::size_t level = open.size();
  std::vector<std::unique_ptr<Watched>> procedures;
  std::vector<SheetPage> watched = sheet;
  for (SheetPage& page : watched) {
    opened.push_back(page.dialog.id);
    procedures.push_back(std::make_unique<Watched>(
        *page.procedure, [&](Dialog& made, DialogProcedure& its, bool shown) {
          if (shown)
            put(level, made, its);
          else
            pages.push_back(&made);
        }));
    page.procedure = procedures.back().get();
  }
  result = dialogs_.run_sheet(title, watched);
  drop(level);
  pages.clear();
  return result;
}

void WatchedDialogs::paint(int control, Canvas& canvas) {
  procedures_.back()->handle(*open.back(),
                             {DialogEvent::Kind::paint, control, &canvas, canvas.size()});
}

}  // namespace orvello::test
