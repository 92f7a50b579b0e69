#include "hosts/win32/label_control.h"

#include "draw/readable.h"
#include "hosts/win32/form_paint.h"
#include "hosts/win32/wide_text.h"

namespace orvello {

bool LabelControl::create(HWND parent) {
  text_ = made().text;
  Creation creation;
  creation.window_class = L"STATIC";
  creation.title = wide(text_);
  creation.style = WS_CHILD | SS_NOPREFIX;
  creation.place = {0, 0, 0, 0};
  creation.parent = parent;
  creation.id = id();
  return create_control(creation) != nullptr;
}

void LabelControl::set_text(TextView text) {
  text_ = text;
  SetWindowTextW(window(), wide(text_));
  InvalidateRect(window(), nullptr, FALSE);
}

void LabelControl::paint(HDC given) {
  const BufferedPaint paint(window(), given);
  const LookColors& colors = look().colors();
  fill_room(paint.dc(), paint.room(), colors.ground);
  TextPaint how;
  how.font = look().font();
  how.wraps = true;
  how.color = !IsWindowEnabled(window()) ? colors.dim_text
              : made().color             ? legible_on(colors.ground, *made().color)
                                         : colors.text;
  paint_text(paint.dc(), paint.room(), text_, how, look());
}

LRESULT LabelControl::control_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SETTEXT:  // the platform would draw it at once
      return DefWindowProcW(window(), message, wparam, lparam);
    case WM_ENABLE:
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    default:
      return by_default(message, wparam, lparam);
  }
}

}  // namespace orvello
