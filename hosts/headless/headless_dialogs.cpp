#include "hosts/headless/headless_dialogs.h"

#include <utility>

namespace orvello {

using Event = DialogEvent::Kind;
using Role = HeadlessDialog::Role;

HeadlessSheet::HeadlessSheet(TextView caption, const std::vector<SheetPage>& pages)
    : title(caption) {
  for (const SheetPage& page : pages) {
    pages_.push_back(std::make_unique<HeadlessDialog>(page.dialog, *page.procedure, Role::page));
    pages_.back()->closing = [this](int with_result) { end(with_result); };
    pages_.back()->cancel = [this] { press_cancel(); };
    pages_.back()->accept = [this] { press_ok(); };
  }
}

void HeadlessSheet::end(int with_result) {
  if (closed) return;
  closed = true;
  result = with_result;
  for (const auto& page : pages_) page->closed = true;
}

void HeadlessSheet::start() {
  for (const auto& page : pages_) page->start();
  if (closed) return;
  shown().tell(Event::page_shown);
  shown().come();
}

void HeadlessSheet::show_page(int wanted) {
  shown().deliver();
  if (closed || !shown().is_on_top() || wanted == shown_ || wanted < 0 ||
      wanted >= static_cast<int>(pages_.size()) || !shown().procedure().may_leave(shown()))
    return;
  shown().go();
  if (closed) return;
  shown_ = wanted;
  shown().tell(Event::page_shown);
  shown().come();
}

void HeadlessSheet::tell_all(Event kind) {
  for (const auto& page : pages_) {
    page->tell(kind);
    page->deliver();
  }
}

void HeadlessSheet::press_ok() {
  shown().deliver();
  if (closed || !shown().is_on_top() || !shown().procedure().may_leave(shown())) return;
  shown().go();
  tell_all(Event::page_applied);
  end(kSheetOk);
}

void HeadlessSheet::press_cancel() {
  shown().deliver();
  if (closed || !shown().is_on_top() || !shown().procedure().may_close(shown())) return;
  tell_all(Event::close);
  end(kSheetCancelled);
}

// What stood before cannot be reached while this one stands.
class HeadlessDialogs::Cover {
 public:
  explicit Cover(HeadlessDialogs& owner) : owner_(owner), level_(++owner.depth_) {}
  ~Cover() { --owner_.depth_; }
  Cover(const Cover&) = delete;
  Cover& operator=(const Cover&) = delete;
  void carries(HeadlessDialog& dialog) const { owner_.put(dialog, level_); }

 private:
  HeadlessDialogs& owner_;
  int level_;
};

void HeadlessDialogs::put(HeadlessDialog& dialog, int level) {
  dialog.right_to_left = locale && locale->data().right_to_left;
  dialog.on_top = [this, level] {
    return depth_ == level || (depth_ == level + 1 && passing_ && passing_->closed);
  };
  dialog.press_through = [this, level] {
    if (depth_ == level + 1 && passing_) passing_->press_beside();
  };
}

int HeadlessDialogs::run_modal(const DialogTemplate& dialog, DialogProcedure& procedure) {
  opened.push_back(dialog.id);
  HeadlessDialog shown(dialog, procedure, Role::modal);
  const Cover cover(*this);
  cover.carries(shown);
  HeadlessDialog* const passing = std::exchange(passing_, dialog.press_goes_on ? &shown : nullptr);
  shown.start();
  if (!shown.closed) shown.come();
  // The person may be another one from now on.
  if (const auto acts = person; acts && !shown.closed) acts(shown);
  shown.press_close();
  shown.close(0);  // also one that does not want to be left
  passing_ = passing;
  return shown.result;
}

int HeadlessDialogs::run_sheet(TextView title, const std::vector<SheetPage>& pages) {
  if (fail_sheets || pages.empty()) return kSheetFailed;
  for (const SheetPage& page : pages) opened.push_back(page.dialog.id);
  HeadlessSheet sheet(title, pages);
  const Cover cover(*this);
  for (std::size_t i = 0; i < pages.size(); ++i) cover.carries(sheet.page(static_cast<int>(i)));
  sheet.start();
  if (const auto acts = sheet_person; acts && !sheet.closed) acts(sheet);
  sheet.press_cancel();
  return sheet.result;
}

class HeadlessDialogs::Modeless : public HeadlessDialog {
 public:
  Modeless(HeadlessDialogs& owner, const DialogTemplate& made, DialogProcedure& procedure)
      : HeadlessDialog(made, procedure, Role::modeless), owner_(owner) {
    owner.put(*this, 0);
  }
  ~Modeless() override {
    if (owner_.modeless == this) owner_.modeless = nullptr;
  }

 private:
  HeadlessDialogs& owner_;
};

std::unique_ptr<Dialog> HeadlessDialogs::open_modeless(const DialogTemplate& dialog,
                                                       DialogProcedure& procedure) {
  opened.push_back(dialog.id);
  auto shown = std::make_unique<Modeless>(*this, dialog, procedure);
  modeless = shown.get();
  shown->start();
  shown->come();
  return shown;
}

}  // namespace orvello
