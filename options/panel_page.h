// What every page of the settings sheet does about the input panel: half a second after it opens,
// and when it is left, it wants none, except for a control that takes text and has the focus.
#pragma once

#include <memory>

#include "ports/dialog.h"
#include "ports/input_methods.h"

namespace orvello {

// Of a page; its own timers have other numbers.
inline constexpr int kPanelTimer = 1;

class PanelPage : public DialogProcedure {
 public:
  PanelPage(const DialogTemplate& dialog, std::unique_ptr<DialogProcedure> page,
            InputMethods& input);

  void handle(Dialog& dialog, const DialogEvent& event) override;
  bool may_close(Dialog& dialog) override { return page_->may_close(dialog); }
  bool may_leave(Dialog& dialog) override { return page_->may_leave(dialog); }

 private:
  void request(Dialog& dialog);

  std::vector<int> text_controls_;
  std::unique_ptr<DialogProcedure> page_;
  InputMethods& input_;
  int focused_ = 0;
};

}  // namespace orvello
