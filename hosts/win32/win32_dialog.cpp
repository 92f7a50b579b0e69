#include "hosts/win32/win32_dialog.h"

#include <utility>

#include "draw/mirrored.h"
#include "hosts/shared/dialog_input.h"
#include "hosts/win32/form_paint.h"
#include "hosts/win32/popup_menu.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

}  // namespace

std::shared_ptr<EventQueue> make_event_queue(Win32Window& window) {
  return std::make_shared<EventQueue>(
      [&window](EventQueue::Action action) { window.later(std::move(action)); });
}

Win32Dialog::Win32Dialog(Win32Window& window, std::shared_ptr<FormWindow> form,
                         DialogProcedure& procedure, std::shared_ptr<EventQueue> queue)
    : window_(window), form_(std::move(form)), procedure_(procedure), queue_(std::move(queue)) {
  listen_to_form();
}

void Win32Dialog::listen_to_form() {
  form_->tell = [this](Event kind, int control) { tell({kind, control, nullptr, {}}); };
  form_->report = [this](const DialogEvent& event) {
    // What goes away may still be painted.
    if (event.kind == Event::paint) return procedure_.handle(*this, event);
    const auto waiting = queue_;
    tell(event);
    if (is_input(event.kind)) waiting->flush();
  };
  // What the first of the events brings about is told before.
  form_->behind = [this](const std::function<void()>& action) {
    add([this, action] {
      window_.later([alive = std::weak_ptr<bool>(alive_), action] {
        if (!alive.expired()) action();
      });
    });
  };
  form_->ticked = [this](int id) { tick(id); };
  form_->session_ending = [this] {
    for (const int id : timers_) tick(id);
  };
  const HWND whole = form_->window();
  form_->covered = [this, whole] { return window_.covers().pointer_over(whole) != nullptr; };
  form_->give_focus = [this](HWND control) { window_.covers().give_focus(control); };
  form_->track_menu = [this](HWND owner, const std::vector<MenuItem>& items, POINT screen) {
    (void)owner;
    return run_popup_menu(window_, items, screen);
  };
}

Win32Dialog::~Win32Dialog() {
  stop_timers();
  form_->tell = nullptr;
  form_->report = nullptr;
  form_->behind = nullptr;
  form_->ticked = nullptr;
  form_->session_ending = nullptr;
  form_->painted = nullptr;
  form_->close_wanted = nullptr;
  form_->accept_wanted = nullptr;
  form_->turn_wanted = nullptr;
  form_->tab_left = nullptr;
  window_.drop_form(form_->window());
  form_->hide();
  // This may be called from a message to one of its controls.
  window_.later([form = std::move(form_)] {});
}

void Win32Dialog::add(std::function<void()> action) {
  if (is_closed_) return;
  queue_->add([this, alive = std::weak_ptr<bool>(alive_), action = std::move(action)] {
    if (!alive.expired() && !is_closed_) action();
  });
}

void Win32Dialog::tell(const DialogEvent& event) {
  add([this, event] { procedure_.handle(*this, event); });
}

void Win32Dialog::close_wanted() {
  add([this] {
    if (!procedure_.may_close(*this) || is_closed_) return;
    const std::weak_ptr<bool> alive = alive_;
    procedure_.handle(*this, {Event::close, 0, nullptr, {}});
    if (!alive.expired() && !is_closed_) close(0);
  });
}

Text Win32Dialog::text(int control) const {
  if (control == 0) return form_->title();
  const FormControl* found = form_->control(control);
  return found ? found->text() : Text();
}

void Win32Dialog::set_text(int control, TextView text) {
  if (control == 0) {
    form_->set_title(Text(text));
    if (titled) titled(form_->title());
  }
  if (FormControl* found = form_->control(control)) found->set_text(text);
}

bool Win32Dialog::checked(int control) const {
  const FormControl* found = form_->control(control);
  return found && found->checked();
}

Rect Win32Dialog::place(int control) const {
  const FormControl* found = form_->control(control);
  if (!found || !IsWindowVisible(found->window())) return {};
  RECT edges{};
  GetWindowRect(found->window(), &edges);
  const HWND root = GetAncestor(found->window(), GA_ROOT);
  MapWindowPoints(nullptr, root, reinterpret_cast<POINT*>(&edges), 2);
  Rect place = from_rect(edges);
  // The main window's points start at its content; another window has no such place.
  RECT whole{};
  GetClientRect(root, &whole);
  int width = whole.right;
  if (root == window_.frame()) {
    const Rect content = window_.content_area();
    place.x -= content.x;
    place.y -= content.y;
    width = content.width;
  }
  return window_.right_to_left() ? mirrored(place, width) : place;
}

ChoiceControl* Win32Dialog::choice(int control) {
  FormControl* found = form_->control(control);
  return found ? found->choice() : nullptr;
}

ListControl* Win32Dialog::list(int control) {
  FormControl* found = form_->control(control);
  return found ? found->list() : nullptr;
}

DateControl* Win32Dialog::date(int control) {
  FormControl* found = form_->control(control);
  return found ? found->date() : nullptr;
}

RangeControl* Win32Dialog::range(int control) {
  FormControl* found = form_->control(control);
  return found ? found->range() : nullptr;
}

NotesControl* Win32Dialog::notes(int control) {
  FormControl* found = form_->control(control);
  return found ? found->notes() : nullptr;
}

ReportList* Win32Dialog::report(int control) {
  FormControl* found = form_->control(control);
  return found ? found->report() : nullptr;
}

DrawnControl* Win32Dialog::drawn(int control) {
  FormControl* found = form_->control(control);
  return found ? found->drawn() : nullptr;
}

void Win32Dialog::stop_timers() {
  for (const int id : timers_) KillTimer(form_->window(), static_cast<UINT_PTR>(id));
  timers_.clear();
}

void Win32Dialog::set_timer(int id, int milliseconds) {
  ticked_.erase(id);
  if (milliseconds <= 0 || is_closed_) {
    if (timers_.erase(id) > 0) KillTimer(form_->window(), static_cast<UINT_PTR>(id));
    return;
  }
  timers_.insert(id);
  SetTimer(form_->window(), static_cast<UINT_PTR>(id), static_cast<UINT>(milliseconds), nullptr);
}

// Ticks that were not told yet are one.
void Win32Dialog::tick(int id) {
  if (timers_.count(id) == 0 || !ticked_.insert(id).second) return;
  add([this, id] {
    if (ticked_.erase(id) > 0) procedure_.handle(*this, {Event::timer, id, nullptr, {}});
  });
}

void Win32Dialog::end(int result) {
  is_closed_ = true;
  result_ = result;
  stop_timers();
}

void Win32Dialog::close(int result) {
  if (is_closed_ || !closed) return;
  end(result);
  closed(result);
}

}  // namespace orvello
