#include "hosts/win32/date_controls.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "draw/mirrored.h"
#include "hosts/win32/date_system_time.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kMostLetters = 20, kLeastLetters = 8;  // design units

}  // namespace

void DatedControl::set_name(const Text& name) {
  FormControl::set_name(name);
  SetWindowTextW(window(), wide(name));
}

bool DatedControl::create_dated(HWND parent, const wchar_t* window_class, DWORD style,
                                DWORD extended_style) {
  const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX), ICC_DATE_CLASSES};
  InitCommonControlsEx(&classes);
  Creation creation;
  creation.window_class = window_class;
  creation.style = WS_CHILD | WS_CLIPSIBLINGS | style;
  creation.extended_style = extended_style;
  creation.place = {};
  creation.parent = parent;
  creation.id = id();
  return create_control(creation) != nullptr;
}

std::optional<MonthDayYear> DatedControl::after_key(UINT key) const {
  const bool by_years = is_key_held(VK_CONTROL) || is_key_held(VK_SHIFT);
  const std::uint32_t turned = look().right_to_left() ? mirrored_key(key) : key;
  const auto date = date_after_key(date_, turned, by_years);
  return date == date_ ? std::nullopt : date;
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
  const DWORD turned = look().right_to_left() ? WS_EX_LAYOUTRTL : 0;
  if (!create_dated(parent, MONTHCAL_CLASSW, MCS_NOTODAY, turned)) return false;
  look_changed();
  limit_calendar(window());
  date_is_set();
  return true;
}

void CalendarControl::look_changed() {
  color_calendar(window(), look().colors());
  letters_ = 0;
  put(place_);
}

// As large as it can be in its place, in whose middle it stands: in more room the platform would
// show more months.
void CalendarControl::put(const Rect& place) {
  if (Size{place.width, place.height} != Size{place_.width, place_.height} || letters_ == 0)
    fit_letters({place.width, place.height});
  place_ = place;
  const int width = std::min(needed_.width, place.width);
  const int height = std::min(needed_.height, place.height);
  FormControl::put(
      {place.x + (place.width - width) / 2, place.y + (place.height - height) / 2, width, height});
}

void CalendarControl::write_letters(int height) {
  letters_ = height;
  SendMessageW(window(), WM_SETFONT, reinterpret_cast<WPARAM>(look().font(height, false)), FALSE);
  RECT needed{};
  SendMessageW(window(), MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&needed));
  needed_ = {static_cast<int>(needed.right), static_cast<int>(needed.bottom)};
}

// What it needs grows with its letters: from one size the right one is nearly known. Each change of
// its font costs some versions of the platform one that they never give back.
void CalendarControl::fit_letters(Size room) {
  if (room.width <= 0 || room.height <= 0) return;
  const int least = look().scaled(kLeastLetters), most = look().scaled(kMostLetters);
  if (letters_ == 0) write_letters(look().scaled(kTextSize));
  const double share = std::min(1.0 * room.width / std::max(1, needed_.width),
                                1.0 * room.height / std::max(1, needed_.height));
  const int wanted = std::clamp(static_cast<int>(letters_ * share), least, most);
  if (wanted != letters_) write_letters(wanted);
  while (letters_ > least && (needed_.width > room.width || needed_.height > room.height))
    write_letters(letters_ - 1);
}

void CalendarControl::date_is_set() {
  const bool before = std::exchange(setting_, true);
  const SYSTEMTIME time = system_time_of(date_);
  SendMessageW(window(), MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
  setting_ = before;
}

void CalendarControl::calendar_is_set() {
  const bool before = std::exchange(setting_, true);
  set_weeks(window(), today_, monday_first_);
  setting_ = before;
}

bool CalendarControl::uses_key(UINT key) const {
  return moves_date(key) || key == VK_RETURN || key == VK_SPACE;
}

bool CalendarControl::move_to(const MonthDayYear& date) {
  if (date == date_) return false;
  date_ = date;
  date_is_set();
  NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, window(), OBJID_CLIENT, CHILDID_SELF);
  return true;
}

LRESULT CalendarControl::control_message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_KEYDOWN) {
    const auto key = static_cast<UINT>(wparam);
    if (key == VK_RETURN || key == VK_SPACE) return tell(Event::taken), 0;
    if (const auto date = after_key(key); date && move_to(*date)) return tell(Event::changed), 0;
    if (moves_date(key)) return 0;
  }
  if (message == WM_CHAR) return 0;
  if (message == WM_LBUTTONDOWN) {
    if (sink().covered()) return 0;
    take_focus();
  }
  if (message == WM_MOUSEWHEEL) {
    if (sink().covered()) return 0;
    const int notches = GET_WHEEL_DELTA_WPARAM(wparam) / WHEEL_DELTA;
    const auto date = date_after_key(date_, notches > 0 ? VK_PRIOR : VK_NEXT, false);
    if (notches != 0 && date && move_to(*date)) tell(Event::changed);
    return 0;
  }
  return by_default(message, wparam, lparam);
}

std::optional<LRESULT> CalendarControl::reflected(UINT message, WPARAM, LPARAM lparam) {
  if (message != WM_NOTIFY || setting_) return {};
  const UINT code = reinterpret_cast<const NMHDR*>(lparam)->code;
  if (code != MCN_SELCHANGE && code != MCN_SELECT) return {};
  SYSTEMTIME time{};
  SendMessageW(window(), MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&time));
  const MonthDayYear chosen = date_of(time);
  const bool other = is_real_date(chosen) && chosen != date_;
  if (other) date_ = chosen;
  if (other) tell(Event::changed);
  if (code == MCN_SELECT) tell(Event::taken);
  return 0;
}

}  // namespace orvello
