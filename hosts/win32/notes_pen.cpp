// Pen and eraser on a page of notes.
#include <windowsx.h>

#include <cmath>

#include "hosts/win32/notes_window.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

}  // namespace

void NotesWindow::set_tool(NotesTool tool) {
  tool_ = tool;
  drawing_.reset();
  pen_.reset();
  held_ = erasing_ = false;
  lay_out();
}

void NotesWindow::set_ink(std::vector<NotesStroke> ink) {
  touched_ = true;
  if (ink.empty())
    now_.width = 0;
  else if (now_.ink->empty())
    now_.width = static_cast<float>(view_size_.width / look().unit());
  now_.ink = std::make_shared<std::vector<NotesStroke>>(std::move(ink));
  lay_out();
}

// Pen and eraser take the pointer; with letters a press beside them goes to the nearest.
bool NotesWindow::take_pointer(HWND from, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message >= kPointerMoved && message <= kPointerLost) return take_pen(message, wparam);
  const POINT at{GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      if (sink().covered()) return true;
      history_.end_typing();
      if (tool_ == NotesTool::text) {
        if (from == edit_.window()) return false;
        take_focus();
        edit_.select(text_.size(), text_.size());
        return true;
      }
      take_focus();
      held_ = true;
      erasing_ = tool_ == NotesTool::eraser;
      SetCapture(from);
      press_pen(on_page(from, at), 1);
      return true;
    case WM_MOUSEMOVE:
      if (!held_) return tool_ != NotesTool::text;
      if (wparam & MK_LBUTTON) drag_pen(on_page(from, at), 1);
      return true;
    case WM_LBUTTONUP:
      if (!held_) return tool_ != NotesTool::text;
      held_ = false;
      ReleaseCapture();
      lift_pen();
      return true;
    case WM_CAPTURECHANGED:
      if (std::exchange(held_, false)) lift_pen();
      return false;
    case WM_SETCURSOR:
      if (tool_ == NotesTool::text || LOWORD(lparam) != HTCLIENT) return false;
      SetCursor(LoadCursorW(nullptr, reinterpret_cast<const wchar_t*>(IDC_CROSS)));
      return true;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
      return tool_ != NotesTool::text;
    case WM_GESTURENOTIFY:
      if (tool_ != NotesTool::text) take_no_gestures(from);
      return false;
    default:
      return false;
  }
}

// A pen that tells how hard it is pressed; what is not taken comes again as a mouse's. One that is
// turned round erases whatever is chosen.
bool NotesWindow::take_pen(UINT message, WPARAM wparam) {
  const UINT32 pointer = LOWORD(wparam);
  if (message == kPointerDown ? held_ || !sink().pen : pen_ != pointer) return false;
  if (message == kPointerLost || message == kPointerUp) {
    pen_.reset();
    held_ = false;
    lift_pen();
    return true;
  }
  const std::vector<PenPoint> points = sink().pen(pointer);
  if (points.empty()) return false;
  if (message == kPointerMoved) {
    for (const PenPoint& point : points) drag_pen(on_page(nullptr, point.screen), point.pressure);
    return true;
  }
  const PenPoint& first = points.back();
  if (tool_ == NotesTool::text && !first.erases) return false;
  if (sink().covered()) return true;
  history_.end_typing();
  take_focus();
  held_ = true;
  pen_ = pointer;
  erasing_ = first.erases || tool_ == NotesTool::eraser;
  press_pen(on_page(nullptr, first.screen), first.pressure);
  return true;
}

// A stroke begins where it is pressed, not where the pen has told it from a hold.
std::optional<LRESULT> NotesWindow::pen_gestures() const {
  if (tool_ == NotesTool::text) return {};
  return kNoPenGestures;
}

void NotesWindow::press_pen(PagePoint at, double pressure) {
  now_.caret = edit_.selection().start;
  if (erasing_) {
    last_ = at;
    before_erasing_ = now_;
    return erase(at, at);
  }
  drawing_.emplace();
  drag_pen(at, pressure);
}

void NotesWindow::drag_pen(PagePoint at, double pressure) {
  if (erasing_) return erase(std::exchange(last_, at), at);
  if (!drawing_ || !add_point(*drawing_, at, pressure)) return;
  const PageBox drawn = bounds_of_end(*drawing_);
  const double unit = look().unit();
  const RECT changed{static_cast<LONG>(std::floor(drawn.left * unit)) - left_ - 2,
                     static_cast<LONG>(std::floor(drawn.top * unit)) - top_ - 2,
                     static_cast<LONG>(std::ceil(drawn.right * unit)) - left_ + 2,
                     static_cast<LONG>(std::ceil(drawn.bottom * unit)) - top_ + 2};
  RedrawWindow(view_.window(), &changed, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

void NotesWindow::lift_pen() {
  if (std::exchange(erasing_, false)) {
    // All that one move took away comes back together.
    if (before_erasing_.ink == now_.ink) return;
    history_.note(std::move(before_erasing_));
    return tell(Event::changed);
  }
  if (!drawing_) return;
  std::vector<NotesStroke> ink = *now_.ink;
  ink.push_back(*std::exchange(drawing_, std::nullopt));
  history_.note(now_);
  set_ink(std::move(ink));
  tell(Event::changed);
}

void NotesWindow::erase(PagePoint from, PagePoint to) {
  std::vector<NotesStroke> ink = *now_.ink;
  const auto gone = [&](const NotesStroke& stroke) {
    return touches(stroke, from, to, kEraserReach);
  };
  if (std::erase_if(ink, gone) > 0) set_ink(std::move(ink));
}

}  // namespace orvello
