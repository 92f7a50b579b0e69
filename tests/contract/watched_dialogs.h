// Lets a test look at what stands in the dialogs that run on a host's.
#pragma once

#include <memory>
#include <vector>

#include "ports/dialog.h"

namespace orvello::test {

class WatchedDialogs : public Dialogs {
 public:
  explicit WatchedDialogs(Dialogs& dialogs) : dialogs_(dialogs) {}
  int run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) override;
  std::unique_ptr<Dialog> open_modeless(const DialogTemplate& dialog,
                                        DialogProcedure& procedure) override;
  int run_sheet(TextView title, const std::vector<SheetPage>& pages) override;
  FormColors colors() const override { return dialogs_.colors(); }

  // What the procedure of the topmost one draws in a control.
  void paint(int control, Canvas& canvas);

  std::vector<Dialog*> open;   // the topmost one last; of a sheet the page that is shown
  std::vector<int> opened;     // template ids, of a sheet its pages', in order
  std::vector<Dialog*> pages;  // of the sheet that stands
  Dialog* modeless = nullptr;  // the last one opened
  int result = 0;              // of the last one that ended
  bool fail_sheets = false;    // they cannot be made

 private:
  void put(std::size_t level, Dialog& dialog, DialogProcedure& procedure);
  void drop(std::size_t level);

  Dialogs& dialogs_;
  std::vector<DialogProcedure*> procedures_;  // of `open`
};

}  // namespace orvello::test
