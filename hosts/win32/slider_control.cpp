#include "hosts/win32/slider_control.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

#include "draw/mirrored.h"
#include "hosts/win32/form_paint.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kKnobRadius = 8, kGroove = 4;  // design units

}  // namespace

bool SliderControl::create(HWND parent) {
  const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX), ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  Creation creation;
  creation.window_class = TRACKBAR_CLASSW;
  creation.style = WS_CHILD | WS_CLIPSIBLINGS | TBS_HORZ | TBS_NOTICKS;
  creation.place = {};
  creation.parent = parent;
  creation.id = id();
  if (!create_control(creation)) return false;
  set_range(0, 100);
  return true;
}

void SliderControl::set_name(const Text& name) {
  FormControl::set_name(name);
  SetWindowTextW(window(), wide(name));
}

int SliderControl::end(bool last) const {
  return static_cast<int>(SendMessageW(window(), last ? TBM_GETRANGEMAX : TBM_GETRANGEMIN, 0, 0));
}

void SliderControl::set_range(int least, int most) {
  SendMessageW(window(), TBM_SETRANGEMIN, FALSE, least);
  SendMessageW(window(), TBM_SETRANGEMAX, TRUE, std::max(least, most));
  set_position(position());
}

int SliderControl::position() const {
  return static_cast<int>(SendMessageW(window(), TBM_GETPOS, 0, 0));
}

void SliderControl::write(int position) {
  const int least = end(false), most = std::max(least, end(true));
  SendMessageW(window(), TBM_SETPOS, TRUE, std::clamp(position, least, most));
  InvalidateRect(window(), nullptr, FALSE);
}

void SliderControl::set_position(int position) {
  write(position);
  told_ = this->position();
}

int SliderControl::edge() const {
  RECT client{};
  GetClientRect(window(), &client);
  const int ring = look().scaled(3), half = static_cast<int>(client.bottom) / 2;
  return std::min(look().scaled(kKnobRadius), std::max(2, half - ring)) + ring;
}

void SliderControl::move_to(int x) {
  RECT client{};
  GetClientRect(window(), &client);
  const auto width = static_cast<int>(client.right);
  if (look().right_to_left()) x = width - 1 - x;
  const int room = std::max(1, width - 2 * edge());
  const int along = std::clamp(x - edge(), 0, room);
  person_moves(end(false) + MulDiv(along, end(true) - end(false), room));
}

void SliderControl::person_moves(int wanted) {
  write(wanted);
  if (position() == told_) return;
  told_ = position();
  NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, window(), OBJID_CLIENT, CHILDID_SELF);
  tell(Event::changed);
}

// Up is more, on every version of the platform.
bool SliderControl::press_key(UINT key) {
  const int page = std::max(1, (end(true) - end(false)) / 10);
  switch (look().right_to_left() ? mirrored_key(key) : key) {
    case VK_LEFT:
    case VK_DOWN:
      return person_moves(position() - 1), true;
    case VK_RIGHT:
    case VK_UP:
      return person_moves(position() + 1), true;
    case VK_PRIOR:
      return person_moves(position() + page), true;
    case VK_NEXT:
      return person_moves(position() - page), true;
    case VK_HOME:
      return person_moves(end(false)), true;
    case VK_END:
      return person_moves(end(true)), true;
    default:
      return false;
  }
}

void SliderControl::paint() {
  const BufferedPaint painting(window());
  const HDC dc = painting.dc();
  const RECT all = painting.room();
  const LookColors& colors = look().colors();
  const bool enabled = IsWindowEnabled(window()), turns = look().right_to_left();
  fill_room(dc, all, colors.ground);
  const int least = end(false), most = end(true);
  const int side = edge(), room = std::max(1, static_cast<int>(all.right) - 2 * side);
  const int along = MulDiv(position() - least, room, std::max(1, most - least));
  const int middle = static_cast<int>(all.bottom) / 2, thick = std::max(2, look().scaled(kGroove));
  const Color ink = enabled ? colors.accent : colors.dim_text;
  const auto placed = [&](LONG left, LONG right) {
    const RECT room_of{left, middle - thick / 2, right, middle - thick / 2 + thick};
    return turned_room(room_of, all.right, turns);
  };
  fill_room(dc, placed(side, side + room), enabled ? colors.edge : colors.line);
  fill_room(dc, placed(side, side + along), ink);
  const int knob = side - look().scaled(3), x = side + along;
  const RECT round =
      turned_room({x - knob, middle - knob, x + knob, middle + knob}, all.right, turns);
  const int line = std::max(1, look().scaled(2));
  paint_round_box(dc, round, held_ ? colors.accent_tint : colors.field, ink, line, knob);
  if (GetFocus() != window()) return;
  const int gap = line + std::max(1, look().scaled(1));
  paint_round_edge(dc, shrunk(round, -gap, -gap), colors.accent, std::max(1, look().scaled(1)),
                   knob + gap);
}

LRESULT SliderControl::control_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
      paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      if (sink().covered()) return 0;
      take_focus();
      held_ = true;
      SetCapture(window());
      move_to(GET_X_LPARAM(lparam));
      return 0;
    case WM_MOUSEMOVE:
      if (held_ && (wparam & MK_LBUTTON)) move_to(GET_X_LPARAM(lparam));
      return 0;
    case WM_LBUTTONUP:
      if (!held_) return 0;
      held_ = false;
      ReleaseCapture();
      InvalidateRect(window(), nullptr, FALSE);
      tell(Event::taken);
      return 0;
    case WM_CAPTURECHANGED:
      held_ = false;
      break;
    case WM_KEYDOWN:
      if (press_key(static_cast<UINT>(wparam))) return 0;
      break;
    case WM_MOUSEWHEEL:
      // It scrolls the form: a slider that is passed on the way is not meant.
      if (!sink().covered())
        sink().scroll_form(-GET_WHEEL_DELTA_WPARAM(wparam) * 3 * look().scaled(5 * kGrid) /
                           WHEEL_DELTA);
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
      InvalidateRect(window(), nullptr, FALSE);
      break;
    default:
      break;
  }
  return by_default(message, wparam, lparam);
}

}  // namespace orvello
