#include "hosts/win32/win32_window.h"

#include <algorithm>
#include <utility>

#include "draw/mirrored.h"
#include "hosts/win32/frame_window.h"
#include "hosts/win32/hover_window.h"
#include "hosts/win32/painting.h"
#include "hosts/win32/popup_menu.h"
#include "hosts/win32/view_window.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_surface.h"
#include "hosts/win32/window_post.h"
#include "ports/messages.h"

namespace orvello {
namespace {

constexpr int kFirstWidth = 480, kFirstHeight = 640;  // pixels of a 96-dpi screen
constexpr int kNarrowest = 240;                       // what forms are made for, design units

bool stands_in(HWND window, HWND around) {
  return window && around && (window == around || IsChild(around, window));
}

}  // namespace

Win32Window::Win32Window(Win32WindowOptions options) : options_(std::move(options)) {
  if (!options_.fixed_look) look_ = read_system_look();
  density_.dpi = options_.dpi > 0 ? options_.dpi : monitor_dpi(nullptr);
  density_.colors = forms_.colors = &look_.colors;
  if (options_.screen) {
    first_place_ = {0, 0, options_.screen->width, options_.screen->height};
  } else if (const auto kept = options_.load_place ? options_.load_place() : std::nullopt) {
    first_place_ = *kept;
  } else {
    const int width = MulDiv(kFirstWidth, density_.dpi, USER_DEFAULT_SCREEN_DPI);
    const int height = MulDiv(kFirstHeight, density_.dpi, USER_DEFAULT_SCREEN_DPI);
    first_place_ = {(GetSystemMetrics(SM_CXSCREEN) - width) / 2,
                    (GetSystemMetrics(SM_CYSCREEN) - height) / 2, width, height};
  }
  if (!options_.screen) first_place_ = fitted_to_screen(first_place_);
  take_scale();
  listen();
}

Win32Window::~Win32Window() {
  handler_ = nullptr;  // it may be gone already
  on_look = nullptr;
  if (!frame()) return;
  covers_.set_frame(nullptr);
  DestroyWindow(frame());  // while all that its last messages ask is there
}

void Win32Window::listen() {
  WindowPost::Listener listener;
  listener.message = [this](const Message& message) { send(message); };
  listener.invalidated = [this] {
    if (view()) InvalidateRect(view(), nullptr, FALSE);
  };
  listener.timer = [this](int id) { send({kMessageTimer, static_cast<std::uint32_t>(id), {}, 0}); };
  posted_ = std::make_unique<WindowPost>(std::move(listener));
  loop_.add_filter([this](MSG& message) { return take_input(message); });
}

HWND Win32Window::frame() const { return frame_ ? frame_->window() : nullptr; }
HWND Win32Window::view() const { return view_ ? view_->window() : nullptr; }
HWND Win32Window::label_window() const { return label_ ? label_->window() : nullptr; }
HWND Win32Window::notice_window() const { return notice_ ? notice_->window() : nullptr; }

Rect Win32Window::whole_area() const {
  const Size size = screen().resolution;
  return {0, 0, size.width, size.height};
}

Rect Win32Window::content_area() const { return content_; }

ScreenInfo Win32Window::screen() const {
  ScreenInfo info;
  info.resolution = {first_place_.width, first_place_.height};
  if (frame() && !IsIconic(frame())) {
    const Rect inside = client_rect(frame());
    info.resolution = {inside.width, inside.height};
  } else if (frame()) {
    info.resolution = reported_;
  }
  info.work_area = {0, 0, info.resolution.width, info.resolution.height};
  if (const auto left = handheld().visible_desktop(); left && frame()) {
    POINT corner{left->x, left->y};
    ScreenToClient(frame(), &corner);
    info.work_area = intersection(
        info.work_area,
        {static_cast<int>(corner.x), static_cast<int>(corner.y), left->width, left->height});
  }
  info.os_major = handheld().version().major;
  info.os_minor = handheld().version().minor;
  info.dpi_x = info.dpi_y = density_.dpi;
  info.form_dpi =
      static_cast<int>(std::lround(density_.dpi * fitting_scale(info.resolution.width)));
  info.dark_desktop = look_.dark;
  return info;
}

bool Win32Window::activate_other_instance(TextView window_class, TextView title) {
  if (options_.identity.empty()) return false;
  if (!instance_)
    instance_ = std::make_unique<OtherInstance>(window_class, title, options_.identity);
  instance_->called = [this](InstanceCall call) {
    later([this, call] {
      come_forward();
      if (on_call) on_call(call);
    });
  };
  const OtherInstance::Joined joined = instance_->join(options_.call);
  // A second window on one calendar is never opened, also when the first is too busy to answer.
  call_answered_ = joined != OtherInstance::Joined::unanswered;
  return joined != OtherInstance::Joined::first;
}

void Win32Window::come_forward() {
  // While the program starts there may be nothing but a question to bring forward.
  HWND window = frame();
  if (covers_.top() && !stands_in(covers_.top()->window, window)) window = covers_.top()->window;
  if (!window) return;
  if (IsIconic(window)) ShowWindow(window, SW_RESTORE);
  SetForegroundWindow(window);
}

bool Win32Window::make_windows(TextView window_class, TextView title) {
  frame_ = std::make_unique<FrameWindow>(*this);
  view_ = std::make_unique<ViewWindow>(*this);
  const auto kind = handheld().is_here() ? FrameWindow::Kind::whole_screen
                    : options_.screen    ? FrameWindow::Kind::fixed
                                         : FrameWindow::Kind::sizable;
  if (!frame_->make(Text(window_class), Text(title), first_place_, kind)) return false;
  if (!view_->make(frame())) return false;
  SetWindowTextW(view(), wide(Text(title)));
  label_ = std::make_unique<HoverWindow>(frame(), fonts_);
  notice_ = std::make_unique<HoverWindow>(frame(), fonts_);
  return label_->window() && notice_->window();
}

bool Win32Window::create(TextView window_class, TextView title, int, MessageHandler& handler) {
  if (frame_) return false;
  if (!make_windows(window_class, title)) {
    label_.reset(), notice_.reset(), view_.reset(), frame_.reset();
    return false;
  }
  handler_ = &handler;
  if (options_.dpi <= 0) density_.dpi = monitor_dpi(frame());
  frame_->set_dark_title(look_.dark);
  covers_.set_frame(frame());
  take_scale();
  lay_out();  // the create message may ask for places already
  reported_ = screen().resolution;
  reported_dpi_ = density_.dpi;
  send({kMessageCreate, 0, {}, 0});
  return frame_ != nullptr;
}

void Win32Window::destroy() {
  if (!frame_) return;
  remember_place();
  ShowWindow(frame(), SW_HIDE);
  send({kMessageDestroy, 0, {}, 0});
  if (!frame_) return;
  handler_ = nullptr;
  posted_->stop_timers();
  accessible_.set_view(nullptr);
  covers_.set_frame(nullptr);
  slots_.clear();
  bar_ = {};
  const HWND window = frame();
  // This may be called from one of their messages.
  left_.push_back(std::move(label_)), left_.push_back(std::move(notice_));
  left_.push_back(std::move(view_)), left_.push_back(std::move(frame_));
  DestroyWindow(window);
  while (wait_cursors_ > 0) hide_wait_cursor();
}

void Win32Window::remember_place() {
  if (options_.screen || !options_.save_place || !IsWindowVisible(frame())) return;
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  if (!GetWindowPlacement(frame(), &placement)) return;
  const Rect all = from_native(placement.rcNormalPosition);
  const Rect around = frame_->outside({0, 0, 0, 0});
  const Rect inside{all.x - around.x, all.y - around.y, all.width - around.width,
                    all.height - around.height};
  if (!inside.empty()) options_.save_place(inside);
}

void Win32Window::move(const Rect& place) {
  if (!frame()) return;
  const Rect whole = whole_area();
  const Rect inside{0, 0, whole.width, whole.height - bar_.height};
  content_ = intersection(right_to_left() ? mirrored(place, inside.width) : place, inside);
  SetWindowPos(view(), nullptr, content_.x, content_.y, content_.width, content_.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
  const std::vector<FormSlot> standing = slots_;
  for (const FormSlot& slot : standing)
    if (slot.place && IsWindow(slot.window)) slot.place(content_);
}

void Win32Window::lay_out() {
  if (!view()) return;
  const Rect whole = whole_area();
  if (bar_.window && GetParent(bar_.window) == frame())
    SetWindowPos(bar_.window, nullptr, 0, whole.height - bar_.height, whole.width, bar_.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  move({0, 0, whole.width, whole.height - bar_.height});
  covers_.resized();
}

void Win32Window::show() {
  if (!frame()) return;
  ShowWindow(frame(), SW_SHOW);
  UpdateWindow(frame());
  take_focus();
}

bool Win32Window::is_active() const {
  if (handheld().is_here() && GetActiveWindow() != frame()) return false;
  return frame() && IsWindowVisible(frame()) && !IsIconic(frame());
}

bool Win32Window::send(const Message& message) {
  return handler_ && handler_->handle_message(message);
}

void Win32Window::post(const Message& message) { posted_->post(message); }
void Win32Window::post_quit(int code) { loop_.quit(code); }
void Win32Window::invalidate() { posted_->invalidate(); }
void Win32Window::later(std::function<void()> action) { posted_->later(std::move(action)); }

void Win32Window::copy_surface(Surface& surface, Size size) {
  if (view_) view_->copy(surface, size);
}

void Win32Window::note_first_paint() {
  if (std::exchange(painted_, true)) return;
  later([this] {
    if (on_first_paint) on_first_paint();
  });
}

void Win32Window::start_timer(int id, int milliseconds) { posted_->start_timer(id, milliseconds); }
void Win32Window::stop_timer(int id) { posted_->stop_timer(id); }

bool Win32Window::pen_is_down() const { return view_ && view_->pen_is_down(); }
bool Win32Window::let_pointer_go() { return view_ && view_->let_pointer_go(); }

void Win32Window::show_wait_cursor() {
  if (wait_cursors_++ == 0)
    SetCursor(LoadCursorW(nullptr, reinterpret_cast<const wchar_t*>(IDC_WAIT)));
}

void Win32Window::hide_wait_cursor() {
  if (wait_cursors_ > 0 && --wait_cursors_ == 0)
    SetCursor(LoadCursorW(nullptr, reinterpret_cast<const wchar_t*>(IDC_ARROW)));
}

bool Win32Window::sets_cursor() const { return wait_cursors_ > 0; }

void Win32Window::show_text(std::unique_ptr<HoverWindow>& window, const HoverLabel& label) {
  if (!window) return;
  const Rect place = right_to_left() ? mirrored(label.place, content_.width) : label.place;
  window->show(label, place.moved(content_.x, content_.y));
  covers_.keep_order();
}

void Win32Window::show_label(const HoverLabel& label) { show_text(label_, label); }
void Win32Window::hide_label() {
  if (label_) label_->hide();
}

void Win32Window::show_notice(const HoverLabel& notice) {
  if (!notice_) return;
  const bool news = !IsWindowVisible(notice_->window()) || notice_->text() != notice.text;
  show_text(notice_, notice);
  if (news) NotifyWinEvent(EVENT_SYSTEM_ALERT, notice_->window(), OBJID_CLIENT, CHILDID_SELF);
}
void Win32Window::hide_notice() {
  if (notice_) notice_->hide();
}

std::uint32_t Win32Window::track_menu(const std::vector<MenuItem>& items, Point at) {
  if (!view()) return 0;
  const Point place = right_to_left() ? mirrored(at, content_.width) : at;
  POINT screen{place.x, place.y};
  ClientToScreen(view(), &screen);
  return run_popup_menu(*this, items, screen);
}

}  // namespace orvello
