#include "hosts/win32/view_window.h"

#include <utility>

#include "draw/mirrored.h"
#include "hosts/win32/painting.h"
#include "hosts/win32/pen_input.h"
#include "hosts/win32/win32_surface.h"
#include "hosts/win32/win32_window.h"
#include "ports/messages.h"

namespace orvello {
namespace {

int held_keys() {
  int held = 0;
  if (GetKeyState(VK_CONTROL) < 0) held |= kControlHeld;
  if (GetKeyState(VK_SHIFT) < 0) held |= kShiftHeld;
  return held;
}

}  // namespace

bool ViewWindow::make(HWND frame) {
  Creation creation;
  creation.window_class = L"OrvelloView";
  creation.style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
  creation.place = {0, 0, 0, 0};
  creation.parent = frame;
  return create_own(creation) != nullptr;
}

bool ViewWindow::let_pointer_go() {
  const bool was = std::exchange(pressed_, false);
  if (was && GetCapture() == window()) ReleaseCapture();
  return was;
}

Point ViewWindow::turned(Point point) const {
  return owner_.right_to_left() ? mirrored(point, client_rect(window()).width) : point;
}

void ViewWindow::press(Point at) {
  SetFocus(window());
  pressed_ = true;
  SetCapture(window());
  owner_.send({kMessageButtonDown, 1, turned(at), 0});
}

// The platform tells a pointer that has not moved whenever a window comes or goes below it.
void ViewWindow::hover(Point at, bool held) {
  // Unpressed: its release went to a menu or a window that had opened meanwhile.
  if (!held) let_pointer_go();
  if (at == last_) return;
  last_ = at;
  if (!leaving_told_) {
    TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, window(), 0};
    leaving_told_ = TrackMouseEvent(&leave) != FALSE;
  }
  owner_.send({kMessageMouseMove, pressed_ ? 1u : 0u, turned(at), 0});
}

bool ViewWindow::pointer(UINT id, WPARAM wparam, LPARAM lparam) {
  const Point at = pointer_of(lparam);
  switch (id) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      press(at);
      return true;
    case WM_MOUSEMOVE:
      hover(at, (wparam & MK_LBUTTON) != 0);
      return true;
    case WM_LBUTTONUP:
      if (let_pointer_go()) owner_.send({kMessageButtonUp, 0, turned(at), 0});
      return true;
    case WM_RBUTTONDOWN:
      if (pressed_) return true;
      SetFocus(window());
      owner_.send({kMessageContextMenu, 0, turned(at), 0});
      return true;
    case WM_MOUSELEAVE:
      leaving_told_ = false;
      last_ = {-1, -1};
      if (!pressed_) owner_.send({kMessageMouseMove, 0, {-1, -1}, 0});
      return true;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
      wheel(wparam, lparam, id == WM_MOUSEHWHEEL);
      return true;
    default:
      return false;
  }
}

void ViewWindow::wheel(WPARAM wparam, LPARAM lparam, bool sideways) {
  const int delta = GET_WHEEL_DELTA_WPARAM(wparam);
  const int notches = wheel_.take(sideways && owner_.right_to_left() ? -delta : delta, sideways);
  if (notches == 0) return;
  const Point screen = pointer_of(lparam);
  POINT at{screen.x, screen.y};
  ScreenToClient(window(), &at);
  const Point point = turned({static_cast<int>(at.x), static_cast<int>(at.y)});
  owner_.send({sideways ? kMessageMouseSideWheel : kMessageMouseWheel, 0, point, notches});
}

bool ViewWindow::key(UINT id, WPARAM wparam) {
  std::uint32_t code = static_cast<std::uint32_t>(wparam);
  const bool system = id == WM_SYSKEYDOWN || id == WM_SYSKEYUP;
  if (system && code != kKeyF10) return false;
  if (owner_.right_to_left()) code = mirrored_key(code);
  const bool down = id == WM_KEYDOWN || id == WM_SYSKEYDOWN;
  if (down && code == VK_TAB && GetKeyState(VK_CONTROL) >= 0)
    return owner_.tab_out(window(), GetKeyState(VK_SHIFT) < 0);
  return owner_.send({down ? kMessageKeyDown : kMessageKeyUp, code, {}, held_keys()});
}

void ViewWindow::take_tab() {
  by_tab_ = true;
  SetFocus(window());
}

void ViewWindow::told_focus(UINT id) {
  if (id == WM_SETFOCUS) {
    if (by_tab_) owner_.send({kMessageSetFocus, 0, {}, 0});
    owner_.accessible_.tell_focus();
  } else if (std::exchange(by_tab_, false)) {
    owner_.send({kMessageKillFocus, 0, {}, 0});
  }
}

void ViewWindow::copy(const Surface& surface, Size size) {
  const auto* picture = dynamic_cast<const Win32Surface*>(&surface);
  if (!painting_ || !picture) return;
  const int x = owner_.right_to_left() ? client_rect(window()).width - size.width : 0;
  picture->paint(painting_, size, {x, 0});
  copied_ = {x, 0, size.width, size.height};
  if (picture->published()) owner_.note_first_paint();
}

// What the program does not cover is filled after it, so that nothing flickers.
void ViewWindow::paint(HDC dc) {
  copied_ = {};
  painting_ = dc;
  owner_.send({kMessagePaint, 0, {}, 0});
  painting_ = nullptr;
  if (!window()) return;
  if (!copied_.empty())
    ExcludeClipRect(dc, copied_.x, copied_.y, copied_.right(), copied_.bottom());
  fill_native(dc, client_rect(window()), owner_.density().colors->field);
}

LRESULT ViewWindow::message(UINT id, WPARAM wparam, LPARAM lparam) {
  if (pointer(id, wparam, lparam)) return 0;
  switch (id) {
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP:
      if (key(id, wparam)) return 0;
      break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      told_focus(id);
      return 0;
    case WM_CAPTURECHANGED:
      pressed_ = false;
      return 0;
    case WM_CONTEXTMENU:  // asked for already, where the button went down
      return 0;
    case WM_PAINT:
      paint(PaintTurn(window()).dc());
      return 0;
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_GESTURENOTIFY:
      take_no_gestures(window());
      break;
    case kPenGestures:
      return kNoPenGestures;
    case WM_GETOBJECT:
      if (const auto answer = owner_.accessible_.answer(wparam, lparam)) return *answer;
      break;
    default:
      break;
  }
  return by_default(id, wparam, lparam);
}

}  // namespace orvello
