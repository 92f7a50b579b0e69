#include "hosts/win32/form_control.h"

#include "draw/mirrored.h"

namespace orvello {

bool is_key_held(int virtual_key) { return GetKeyState(virtual_key) < 0; }

void FormControl::put(const Rect& place) {
  if (stands_at(place)) return;
  placed_ = place;
  SetWindowPos(window(), nullptr, place.x, place.y, place.width, place.height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormControl::look_changed() {
  placed_.reset();
  SendMessageW(window(), WM_SETFONT, reinterpret_cast<WPARAM>(look_.font()), FALSE);
  InvalidateRect(window(), nullptr, TRUE);
}

void FormControl::take_focus() {
  if (GetFocus() != focus_target()) SetFocus(focus_target());
}

DialogEvent FormControl::event_of(DialogEvent::Kind kind, Point at) const {
  RECT client{};
  GetClientRect(window(), &client);
  DialogEvent event;
  event.kind = kind;
  event.control = id();
  event.size = {client.right, client.bottom};
  event.point = at;
  return event;
}

Point FormControl::turned_point(LPARAM client) const {
  const Point at{static_cast<short>(LOWORD(client)), static_cast<short>(HIWORD(client))};
  if (!look_.right_to_left()) return at;
  RECT whole{};
  GetClientRect(window(), &whole);
  return mirrored(at, whole.right);
}

std::optional<LRESULT> FormControl::form_message(UINT message, WPARAM wparam, LPARAM) {
  switch (message) {
    case WM_SETFOCUS:
      sink_.focused(id());
      return {};
    case WM_GETDLGCODE:
      return DLGC_WANTALLKEYS;
    case WM_KEYDOWN: {
      const auto key = static_cast<UINT>(wparam);
      // What the control does with it, or the form, may end both: nothing of this is touched then.
      const bool used = uses_key(key);
      key_done_ = !used && (key == VK_TAB || key == VK_RETURN || key == VK_ESCAPE);
      // A sheet's pages are turned wherever the focus is.
      const bool turns =
          is_key_held(VK_CONTROL) && (key == VK_TAB || key == VK_PRIOR || key == VK_NEXT);
      if ((!used || turns) && sink_.key_left(id(), key)) return 0;
      return {};
    }
    case WM_CHAR:
      if (key_done_ && (wparam == L'\t' || wparam == L'\r' || wparam == L'\n' || wparam == 27))
        return 0;
      return {};
    default:
      return {};
  }
}

LRESULT FormControl::message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (const auto answer = form_message(message, wparam, lparam)) return *answer;
  return control_message(message, wparam, lparam);
}

}  // namespace orvello
