// The field of a date picker: drawn here, as the platform's writes in the system's language.
#include <windows.h>

#include <commctrl.h>

#include "calendar/date_pictures.h"
#include "hosts/win32/date_controls.h"
#include "hosts/win32/date_system_time.h"
#include "hosts/win32/form_paint.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr UINT kCloseCalendar = DTM_FIRST + 13;  // of newer versions
constexpr int kDroppedLetters = 14;              // design units: a day is as wide as a finger needs

}  // namespace

bool DatePickerControl::create(HWND parent) {
  const DWORD side = look().right_to_left() ? DTS_RIGHTALIGN : 0;
  if (!create_dated(parent, DATETIMEPICK_CLASSW, DTS_SHORTDATEFORMAT | side)) return false;
  look_changed();
  const SYSTEMTIME range[2] = {system_time_of({1, 1, 1601}), system_time_of({12, 31, 9999})};
  SendMessageW(window(), DTM_SETRANGE, GDTR_MIN | GDTR_MAX, reinterpret_cast<LPARAM>(range));
  picture_is_set();
  return true;
}

void DatePickerControl::look_changed() {
  FormControl::look_changed();
  const HFONT font = look().font(look().scaled(kDroppedLetters), false);
  SendMessageW(window(), DTM_SETMCFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

HWND DatePickerControl::calendar() const {
  const auto calendar = reinterpret_cast<HWND>(SendMessageW(window(), DTM_GETMONTHCAL, 0, 0));
  return calendar && IsWindowVisible(calendar) ? calendar : nullptr;
}

bool DatePickerControl::is_dropped_down() const { return calendar() != nullptr; }

void DatePickerControl::show_date(const MonthDayYear& date) {
  date_ = date;
  const bool before = std::exchange(setting_, true);
  const SYSTEMTIME time = system_time_of(date_);
  SendMessageW(window(), DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
  setting_ = before;
  NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, window(), OBJID_CLIENT, CHILDID_SELF);
  InvalidateRect(window(), nullptr, FALSE);
}

void DatePickerControl::date_is_set() {
  close_drop();
  show_date(date_);
}

void DatePickerControl::calendar_is_set() {
  if (const HWND down = calendar()) set_weeks(down, today_, monday_first_);
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

// The platform has no call for it: a press on its arrow, which stands on the right.
void DatePickerControl::drop() {
  if (is_dropped_down() || !IsWindowVisible(window())) return;
  RECT client{};
  GetClientRect(window(), &client);
  const LPARAM arrow = MAKELPARAM(client.right - 4, client.bottom / 2);
  by_default(WM_LBUTTONDOWN, MK_LBUTTON, arrow);
  by_default(WM_LBUTTONUP, 0, arrow);
}

void DatePickerControl::close_drop() {
  if (!is_dropped_down()) return;
  SendMessageW(window(), kCloseCalendar, 0, 0);
  // Where the platform does not know that yet.
  if (const HWND down = calendar()) {
    ShowWindow(down, SW_HIDE);
    closed();
  }
}

void DatePickerControl::dropped() {
  tapped_ = false;
  const HWND down = reinterpret_cast<HWND>(SendMessageW(window(), DTM_GETMONTHCAL, 0, 0));
  if (!down) return;
  color_calendar(down, look().colors());
  limit_calendar(down);
  set_weeks(down, today_, monday_first_);
  const SYSTEMTIME time = system_time_of(date_);
  SendMessageW(down, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
}

// With a day that was tapped or taken, or left as it was.
void DatePickerControl::closed() {
  const bool tapped = std::exchange(tapped_, false);
  SYSTEMTIME time{};
  SendMessageW(window(), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
  const MonthDayYear chosen = date_of(time);
  const bool other = tapped && is_real_date(chosen) && chosen != date_;
  show_date(other ? chosen : date_);
  if (other) tell(Event::changed);
  if (tapped) tell(Event::taken);
}

bool DatePickerControl::uses_key(UINT key) const {
  const bool down = is_dropped_down();
  return moves_date(key) || key == VK_F4 || key == VK_SPACE ||
         (down && (key == VK_RETURN || key == VK_ESCAPE));
}

bool DatePickerControl::press_key(UINT key) {
  if (const HWND down = calendar()) {
    if (key == VK_ESCAPE || key == VK_F4) return close_drop(), true;
    SYSTEMTIME time{};
    SendMessageW(down, MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
    if (key == VK_RETURN || key == VK_SPACE) {
      SendMessageW(window(), DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
      tapped_ = true;
      return close_drop(), true;
    }
    const auto date = date_after_key(date_of(time), key, is_key_held(VK_CONTROL));
    if (!date) return false;
    time = system_time_of(*date);
    SendMessageW(down, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
    return true;
  }
  if (key == VK_F4 || key == VK_SPACE) return drop(), true;
  if (const auto date = after_key(key)) {
    show_date(*date);
    tell(Event::changed);
    return true;
  }
  return moves_date(key);
}

void DatePickerControl::paint() {
  const BufferedPaint painting(window());
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
      paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_NCPAINT:
      return 0;
    case WM_NCCALCSIZE:
      return 0;  // the edge is drawn with the field
    case WM_LBUTTONDOWN:
      if (sink().covered()) return 0;
      take_focus();
      if (is_dropped_down())
        close_drop();
      else
        drop();
      return 0;
    case WM_LBUTTONUP:
      return 0;
    case WM_KEYDOWN:
      if (press_key(static_cast<UINT>(wparam))) return 0;
      break;
    case WM_SYSKEYDOWN:
      if (wparam == VK_DOWN || wparam == VK_UP) return is_dropped_down() ? close_drop() : drop(), 0;
      break;
    case WM_CHAR:
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
      InvalidateRect(window(), nullptr, FALSE);
      break;
    case WM_GETTEXTLENGTH:
      return static_cast<LRESULT>(shown().size());
    case WM_GETTEXT: {
      // What a screen reader is told that stands in the field.
      const Text text = shown();
      if (wparam == 0) return 0;
      const std::size_t length = std::min<std::size_t>(text.size(), wparam - 1);
      std::copy_n(wide(text), length, reinterpret_cast<wchar_t*>(lparam));
      reinterpret_cast<wchar_t*>(lparam)[length] = 0;
      return static_cast<LRESULT>(length);
    }
    case WM_NOTIFY:
      // Of the calendar that is down, before the field closes it.
      if (reinterpret_cast<const NMHDR*>(lparam)->code == MCN_SELECT) tapped_ = true;
      break;
    default:
      break;
  }
  return by_default(message, wparam, lparam);
}

std::optional<LRESULT> DatePickerControl::reflected(UINT message, WPARAM, LPARAM lparam) {
  if (message != WM_NOTIFY || setting_) return {};
  switch (reinterpret_cast<const NMHDR*>(lparam)->code) {
    case DTN_DROPDOWN:
      dropped();
      return 0;
    case DTN_CLOSEUP:
      closed();
      return 0;
    default:
      return {};
  }
}

}  // namespace orvello
