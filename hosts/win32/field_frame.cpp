#include "hosts/win32/field_frame.h"

#include <algorithm>

#include "hosts/win32/form_paint.h"

namespace orvello {

int FieldFrame::edge() const { return std::max(1, look_.scaled(kFieldEdge)); }

void FieldFrame::shrink(RECT& room) const {
  InflateRect(&room, -edge(), -edge());
  const LONG across = std::min(inset.cx, (room.right - room.left) / 2);
  const LONG down = std::min(inset.cy, (room.bottom - room.top) / 2);
  InflateRect(&room, -across, -down);
}

// All around the client area and the scroll bars.
void FieldFrame::paint(HWND window) const {
  RECT whole{};
  GetWindowRect(window, &whole);
  OffsetRect(&whole, -whole.left, -whole.top);
  RECT inner = whole;
  shrink(inner);
  const HDC dc = GetWindowDC(window);
  ExcludeClipRect(dc, inner.left, inner.top, inner.right, inner.bottom);
  const LookColors& colors = look_.colors();
  const bool enabled = IsWindowEnabled(window);
  fill_room(dc, whole, enabled ? colors.field : colors.ground);
  paint_field_edge(dc, whole, look_, enabled, GetFocus() == window);
  ReleaseDC(window, dc);
}

}  // namespace orvello
