// The field of a date picker, and the calendar that it drops down.
#include <oleacc.h>

#include <algorithm>

#include "calendar/date_pictures.h"
#include "hosts/win32/date_controls.h"
#include "hosts/win32/form_paint.h"
#include "hosts/win32/pointed_control.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kDroppedWidth = 224, kDroppedHeight = 208;  // design units: a day is 7 mm wide

}  // namespace

DroppedCalendar::DroppedCalendar(const FormLook& look, HWND field)
    : look_(look), field_(field), face_(look) {}

bool DroppedCalendar::open() {
  const HWND ground = GetAncestor(field_, GA_ROOT);
  RECT around{}, field{};
  GetClientRect(ground, &around);
  GetClientRect(field_, &field);
  MapWindowPoints(field_, ground, reinterpret_cast<POINT*>(&field), 2);
  const LONG edge = std::max(1, look_.scaled(1));
  const LONG wide = std::min(look_.scaled(kDroppedWidth) + 2 * edge, around.right);
  const LONG tall = std::min(look_.scaled(kDroppedHeight) + 2 * edge, around.bottom);
  const bool below = field.bottom + tall <= around.bottom || field.top < tall;
  const LONG y = std::clamp(below ? field.bottom : field.top - tall, 0L, around.bottom - tall);
  const LONG x = look_.right_to_left() ? field.right - wide : field.left;
  Creation creation;
  creation.window_class = L"OrvelloDroppedCalendar";
  creation.style = WS_CHILD | WS_CLIPSIBLINGS;
  const LONG left = std::clamp(x, 0L, around.right - wide);
  creation.place = {left, y, left + wide, y + tall};
  creation.parent = ground;
  if (!create_own(creation)) return false;
  face_.set_windows(window(), field_);
  face_.set_size({static_cast<int>(wide - 2 * edge), static_cast<int>(tall - 2 * edge)});
  SetWindowPos(window(), HWND_TOP, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
  return true;
}

LRESULT DroppedCalendar::message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    // The edge is the platform's frame without its look, so that the calendar counts from 0.
    case WM_NCCALCSIZE: {
      const int edge = std::max(1, look_.scaled(1));
      InflateRect(reinterpret_cast<RECT*>(lparam), -edge, -edge);
      return 0;
    }
    case WM_NCPAINT: {
      RECT whole{};
      GetWindowRect(window(), &whole);
      OffsetRect(&whole, -whole.left, -whole.top);
      const HDC dc = GetWindowDC(window());
      const int edge = std::max(1, look_.scaled(1));
      ExcludeClipRect(dc, edge, edge, whole.right - edge, whole.bottom - edge);
      fill_room(dc, whole, look_.colors().accent);
      ReleaseDC(window(), dc);
      return 0;
    }
    case WM_PAINT:
    case WM_PRINTCLIENT: {
      const BufferedPaint painting(window(), reinterpret_cast<HDC>(wparam));
      face_.paint(painting.dc(), true);
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_GETOBJECT:
      if (const auto answer = face_.answer(wparam, lparam)) return *answer;
      break;
    default:
      break;
  }
  return by_default(message, wparam, lparam);
}

bool DatePickerControl::create(HWND parent) {
  if (!create_dated(parent, L"OrvelloDatePicker")) return false;
  look_changed();
  picture_is_set();
  return true;
}

void DatePickerControl::put(const Rect& place) {
  close_drop();
  FormControl::put(place);
  InvalidateRect(window(), nullptr, FALSE);
}

void DatePickerControl::show_date(const MonthDayYear& date) {
  date_ = date;
  NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, window(), OBJID_CLIENT, CHILDID_SELF);
  InvalidateRect(window(), nullptr, FALSE);
}

void DatePickerControl::date_is_set() {
  close_drop();
  show_date(date_);
}

void DatePickerControl::calendar_is_set() {
  if (!dropped_) return;
  dropped_->face().set_calendar(today_, monday_first_);
  dropped_->refresh();
}

void DatePickerControl::picture_is_set() {
  if (picture_.empty()) picture_ = DatePickerPicture(look().locale());
  InvalidateRect(window(), nullptr, FALSE);
}

Text DatePickerControl::shown() const {
  SystemTime time;
  time.year = date_.year;
  time.month = date_.month;
  time.day = date_.day;
  time.day_of_week = DayOfWeek(date_.month, date_.day, date_.year);
  return FormatDatePicture(picture_, time, look().locale());
}

// The field holds the pointer meanwhile, so that a press anywhere else closes the calendar.
void DatePickerControl::drop() {
  if (dropped_ || !IsWindowVisible(window()) || !IsWindowEnabled(window())) return;
  take_focus();
  auto dropped = std::make_unique<DroppedCalendar>(look(), window());
  dropped->face().set_name(name());
  dropped->face().set_calendar(today_, monday_first_);
  dropped->face().set_date(date_);
  if (!dropped->open()) return;
  dropped_ = std::move(dropped);
  SetCapture(window());
  AccessibleWindow::tell(dropped_->window(), EVENT_OBJECT_FOCUS, dropped_->face().selected_part());
}

void DatePickerControl::close_drop() {
  if (!dropped_) return;
  dropped_.reset();
  if (GetCapture() == window()) ReleaseCapture();
  InvalidateRect(window(), nullptr, FALSE);
}

void DatePickerControl::take() {
  const MonthDayYear chosen = dropped_->face().date();
  close_drop();
  const bool other = chosen != date_;
  if (other) show_date(chosen);
  if (other) tell(Event::changed);
  tell(Event::taken);
}

void DatePickerControl::tap(int part) {
  if (!dropped_ || part < 0) return;
  dropped_->face().set_date(dropped_->face().pad().target(part));
  dropped_->refresh();
  if (CalendarFace::is_day(part)) take();
}

void DatePickerControl::take_pointer(UINT message, LPARAM lparam) {
  POINT at{static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
  const bool press = message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK;
  if (!dropped_) {
    if (press && !sink().covered()) drop();
    return;
  }
  MapWindowPoints(window(), dropped_->window(), &at, 1);
  RECT room{};
  GetClientRect(dropped_->window(), &room);
  if (press && !PtInRect(&room, at)) return close_drop();
  if (press) dropped_->face().press(at);
  dropped_->refresh();
  if (message == WM_LBUTTONUP) tap(dropped_->face().release(at));
}

bool DatePickerControl::uses_key(UINT key) const {
  return moves_date(key) || key == VK_F4 || key == VK_SPACE ||
         (dropped_ && (key == VK_RETURN || key == VK_ESCAPE));
}

bool DatePickerControl::press_dropped_key(UINT key) {
  if (key == VK_ESCAPE || key == VK_F4) return close_drop(), true;
  if (key == VK_RETURN || key == VK_SPACE) return take(), true;
  const auto date = after_key(dropped_->face().date(), key);
  if (!date) return false;
  dropped_->face().set_date(*date);
  dropped_->refresh();
  AccessibleWindow::tell(dropped_->window(), EVENT_OBJECT_FOCUS, dropped_->face().selected_part());
  return true;
}

bool DatePickerControl::press_key(UINT key) {
  if (dropped_) return press_dropped_key(key);
  if (key == VK_F4 || key == VK_SPACE) return drop(), true;
  if (const auto date = after_key(date_, key); date && *date != date_) {
    show_date(*date);
    tell(Event::changed);
  }
  return moves_date(key);
}

void DatePickerControl::paint(HDC given) {
  const BufferedPaint painting(window(), given);
  const bool enabled = IsWindowEnabled(window());
  const LookColors& colors = look().colors();
  const RECT all = painting.room();
  fill_room(painting.dc(), all, enabled ? colors.field : colors.ground);
  const int arrow = std::min<int>(look().scaled(kTouchHeight), all.right / 2);
  const bool turns = look().right_to_left();
  const RECT text =
      turned_room({look().scaled(1.5 * kGrid), 0, all.right - arrow, all.bottom}, all.right, turns);
  TextPaint style;
  style.color = enabled ? colors.text : colors.dim_text;
  for (int size = std::max(6, look().scaled(kTextSize));; --size) {
    style.font = look().font(size, false);
    const bool fits = measured_text(style.font, shown()).width <= text.right - text.left;
    if (fits || size <= look().scaled(kTextSize) * 2 / 3) break;
  }
  paint_text(painting.dc(), text, shown(), style, look());
  paint_drop_arrow(painting.dc(),
                   turned_room({all.right - arrow, 0, all.right, all.bottom}, all.right, turns),
                   look(), enabled);
  paint_field_edge(painting.dc(), all, look(), enabled, GetFocus() == window());
}

LRESULT DatePickerControl::control_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
      take_pointer(message, lparam);
      return 0;
    case WM_RBUTTONDOWN:
      close_drop();
      return 0;
    case WM_CAPTURECHANGED:
      if (reinterpret_cast<HWND>(lparam) != window()) close_drop();
      return 0;
    case WM_KEYDOWN:
      if (press_key(static_cast<UINT>(wparam))) return 0;
      break;
    case WM_SYSKEYDOWN:
      if (wparam != VK_DOWN && wparam != VK_UP) break;
      return dropped_ ? close_drop() : drop(), 0;
    case WM_MOUSEWHEEL:
      // On the field it scrolls the form: a date that is passed on the way is not meant.
      if (!dropped_) return SendMessageW(GetParent(window()), message, wparam, lparam);
      dropped_->face().set_date(after_wheel(dropped_->face().date(), wparam));
      dropped_->refresh();
      return 0;
    case WM_CHAR:
      return 0;
    case WM_KILLFOCUS:
      close_drop();
      [[fallthrough]];
    case WM_SETFOCUS:
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    case WM_ENABLE:
    case WM_SHOWWINDOW:
      if (!wparam) close_drop();
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    case CalendarFace::kPressPart:
      if (wparam < MonthPad::kParts) tap(static_cast<int>(wparam));
      return 0;
    case WM_GETOBJECT:
      if (const auto answer = accessible_.answer(window(), wparam, lparam)) return *answer;
      break;
    default:
      break;
  }
  return by_default(message, wparam, lparam);
}

AccessiblePart DatePickerControl::accessible_self() {
  AccessiblePart self;
  self.name = name();
  self.description = shown();
  RECT room{};
  GetClientRect(window(), &room);
  self.place = place_on_screen(window(), from_rect(room));
  self.role = ROLE_SYSTEM_DROPLIST;
  self.state = STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_HASPOPUP;
  self.state |= dropped_ ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED;
  if (GetFocus() == window()) self.state |= STATE_SYSTEM_FOCUSED;
  if (!IsWindowEnabled(window())) self.state |= STATE_SYSTEM_UNAVAILABLE;
  return self;
}

void DatePickerControl::press_accessible(int) {}

}  // namespace orvello
