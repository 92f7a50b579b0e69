// Dialogs without a screen. A function plays the person in front of what is modal.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "hosts/headless/headless_dialog.h"
#include "ports/locale.h"

namespace orvello {

// Pages behind tabs. What a person does to their controls is done to the shown page.
class HeadlessSheet {
 public:
  HeadlessSheet(TextView caption, const std::vector<SheetPage>& pages);

  // What a person does.
  void show_page(int page);
  void press_ok();
  void press_cancel();

  HeadlessDialog& page(int page) { return *pages_[static_cast<std::size_t>(page)]; }
  HeadlessDialog& shown() { return page(shown_); }
  int shown_page() const { return shown_; }

  const Text title;
  bool closed = false;
  int result = kSheetCancelled;

  void start();  // init of all pages, then the first is shown

 private:
  void end(int with_result);
  void tell_all(DialogEvent::Kind kind);

  std::vector<std::unique_ptr<HeadlessDialog>> pages_;
  int shown_ = 0;
};

class HeadlessDialogs : public Dialogs {
 public:
  int run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) override;
  std::unique_ptr<Dialog> open_modeless(const DialogTemplate& dialog,
                                        DialogProcedure& procedure) override;
  int run_sheet(TextView title, const std::vector<SheetPage>& pages) override;

  // Play the person in front of modal dialogs and of sheets; what is open after that is closed.
  std::function<void(HeadlessDialog&)> person;
  std::function<void(HeadlessSheet&)> sheet_person;
  std::vector<int> opened;             // template ids, of a sheet its pages', in order
  HeadlessDialog* modeless = nullptr;  // the last one opened, while it lives
  bool fail_sheets = false;
  const Locale* locale = nullptr;  // says which way the screen runs

 private:
  class Modeless;
  class Cover;
  void put(HeadlessDialog& dialog, int level);
  int depth_ = 0;                      // how many modal ones stand
  HeadlessDialog* passing_ = nullptr;  // the last one, if it lets presses through
};

}  // namespace orvello
