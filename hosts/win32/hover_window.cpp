#include "hosts/win32/hover_window.h"

#include <algorithm>

#include "hosts/win32/painting.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_surface.h"

namespace orvello {

HoverWindow::HoverWindow(HWND frame, std::shared_ptr<Win32Fonts> fonts) : fonts_(std::move(fonts)) {
  Creation creation;
  creation.window_class = L"OrvelloHover";
  creation.style = WS_CHILD | WS_CLIPSIBLINGS;
  creation.place = {0, 0, 0, 0};
  creation.parent = frame;
  create_own(creation);
}

void HoverWindow::show(const HoverLabel& label, const Rect& place) {
  label_ = label;
  Text name = label.text;
  std::replace(name.begin(), name.end(), u'\n', u' ');
  SetWindowTextW(window(), wide(name));  // which a screen reader reads
  SetWindowPos(window(), HWND_TOP, place.x, place.y, place.width, place.height,
               SWP_NOACTIVATE | SWP_SHOWWINDOW);
  InvalidateRect(window(), nullptr, FALSE);
}

void HoverWindow::hide() {
  if (window()) ShowWindow(window(), SW_HIDE);
}

void HoverWindow::paint(HDC dc) const {
  const Rect all = client_rect(window());
  Win32Surface surface(fonts_, {all.width, all.height});
  Canvas& canvas = surface.canvas();
  canvas.fill_rect(all, label_.background);
  canvas.frame_rect(all, label_.text_color, 1);
  canvas.set_clip(all.inset(1, 1));
  std::vector<Text> lines = split(label_.text, u'\n');
  if (lines.back().empty()) lines.pop_back();  // behind the last line's end
  const int line_height = canvas.measure(u"X", label_.font).height;
  int y = (all.height - line_height * static_cast<int>(lines.size())) / 2;
  for (const Text& line : lines) {
    canvas.draw_text(line, {1, y, all.width - 2, line_height},
                     {label_.font, label_.text_color, Align::center, true, false});
    y += line_height;
  }
  surface.publish();
  surface.paint(dc, {all.width, all.height});
}

LRESULT HoverWindow::message(UINT id, WPARAM wparam, LPARAM lparam) {
  if (id == WM_NCHITTEST) return HTTRANSPARENT;
  if (id == WM_ERASEBKGND) return 1;
  if (id == WM_PAINT)
    paint(PaintTurn(window()).dc());
  else if (id == WM_PRINTCLIENT)
    paint(reinterpret_cast<HDC>(wparam));
  else
    return by_default(id, wparam, lparam);
  return 0;
}

}  // namespace orvello
