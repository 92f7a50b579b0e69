#include "hosts/win32/pointed_control.h"

#include <windowsx.h>

#include <algorithm>
#include <cstdlib>

#include "draw/mirrored.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kSamePlace = 6;  // design units: how far two taps of one double tap may lie apart
// What a finger is held for and flicked does nothing of the platform's own: presses come at once.
constexpr UINT kAskTouchGestures = 0x02CC;
constexpr LRESULT kNoHoldAndFlick = 0x00000001 | 0x00010000;

// The number that the program knows a key by; 0: it is none of its keys.
std::uint32_t known_key(UINT key) {
  if (key >= VK_NUMPAD0 && key <= VK_NUMPAD9) return key - VK_NUMPAD0 + '0';
  const bool named = (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9') ||
                     (key >= VK_F1 && key <= VK_F12) || (key >= VK_SPACE && key <= VK_DOWN);
  const bool other = key == VK_APPS || key == VK_RETURN || key == VK_ESCAPE || key == VK_BACK ||
                     key == VK_INSERT || key == VK_DELETE;
  return named || other ? key : 0;
}

}  // namespace

Rect place_on_screen(HWND window, const Rect& part) {
  POINT corner{part.x, part.y};
  ClientToScreen(window, &corner);
  return {static_cast<int>(corner.x), static_cast<int>(corner.y), part.width, part.height};
}

Rect place_in_main_window(HWND window, const Rect& part, bool right_to_left) {
  const HWND root = GetAncestor(window, GA_ROOT);
  POINT corner{part.x, part.y};
  MapWindowPoints(window, root, &corner, 1);
  RECT whole{};
  GetClientRect(root, &whole);
  const Rect place{static_cast<int>(corner.x), static_cast<int>(corner.y), part.width, part.height};
  return right_to_left ? mirrored(place, static_cast<int>(whole.right)) : place;
}

Size PointedControl::client_size() const {
  RECT client{};
  GetClientRect(window(), &client);
  return {static_cast<int>(client.right), static_cast<int>(client.bottom)};
}

std::uint32_t PointedControl::track_menu(const std::vector<MenuItem>& items, Point at) {
  if (look().right_to_left()) at = mirrored(at, client_size().width);
  POINT screen{at.x, at.y};
  ClientToScreen(window(), &screen);
  return sink().track_menu(items, screen);
}

DialogEvent PointedControl::pointer_event(Event kind, LPARAM client) const {
  DialogEvent event = event_of(kind, turned_point(client));
  event.time = static_cast<std::uint32_t>(GetMessageTime());
  return event;
}

bool PointedControl::is_second_tap(POINT at) {
  const auto time = static_cast<DWORD>(GetMessageTime());
  const bool same_place =
      std::abs(at.x - tap_place_.x) + std::abs(at.y - tap_place_.y) <= look().scaled(kSamePlace);
  const bool second = tapped_ && same_place && time - tap_time_ < GetDoubleClickTime();
  tapped_ = !second;
  tap_time_ = time;
  tap_place_ = at;
  return second;
}

LRESULT PointedControl::press(LPARAM client) {
  const POINT at{GET_X_LPARAM(client), GET_Y_LPARAM(client)};
  if (sink().covered() || !takes_press({static_cast<int>(at.x), static_cast<int>(at.y)})) return 0;
  const std::weak_ptr<void> alive = alive_;
  take_focus();
  if (alive.expired()) return 0;
  before_press();
  pressed_ = true;
  SetCapture(window());
  const Event kind = is_second_tap(at) ? Event::double_tap : Event::pointer_down;
  sink().report(pointer_event(kind, client));
  if (!alive.expired()) after_press();
  return 0;
}

LRESULT PointedControl::release(LPARAM client) {
  if (!pressed_) return 0;
  pressed_ = false;
  const DialogEvent told = pointer_event(Event::pointer_up, client);
  if (GetCapture() == window()) ReleaseCapture();
  // One below something modal is heard of by that (ModalCover::released).
  if (!sink().covered()) sink().report(told);
  return 0;
}

void PointedControl::release_at(POINT screen) {
  ScreenToClient(window(), &screen);
  sink().report(pointer_event(Event::pointer_up, MAKELPARAM(screen.x, screen.y)));
}

LRESULT PointedControl::press_other_button(LPARAM client) {
  const Point at{GET_X_LPARAM(client), GET_Y_LPARAM(client)};
  if (pressed_ || sink().covered() || !takes_press(at)) return 0;
  sink().report(event_of(Event::context_menu, turned_point(client)));
  return 0;
}

LRESULT PointedControl::turn_wheel(WPARAM wparam, LPARAM screen, bool sideways) {
  const int delta = GET_WHEEL_DELTA_WPARAM(wparam);
  if (sink().covered() || scrolls_with(delta, sideways)) return 0;
  // The form around it may scroll as well.
  if (!sideways) sink().scroll_form(-delta * 3 * look().scaled(5 * kGrid) / WHEEL_DELTA);
  // The platform's other wheel turns the other way.
  const bool turned = sideways && !look().right_to_left();
  const int notches = wheel_.take(turned ? -delta : delta, sideways);
  if (notches == 0) return 0;
  POINT at{GET_X_LPARAM(screen), GET_Y_LPARAM(screen)};
  ScreenToClient(window(), &at);
  DialogEvent told = event_of(Event::wheel, turned_point(MAKELPARAM(at.x, at.y)));
  told.notches = notches;
  told.sideways = sideways;
  sink().report(told);
  return 0;
}

bool PointedControl::press_key(UINT key) {
  const bool windows_key = is_key_held(VK_LWIN) || is_key_held(VK_RWIN);
  const std::uint32_t known = known_key(key);
  if (known == 0 || windows_key || is_key_held(VK_MENU)) return false;
  before_key();
  DialogEvent told = event_of(Event::key);
  told.key = look().right_to_left() ? mirrored_key(known) : known;
  told.control_held = is_key_held(VK_CONTROL);
  told.shift_held = is_key_held(VK_SHIFT);
  sink().report(told);
  return true;
}

std::optional<LRESULT> PointedControl::take_input(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      return press(lparam);
    case WM_LBUTTONUP:
      return release(lparam);
    case WM_MOUSEMOVE:
      // Moving unpressed: the release went to a menu or a window that had opened meanwhile.
      if (pressed_ && !(wparam & MK_LBUTTON)) pressed_ = false;
      if (pressed_ && !sink().covered()) sink().report(pointer_event(Event::pointer_move, lparam));
      return 0;
    case WM_CAPTURECHANGED:
      pressed_ = false;
      return 0;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
      return press_other_button(lparam);
    case WM_RBUTTONUP:
    case WM_CONTEXTMENU:
    case WM_CHAR:
      return 0;
    case WM_MOUSEWHEEL:
      return turn_wheel(wparam, lparam, false);
    case WM_MOUSEHWHEEL:
      return turn_wheel(wparam, lparam, true);
    case WM_KEYDOWN:
      if (press_key(static_cast<UINT>(wparam))) return 0;
      return {};
    case WM_SYSKEYDOWN:
      // With which the platform would open a menu of its own.
      if (wparam == VK_F10 && press_key(VK_F10)) return 0;
      return {};
    case kAskTouchGestures:
      return kNoHoldAndFlick;
    default:
      return {};
  }
}

void PointedControl::tap(Point at) {
  if (sink().covered()) return;
  const std::weak_ptr<void> alive = alive_;
  DialogEvent down = event_of(Event::pointer_down, at);
  down.alone = true;
  sink().report(down);
  if (!alive.expired()) sink().report(event_of(Event::pointer_up, at));
}

}  // namespace orvello
