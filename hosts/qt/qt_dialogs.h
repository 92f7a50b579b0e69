// Dialogs as forms of real widgets on the window.
#pragma once

#include "calendar/locale_data.h"
#include "hosts/qt/qt_main_window.h"
#include "ports/dialog.h"

namespace orvello {

class FormWidget;

class QtDialogs : public Dialogs {
 public:
  explicit QtDialogs(QtMainWindow& window, LocaleData locale = english_locale())
      : window_(window), locale_(std::move(locale)) {}
  int run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) override;
  std::unique_ptr<Dialog> open_modeless(const DialogTemplate& dialog,
                                        DialogProcedure& procedure) override;
  FormColors colors() const override;
  int run_sheet(TextView title, const std::vector<SheetPage>& pages) override;

 private:
  const Density& density_of(const DialogTemplate& dialog) const;
  QRect modal_place(const DialogTemplate& dialog, const FormWidget& form, QSize whole);

  QtMainWindow& window_;
  LocaleData locale_;
};

}  // namespace orvello
