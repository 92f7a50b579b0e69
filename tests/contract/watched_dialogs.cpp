#include "tests/contract/watched_dialogs.h"

#include <functional>

namespace orvello::test {
namespace {

// Says when a dialog is first told something, and when a page of a sheet is shown.
class Watched : public DialogProcedure {
 public:
  using Seen = std::function<void(Dialog& dialog, bool shown)>;
  Watched(DialogProcedure& procedure, Seen seen) : procedure_(procedure), seen_(std::move(seen)) {}
  void handle(Dialog& dialog, const DialogEvent& event) override {
    const bool shown = event.kind == DialogEvent::Kind::page_shown;
    if (!known_ || shown) seen_(dialog, shown);
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

int WatchedDialogs::run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) {
  const std::size_t below = open.size();
  Watched watched(procedure, [this](Dialog& made, bool) { open.push_back(&made); });
  opened.push_back(dialog.id);
  result = dialogs_.run_modal(dialog, watched);
  open.resize(below);
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
  const std::size_t below = open.size();
  std::vector<std::unique_ptr<Watched>> procedures;
  std::vector<SheetPage> watched = sheet;
  for (SheetPage& page : watched) {
    opened.push_back(page.dialog.id);
    procedures.push_back(
        std::make_unique<Watched>(*page.procedure, [this, below](Dialog& made, bool shown) {
          if (!shown) return pages.push_back(&made);
          open.resize(below + 1);
          open.back() = &made;
        }));
    page.procedure = procedures.back().get();
  }
  result = dialogs_.run_sheet(title, watched);
  open.resize(below);
  pages.clear();
  return result;
}

}  // namespace orvello::test
