#include "hosts/win32/date_controls.h"

#include <utility>

#include "draw/mirrored.h"
#include "hosts/win32/form_paint.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

}  // namespace

bool DatedControl::create_dated(HWND parent, const wchar_t* window_class) {
  Creation creation;
  creation.window_class = window_class;
  creation.style = WS_CHILD | WS_CLIPSIBLINGS | WS_TABSTOP;
  creation.place = {};
  creation.parent = parent;
  creation.id = id();
  return create_own(creation) != nullptr;
}

std::optional<MonthDayYear> DatedControl::after_key(const MonthDayYear& date, UINT key) const {
  const bool by_years = is_key_held(VK_CONTROL) || is_key_held(VK_SHIFT);
  return date_after_key(date, look().right_to_left() ? mirrored_key(key) : key, by_years);
}

MonthDayYear DatedControl::after_wheel(const MonthDayYear& date, WPARAM wparam) {
  MonthDayYear moved = date;
  int notches = wheel_.take(GET_WHEEL_DELTA_WPARAM(wparam), false);
  for (; notches != 0; notches += notches > 0 ? -1 : 1)
    moved = date_after_key(moved, notches > 0 ? VK_PRIOR : VK_NEXT, false).value_or(moved);
  return moved;
}

void DatedControl::Handle::set_date(const MonthDayYear& date) {
  if (!is_real_date(date)) return;
  control.date_ = within_dates(date);
  control.date_is_set();
}

void DatedControl::Handle::set_calendar(const MonthDayYear& today, bool monday_first) {
  control.today_ = today;
  control.monday_first_ = monday_first;
  control.calendar_is_set();
}

void DatedControl::Handle::set_picture(TextView picture) {
  control.picture_ = picture;
  control.picture_is_set();
}

bool CalendarControl::create(HWND parent) {
  if (!create_dated(parent, L"OrvelloCalendar")) return false;
  face_.set_windows(window(), window());
  look_changed();
  date_is_set();
  return true;
}

void CalendarControl::put(const Rect& place) {
  FormControl::put(place);
  face_.set_size({place.width, place.height});
  InvalidateRect(window(), nullptr, FALSE);
}

void CalendarControl::set_name(const Text& name) {
  FormControl::set_name(name);
  face_.set_name(name);
}

void CalendarControl::date_is_set() {
  face_.set_date(date_);
  InvalidateRect(window(), nullptr, FALSE);
}

void CalendarControl::calendar_is_set() {
  face_.set_calendar(today_, monday_first_);
  InvalidateRect(window(), nullptr, FALSE);
}

bool CalendarControl::uses_key(UINT key) const {
  return moves_date(key) || key == VK_RETURN || key == VK_SPACE;
}

void CalendarControl::move_to(const MonthDayYear& date) {
  if (date == date_) return;
  date_ = date;
  date_is_set();
  AccessibleWindow::tell(window(), EVENT_OBJECT_FOCUS, face_.selected_part());
  tell(Event::changed);
}

void CalendarControl::tap(int part) {
  if (part < 0) return;
  move_to(face_.pad().target(part));
  if (CalendarFace::is_day(part)) tell(Event::taken);
}

bool CalendarControl::press_key(UINT key) {
  if (key == VK_RETURN || key == VK_SPACE) return tell(Event::taken), true;
  if (const auto date = after_key(date_, key)) move_to(*date);
  return moves_date(key);
}

LRESULT CalendarControl::control_message(UINT message, WPARAM wparam, LPARAM lparam) {
  const POINT at{static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
  switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT: {
      const BufferedPaint painting(window(), reinterpret_cast<HDC>(wparam));
      face_.paint(painting.dc(), GetFocus() == window());
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      if (sink().covered()) return 0;
      take_focus();
      SetCapture(window());
      face_.press(at);
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    case WM_LBUTTONUP: {
      const int part = GetCapture() == window() ? face_.release(at) : -1;
      if (GetCapture() == window()) ReleaseCapture();
      InvalidateRect(window(), nullptr, FALSE);
      if (!sink().covered()) tap(part);
      return 0;
    }
    case WM_CAPTURECHANGED:
      face_.let_go();
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    case WM_MOUSEWHEEL:
      if (!sink().covered()) move_to(after_wheel(date_, wparam));
      return 0;
    case WM_KEYDOWN:
      if (press_key(static_cast<UINT>(wparam))) return 0;
      break;
    case WM_CHAR:
      return 0;
    case WM_SETFOCUS:
      AccessibleWindow::tell(window(), EVENT_OBJECT_FOCUS, face_.selected_part());
      [[fallthrough]];
    case WM_KILLFOCUS:
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    case CalendarFace::kPressPart:
      if (wparam < MonthPad::kParts && !sink().covered()) tap(static_cast<int>(wparam));
      return 0;
    case WM_GETOBJECT:
      if (const auto answer = face_.answer(wparam, lparam)) return *answer;
      break;
    default:
      break;
  }
  return by_default(message, wparam, lparam);
}

}  // namespace orvello
