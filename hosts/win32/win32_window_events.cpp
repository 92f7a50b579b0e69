// What happens to the window: sizes, density, focus, the look of the desktop.
#include <algorithm>
#include <utility>

#include "app/own_messages.h"
#include "hosts/win32/frame_window.h"
#include "hosts/win32/hover_window.h"
#include "hosts/win32/painting.h"
#include "hosts/win32/view_window.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_window.h"
#include "hosts/win32/window_post.h"
#include "ports/messages.h"

namespace orvello {
namespace {

constexpr int kLeastFormWidth = 240;  // design units

bool is_inside(HWND window, HWND around) {
  return window && around && (window == around || IsChild(around, window));
}

}  // namespace

void Win32Window::close_wanted() {
  if (const ModalCover* cover = covers_.top()) {
    if (const auto wanted = cover->close_wanted) wanted();
    return;
  }
  if (!send({kMessageClose, 0, {}, 0})) destroy();
}

void Win32Window::changed_size() {
  EndMenu();  // which would stand where something else is now
  lay_out();
}

void Win32Window::resized() {
  if (!frame() || IsIconic(frame())) return;
  const Size size = screen().resolution;
  const bool scaled = take_scale();
  if (size == reported_ && density_.dpi == reported_dpi_ && !scaled) return;
  reported_ = size;
  reported_dpi_ = density_.dpi;
  if (scaled && on_look) on_look();
  lay_out();
  send({kMessageSettingChange, kScreenRotated, {}, 0});
}

void Win32Window::changed_density(int dpi, const RECT& suggested) {
  if (options_.dpi > 0 || options_.screen) return;
  density_.dpi = dpi;
  const Rect place = from_native(suggested);
  SetWindowPos(frame(), nullptr, place.x, place.y, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
  take_scale();
  if (on_look) on_look();
  resized();
}

// The mark of today moves now, and not when the next minute is over.
void Win32Window::changed_clock(bool set) {
  post({kMessageTimer, kTimerDayChange, {}, 0});
  if (set) post({kMessageRefresh, 0, {}, 0});
}

// What forms with something in them would do in a moment, such as keeping it, they do now.
void Win32Window::session_ending() {
  const auto is_modeless = [this](HWND window) {
    return std::any_of(slots_.begin(), slots_.end(),
                       [window](const FormSlot& slot) { return slot.window == window; });
  };
  for (HWND child = GetWindow(frame(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    if (!is_modeless(child)) SendMessageW(child, WM_QUERYENDSESSION, 0, 0);
}

// The process may be gone when this returns.
void Win32Window::session_ended() {
  remember_place();
  posted_->take_all();
}

// Forms are as wide as the least window: where they have grown out of this one they would have to
// be scrolled sideways for every line.
double Win32Window::fitting_scale(int width) const {
  const double room = width / density_.unit() / kLeastFormWidth;
  return std::min(look_.text_scale, std::max(1.0, room));
}

// Whether it is another one.
bool Win32Window::take_scale() {
  const double scale = fitting_scale(screen().resolution.width);
  const bool changed = forms_.dpi != density_.dpi || forms_.text != scale;
  forms_.dpi = density_.dpi;
  forms_.text = scale;
  return changed;
}

void Win32Window::read_look() {
  if (options_.fixed_look) return;
  look_ = read_system_look();
  if (!frame()) return;
  frame_->set_dark_title(look_.dark);
  const bool scaled = take_scale();
  if (on_look) on_look();
  lay_out();
  RedrawWindow(frame(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
  if (scaled) send({kMessageSettingChange, kScreenRotated, {}, 0});
}

void Win32Window::activated(WPARAM wparam, LPARAM lparam) {
  options_.handheld.tell_activation(frame(), wparam, lparam);
  const bool active = LOWORD(wparam) != WA_INACTIVE;
  if (!active && is_inside(GetFocus(), frame())) last_focus_ = GetFocus();
  send({kMessageActivate, active ? 1u : 0u, {}, 0});
  if (!active) post({kMessageDeactivated, 0, {}, 0});
}

// To what had it, else to what is seen.
void Win32Window::take_focus() {
  HWND wanted = std::exchange(last_focus_, nullptr);
  const bool there = wanted && IsWindow(wanted) && wanted != frame() && IsWindowVisible(wanted) &&
                     IsWindowEnabled(wanted) && !covers_.over(wanted);
  if (!there) wanted = slots_.empty() ? view() : slots_.back().window;
  if (!there && covers_.top()) wanted = covers_.top()->window;
  if (wanted) SetFocus(wanted);
}

// An input panel that comes up takes room, as does a screen that is turned.
void Win32Window::setting_changed(WPARAM wparam, LPARAM lparam) {
  read_look();
  if (!handheld().is_here()) return;
  options_.handheld.tell_setting_change(frame(), wparam, lparam);
  send({kMessageSettingChange, static_cast<std::uint32_t>(wparam), {}, 0});
}

bool Win32Window::take_input(MSG& message) {
  const int soft_key = message.message == WM_KEYDOWN ? handheld().soft_key(message.wParam) : -1;
  if (soft_key >= 0 && covers_.empty() && bar_.press) {
    bar_.press(soft_key);
    return true;
  }
  if (message.message == WM_MOUSEWHEEL || message.message == WM_MOUSEHWHEEL) {
    // What lies below the pointer is turned, wherever the keyboard is.
    const Point at = pointer_of(message.lParam);
    const HWND below = WindowFromPoint({at.x, at.y});
    if (is_inside(below, frame()) && is_inside(message.hwnd, frame())) message.hwnd = below;
  }
  return covers_.take_pointer(message);
}

void Win32Window::add_form(FormSlot form) {
  slots_.push_back(std::move(form));
  if (slots_.back().place) slots_.back().place(content_);
  covers_.keep_order();
}

void Win32Window::drop_form(HWND window) {
  const bool had_focus = is_inside(GetFocus(), window) || !GetFocus();
  std::erase_if(slots_, [window](const FormSlot& slot) { return slot.window == window; });
  if (had_focus && view() && !covers_.over(view())) take_focus();
}

bool Win32Window::tab_out(HWND from, bool backwards) {
  const bool from_bar = is_inside(from, bar_.window);
  if (!from_bar) return bar_.take_tab && bar_.take_tab(backwards);
  if (!slots_.empty() && slots_.back().take_tab) return slots_.back().take_tab(backwards);
  if (!view_) return false;
  view_->take_tab();
  return true;
}

void Win32Window::take_bar_by_key() {
  if (covers_.empty() && bar_.take_tab) bar_.take_tab(false);
}

bool Win32Window::view_is_covered() const {
  return !slots_.empty() || covers_.over(view()) != nullptr;
}

void Win32Window::set_bar(BarSlot bar) {
  bar_ = std::move(bar);
  if (!frame()) return;
  lay_out();
  covers_.keep_order();
}

void Win32Window::dropped(HDROP drop) {
  std::vector<Text> files;
  const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    std::wstring path(DragQueryFileW(drop, i, nullptr, 0) + 1, L'\0');
    const UINT length = DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size()));
    files.push_back(from_wide({path.data(), length}));
  }
  DragFinish(drop);
  // Not while the one who drops waits for this program.
  if (on_files_dropped && !files.empty()) later([this, files] { on_files_dropped(files); });
}

void Win32Window::set_accessible_view(AccessibleView* view) { accessible_.set_view(view); }

void Win32Window::accessible_changed() { accessible_.changed(); }

}  // namespace orvello
