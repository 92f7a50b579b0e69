// Dialogs as forms of real widgets on the window.
#pragma once

#include "hosts/qt/qt_main_window.h"
#include "ports/dialogs.h"

namespace orvello {

class QtDialogs : public Dialogs {
 public:
  explicit QtDialogs(QtMainWindow& window) : window_(window) {}
  int run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) override;
  std::unique_ptr<Dialog> open_modeless(const DialogTemplate& dialog,
                                        DialogProcedure& procedure) override;

 private:
  QtMainWindow& window_;
};

}  // namespace orvello
