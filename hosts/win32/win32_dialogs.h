// Dialogs as forms of the platform's controls on the window.
#pragma once

#include "calendar/locale_data.h"
#include "hosts/win32/form_look.h"
#include "hosts/win32/win32_window.h"
#include "ports/dialog.h"

namespace orvello {

class FormWindow;
class ModalStage;

class Win32Dialogs : public Dialogs {
 public:
  explicit Win32Dialogs(Win32Window& window, LocaleData locale = english_locale());
  int run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) override;
  std::unique_ptr<Dialog> open_modeless(const DialogTemplate& dialog,
                                        DialogProcedure& procedure) override;
  FormColors colors() const override { return *window_.form_density().colors; }
  int run_sheet(TextView title, const std::vector<SheetPage>& pages) override;

 private:
  void take_looks();  // anew: the window's may be others
  FormLook& look_of(const DialogTemplate& dialog);
  void put(FormWindow& form, const ModalStage& stage);

  Win32Window& window_;
  LocaleData locale_;
  FormLook views_, forms_;
};

}  // namespace orvello
