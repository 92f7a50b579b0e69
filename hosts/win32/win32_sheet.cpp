#include "hosts/win32/win32_sheet.h"

#include <algorithm>

#include "draw/form_layout.h"

namespace orvello {

using Event = DialogEvent::Kind;

Win32Sheet::Win32Sheet(Win32Window& window, const FormLook& look, Text title,
                       const std::vector<SheetPage>& pages, std::function<void()> take_looks)
    : window_(window),
      look_(look),
      title_(std::move(title)),
      pages_(pages),
      take_looks_(std::move(take_looks)),
      stage_(window),
      sheet_(std::make_shared<SheetWindow>(look, title_)),
      queue_(make_event_queue(window)) {}

// The pages go before the window that they stand on, later than the messages that are under way.
Win32Sheet::~Win32Sheet() {
  queue_->stop();
  stage_.leave();
  dialogs_.clear();
  sheet_->ok_wanted = sheet_->cancel_wanted = [] {};
  sheet_->page_wanted = [](int) {};
  window_.later([sheet = std::move(sheet_)] {});
}

bool Win32Sheet::make() {
  Size own;
  std::vector<Text> titles;
  for (const SheetPage& page : pages_) {
    const Size size = design_size(page.dialog);
    own = {std::max(own.width, size.width), std::max(own.height, size.height)};
    titles.push_back(page.dialog.title);
  }
  own = {look_.scaled(own.width), look_.scaled(own.height) + sheet_->frame_height(true)};
  if (!stage_.create(title_, own) || !sheet_->create(stage_.parent(), titles)) return false;
  sheet_->page_wanted = [this](int page) { person_wants(&Win32Sheet::turn_to, page); };
  sheet_->ok_wanted = [this] { person_wants(&Win32Sheet::accept, 0); };
  sheet_->cancel_wanted = [this] { person_wants(&Win32Sheet::cancel, 0); };
  return std::all_of(pages_.begin(), pages_.end(),
                     [this](const SheetPage& page) { return add(page); });
}

bool Win32Sheet::add(const SheetPage& page) {
  const auto form = std::make_shared<FormWindow>(look_, page.dialog, false);
  if (!form->create(sheet_->window())) return false;
  const int index = static_cast<int>(dialogs_.size());
  auto dialog = std::make_unique<Win32Dialog>(window_, form, *page.procedure, queue_);
  dialog->closed = [this](int result) { end(result); };
  dialog->titled = [this, index](const Text& title) { sheet_->name_page(index, title); };
  form->close_wanted = [this] { sheet_->cancel_wanted(); };
  // A page's own default button comes before the sheet's.
  form->accept_wanted = [this] { sheet_->ok_wanted(); };
  form->turn_wanted = [this](int by) { sheet_->turn(by); };
  form->tab_left = [this](bool back) { return sheet_->leave_page(back); };
  sheet_->add_page(form);
  dialogs_.push_back(std::move(dialog));
  return true;
}

void Win32Sheet::put() {
  take_looks_();
  const Size room = stage_.room();
  if (stage_.is_own_window()) return sheet_->put({0, 0, room.width, room.height}, true, false);
  const auto place_with = [&](bool roomy) {
    return sheet_place(pages_, look_.unit(), sheet_->frame_height(roomy), room);
  };
  // A sheet that fills a handheld has no room for a row of buttons.
  const Rect whole = place_with(false);
  const bool roomy = whole.width != room.width || whole.height != room.height;
  Rect place = place_with(roomy);
  // Tabs need not move where there is room for all of them.
  const int wider = std::min(room.width, sheet_->tabs_width()) - place.width;
  if (wider > 0) {
    place.x -= wider / 2;
    place.width += wider;
  }
  sheet_->put(roomy ? edged_place(place, look_, room) : place, roomy, roomy);
}

int Win32Sheet::run() {
  if (!make()) return kSheetFailed;
  put();
  for (const auto& dialog : dialogs_) {
    dialog->start();
    if (ended_) return result_;
  }
  ModalCover cover;
  cover.window = sheet_->window();
  cover.close_wanted = [this] { sheet_->cancel_wanted(); };
  cover.resized = [this] { put(); };
  stage_.run(std::move(cover), [this] {
    ShowWindow(sheet_->window(), SW_SHOWNA);
    show(0);
  });
  return result_;
}

// What a person does comes behind what is told already.
void Win32Sheet::person_wants(void (Win32Sheet::*act)(int), int page) {
  queue_->add([this, act, page] {
    if (!ended_) (this->*act)(page);
  });
}

void Win32Sheet::show(int page) {
  shown_ = page;
  sheet_->show_page(page);
  shown().tell(Event::page_shown);
  shown().form().come(true);
}

bool Win32Sheet::leave_shown() {
  if (!shown().procedure().may_leave(shown()) || ended_) return false;
  shown().form().go();
  shown().tell(Event::page_left);
  return true;
}

void Win32Sheet::turn_to(int page) {
  if (page == shown_ || page < 0 || page >= static_cast<int>(dialogs_.size())) return;
  if (!leave_shown()) return;
  // The page that is left may close the sheet when it hears of it.
  queue_->add([this, page] {
    if (!ended_) show(page);
  });
}

void Win32Sheet::accept(int) {
  if (!leave_shown()) return;
  for (const auto& dialog : dialogs_) dialog->tell(Event::page_applied);
  queue_->add([this] { end(kSheetOk); });
}

void Win32Sheet::cancel(int) {
  if (!shown().procedure().may_close(shown()) || ended_) return;
  for (const auto& dialog : dialogs_) dialog->tell(Event::close);
  queue_->add([this] { end(kSheetCancelled); });
}

void Win32Sheet::end(int result) {
  if (ended_) return;
  ended_ = true;
  result_ = result;
  for (const auto& dialog : dialogs_) dialog->end(result);
  stage_.end();
}

}  // namespace orvello
