#include "hosts/win32/choice_control.h"

#include <algorithm>
#include <utility>

#include "hosts/win32/edit_control.h"
#include "hosts/win32/form_paint.h"
#include "hosts/win32/list_control.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kRowsAtOnce = 8;
constexpr int kWideList = 320;  // design units; longer rows wrap

COMBOBOXINFO parts_of(HWND combo) {
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  GetComboBoxInfo(combo, &info);
  return info;
}

}  // namespace

LRESULT ComboEdit::message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (const auto answer = combo_.form_message(message, wparam, lparam)) return *answer;
  switch (message) {
    case WM_KEYDOWN:
      if (combo_.take_key(wparam)) return 0;
      break;
    case WM_CHAR:
      if (wparam == L'\t' || wparam == L'\r' || wparam == L'\n' || wparam == 27) return 0;
      if (!has_room_for(window(), wparam, combo_.made().limit)) return 0;
      break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      if (combo_.sink().covered()) return 0;
      break;
    case WM_MOUSEWHEEL:
      return SendMessageW(combo_.window(), message, wparam, lparam);
    case WM_SETFOCUS:
      InvalidateRect(combo_.window(), nullptr, FALSE);
      break;
    case WM_KILLFOCUS: {
      // The platform would go on showing what is selected.
      DWORD end = 0;
      SendMessageW(window(), EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
      SendMessageW(window(), EM_SETSEL, end, static_cast<LPARAM>(end));
      InvalidateRect(combo_.window(), nullptr, FALSE);
      break;
    }
    default:
      break;
  }
  return by_default(message, wparam, lparam);
}

LRESULT DroppedRows::message(UINT message, WPARAM wparam, LPARAM lparam) {
  const LRESULT answer = scroll_.take(window(), message, wparam, lparam);
  if (message != WM_NCPAINT) return answer;
  RECT whole{};
  GetWindowRect(window(), &whole);
  OffsetRect(&whole, -whole.left, -whole.top);
  const HDC dc = GetWindowDC(window());
  FrameRect(dc, &whole, look_.brush(look_.colors().edge));
  ReleaseDC(window(), dc);
  return answer;
}

bool ChoiceBoxControl::create(HWND parent) {
  Creation creation;
  creation.window_class = L"COMBOBOX";
  creation.style =
      WS_CHILD | WS_TABSTOP | CBS_HASSTRINGS | CBS_NOINTEGRALHEIGHT | CBS_OWNERDRAWVARIABLE;
  creation.style |= editable() ? CBS_DROPDOWN | CBS_AUTOHSCROLL : CBS_DROPDOWNLIST;
  creation.place = {0, 0, 100, 100};
  creation.parent = parent;
  creation.id = id();
  if (!create_control(creation)) return false;
  if (editable()) {
    const HWND edit = parts_of(window()).hwndItem;
    if (!edit) return false;
    edit_.adopt(edit);
  }
  const HWND rows = parts_of(window()).hwndList;
  if (!rows) return false;
  rows_below_.adopt(rows);
  look_changed();
  if (editable()) set_text(made().text);
  return true;
}

void ChoiceBoxControl::look_changed() {
  FormControl::look_changed();
  if (!place_.empty()) fit();
}

int ChoiceBoxControl::arrow_width() const {
  return std::min(look().scaled(kTouchHeight), place_.width / 2);
}

RECT ChoiceBoxControl::field_room() const {
  RECT room{};
  GetClientRect(window(), &room);
  const int edge = std::max(1, look().scaled(kFieldEdge));
  return turned_room({edge, edge, room.right - arrow_width(), room.bottom - edge}, room.right,
                     look().right_to_left());
}

void ChoiceBoxControl::put(const Rect& place) {
  if (place == place_) return;
  place_ = place;
  fit();
}

// The platform takes the height of the list that drops down with that of the control, whose own
// follows from its row's.
void ChoiceBoxControl::stand(int list_height) {
  SetWindowPos(window(), nullptr, place_.x, place_.y, place_.width, place_.height + list_height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void ChoiceBoxControl::fit() {
  const auto set_row = [this](int height) {
    SendMessageW(window(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), std::max(1, height));
    stand(0);
  };
  set_row(place_.height - 6);
  RECT whole{};
  GetWindowRect(window(), &whole);
  const int missing = place_.height - (whole.bottom - whole.top);
  if (missing != 0) set_row(place_.height - 6 + missing);
  place_edit();
  rows_measured_ = false;
  if (is_dropped_down()) measure_rows();
}

void ChoiceBoxControl::place_edit() {
  if (!editable()) return;
  const RECT room = field_room();
  const int side = look().scaled(1.5 * kGrid) - look().scaled(kFieldEdge),
            line = look().line_height();
  const LONG top = std::max(room.top, (room.top + room.bottom - line) / 2);
  const RECT wanted{room.left, top, room.right, top + std::min<LONG>(line, room.bottom - top)};
  RECT now{};
  GetWindowRect(edit_.window(), &now);
  MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&now), 2);
  if (!EqualRect(&now, &wanted))
    SetWindowPos(edit_.window(), nullptr, wanted.left, wanted.top, wanted.right - wanted.left,
                 wanted.bottom - wanted.top, SWP_NOZORDER | SWP_NOACTIVATE);
  SendMessageW(edit_.window(), EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN,
               MAKELPARAM(std::max(0, side), std::max(0, side)));
}

// Of all rows in that width, as far as so many are shown at once.
int ChoiceBoxControl::dropped_height(int width) const {
  const int most = kRowsAtOnce * look().scaled(kTouchHeight);
  int high = 0;
  for (std::size_t row = 0; row < rows_.size() && high <= most; ++row)
    high += list_row_height(rows_[row], width, look());
  return high;
}

// As wide as its rows need, within limits and the form; what is longer wraps. As high as they are.
// Only a list that drops down needs it, and few of those that a form has do.
void ChoiceBoxControl::measure_rows() {
  if (std::exchange(rows_measured_, true)) return;
  int wide = place_.width;
  for (const Text& row : rows_)
    wide = std::max(wide, measured_text(look().font(), row).width + look().scaled(3 * kGrid));
  wide = std::min(wide, look().scaled(kWideList));
  RECT form{};
  GetClientRect(GetParent(window()), &form);
  const int most = kRowsAtOnce * look().scaled(kTouchHeight), edges = 2;
  const bool scrolls = dropped_height(wide - edges) > most;
  if (scrolls) wide += rows_below_.scroll().width();
  wide = std::max(place_.width, std::min<int>(wide, form.right - place_.x));
  SendMessageW(window(), CB_SETDROPPEDWIDTH, static_cast<WPARAM>(wide), 0);
  const int room = wide - edges - (scrolls ? rows_below_.scroll().width() : 0);
  for (std::size_t row = 0; row < rows_.size(); ++row)
    SendMessageW(window(), CB_SETITEMHEIGHT, row, list_row_height(rows_[row], room, look()));
  const int high = std::clamp(dropped_height(room), look().scaled(kTouchHeight), most) + edges;
  stand(high);
  rows_below_.scroll().show(rows_below_.window(), scrolls);
}

void ChoiceBoxControl::put_caret(Caret caret) {
  if (!editable() || caret == Caret::unchanged) return;
  const int end = GetWindowTextLengthW(edit_.window());
  SendMessageW(edit_.window(), EM_SETSEL, static_cast<WPARAM>(caret == Caret::all ? 0 : end), end);
}

int ChoiceBoxControl::row_of(TextView text) const {
  const auto found = std::find(rows_.begin(), rows_.end(), text);
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

Text ChoiceBoxControl::text() const {
  if (editable()) return edit_text(edit_.window());
  return selected_ < 0 ? Text() : rows_[static_cast<std::size_t>(selected_)];
}

void ChoiceBoxControl::set_text(TextView text) {
  if (!editable()) return select(row_of(text));
  const bool before = std::exchange(setting_, true);
  SendMessageW(edit_.window(), EM_SETLIMITTEXT, 0, 0);
  set_edit_text(edit_.window(), text, made().limit);
  // Who is typing goes on behind it; the platform would begin it anew.
  if (GetFocus() == edit_.window()) put_caret(Caret::end);
  if (made().limit > 0)
    SendMessageW(edit_.window(), EM_SETLIMITTEXT, static_cast<WPARAM>(made().limit), 0);
  last_ = this->text();
  setting_ = before;
}

void ChoiceBoxControl::set_rows(const std::vector<Text>& rows) {
  close_drop();
  const Text kept = text();
  const bool before = std::exchange(setting_, true);
  rows_ = rows;
  selected_ = -1;
  SendMessageW(window(), CB_RESETCONTENT, 0, 0);
  for (const Text& row : rows_)
    SendMessageW(window(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide(row)));
  if (editable()) set_text(kept);
  setting_ = before;
  rows_measured_ = false;
  InvalidateRect(window(), nullptr, FALSE);
}

int ChoiceBoxControl::selected() const { return editable() ? row_of(text()) : selected_; }

void ChoiceBoxControl::write(int row) {
  const bool before = std::exchange(setting_, true);
  SendMessageW(window(), CB_SETCURSEL, static_cast<WPARAM>(row), 0);
  setting_ = before;
}

void ChoiceBoxControl::select(int row) {
  if (row < 0 || row >= static_cast<int>(rows_.size())) row = -1;
  typed_ = false;
  if (editable()) return set_text(row < 0 ? Text() : rows_[static_cast<std::size_t>(row)]);
  selected_ = row;
  write(row);
  InvalidateRect(window(), nullptr, FALSE);
}

bool ChoiceBoxControl::is_dropped_down() const {
  return SendMessageW(window(), CB_GETDROPPEDSTATE, 0, 0) != 0;
}

void ChoiceBoxControl::drop(bool down) { SendMessageW(window(), CB_SHOWDROPDOWN, down, 0); }

void ChoiceBoxControl::close_drop() {
  wanted_ = -1;
  if (is_dropped_down()) drop(false);
}

// All of it drops the list down, not the platform's narrow button alone.
void ChoiceBoxControl::press() {
  if (sink().covered()) return;
  take_focus();
  if (is_dropped_down())
    close_drop();
  else
    drop(true);
}

void ChoiceBoxControl::open() {
  if (!IsWindowVisible(window()) || !IsWindowEnabled(window())) return;
  take_focus();
  if (!is_dropped_down()) drop(true);
}

void ChoiceBoxControl::dropped() {
  wanted_ = -1;
  measure_rows();
  const Text shown = text();
  write(selected());
  if (editable()) set_text(shown);
}

// Whatever row the open list stood on: only one that was chosen counts.
void ChoiceBoxControl::closed() {
  const int row = std::exchange(wanted_, -1);
  if (row >= 0)
    take(row);
  else if (!editable())
    write(selected_);
}

void ChoiceBoxControl::take(int row) {
  const bool other = row != selected();
  select(row);
  if (other) tell(Event::changed);
  tell(Event::taken);
}

bool ChoiceBoxControl::step(UINT key) {
  const int last = static_cast<int>(rows_.size()) - 1, at = selected();
  int row = key == VK_UP ? at - 1 : key == VK_DOWN ? at + 1 : at;
  if (!editable() && key == VK_HOME) row = 0;
  if (!editable() && key == VK_END) row = last;
  if (row == at) return key == VK_UP || key == VK_DOWN;
  row = std::clamp(row, 0, std::max(0, last));
  if (last < 0 || row == at) return true;
  select(row);
  tell(Event::changed);
  return true;
}

bool ChoiceBoxControl::uses_key(UINT key) const {
  if (key == VK_RETURN || key == VK_ESCAPE) return is_dropped_down();
  return key == VK_UP || key == VK_DOWN || key == VK_LEFT || key == VK_RIGHT;
}

// True: the platform need not see it.
bool ChoiceBoxControl::take_key(WPARAM key) {
  const bool vertical = key == VK_UP || key == VK_DOWN;
  if (is_dropped_down()) {
    if (key == VK_ESCAPE || key == VK_F4) {
      close_drop();
      return true;
    }
    if (key == VK_RETURN) {
      wanted_ = static_cast<int>(SendMessageW(window(), CB_GETCURSEL, 0, 0));
      drop(false);
      return true;
    }
    if (!vertical && key != VK_PRIOR && key != VK_NEXT) return editable() ? false : key == VK_SPACE;
    // The row moves in the list alone; the text changes when it is taken.
    const int last = static_cast<int>(rows_.size()) - 1;
    const int by = key == VK_UP ? -1 : key == VK_DOWN ? 1 : key == VK_PRIOR ? -7 : 7;
    const HWND list = parts_of(window()).hwndList;
    const auto at = static_cast<int>(SendMessageW(list, LB_GETCURSEL, 0, 0));
    if (last >= 0)
      SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(std::clamp(at + by, 0, last)), 0);
    return true;
  }
  if (key == VK_F4 || (key == VK_SPACE && !editable())) {
    drop(true);
    return true;
  }
  if (vertical || (!editable() && (key == VK_HOME || key == VK_END)))
    return step(static_cast<UINT>(key));
  return !editable() && (key == VK_LEFT || key == VK_RIGHT || key == VK_PRIOR || key == VK_NEXT);
}

// The next row that begins so, round in a circle.
bool ChoiceBoxControl::take_letter(WPARAM letter) {
  if (editable() || letter < L' ' || rows_.empty()) return true;
  const bool is_open = is_dropped_down();
  const HWND list = parts_of(window()).hwndList;
  const int count = static_cast<int>(rows_.size());
  const int start = is_open ? static_cast<int>(SendMessageW(list, LB_GETCURSEL, 0, 0)) : selected_;
  const auto folded = [](WPARAM one) {
    return reinterpret_cast<std::uintptr_t>(CharUpperW(reinterpret_cast<LPWSTR>(one & 0xFFFF)));
  };
  for (int i = 1; i <= count; ++i) {
    const int row = (start + i + count) % count;
    const Text& text = rows_[static_cast<std::size_t>(row)];
    if (text.empty() || folded(text.front()) != folded(letter)) continue;
    if (is_open) {
      SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(row), 0);
    } else if (row != selected_) {
      select(row);
      tell(Event::changed);
    }
    break;
  }
  return true;
}

std::optional<LRESULT> ChoiceBoxControl::reflected(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_DRAWITEM) {
    const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lparam);
    const bool in_list = !(item.itemState & ODS_COMBOBOXEDIT) && item.itemID < rows_.size();
    if (in_list) draw_list_row(item, rows_[item.itemID], look(), false);
    return TRUE;
  }
  if (message != WM_COMMAND || setting_) return {};
  switch (HIWORD(wparam)) {
    case CBN_DROPDOWN:
      dropped();
      return 0;
    case CBN_SELENDOK:
      // The pointer's; a key has said so itself.
      if (wanted_ < 0 && is_dropped_down())
        wanted_ = static_cast<int>(SendMessageW(window(), CB_GETCURSEL, 0, 0));
      return 0;
    case CBN_CLOSEUP:
      closed();
      return 0;
    case CBN_EDITCHANGE:
      // The platform also calls what did not fit a change.
      if (text() == last_) return 0;
      last_ = text();
      typed_ = true;
      tell(Event::changed);
      return 0;
    default:
      return 0;
  }
}

LRESULT ChoiceBoxControl::control_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      press();
      return 0;
    case WM_LBUTTONUP:
      return 0;
    case WM_KEYDOWN:
      if (take_key(wparam)) return 0;
      break;
    case WM_SYSKEYDOWN:
      if (wparam != VK_UP && wparam != VK_DOWN) break;
      if (is_dropped_down())
        close_drop();
      else
        drop(true);
      return 0;
    case WM_CHAR:
      if (take_letter(wparam)) return 0;
      break;
    case WM_MOUSEWHEEL:
      // It scrolls the form: a choice that is passed on the way is not meant.
      if (!is_dropped_down()) return SendMessageW(GetParent(window()), message, wparam, lparam);
      rows_below_.scroll().turn_wheel(rows_below_.window(), GET_WHEEL_DELTA_WPARAM(wparam));
      return 0;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORLISTBOX: {
      const LookColors& colors = look().colors();
      const bool enabled = IsWindowEnabled(window());
      const Color ground = enabled ? colors.field : colors.ground;
      const auto dc = reinterpret_cast<HDC>(wparam);
      SetTextColor(dc, color_ref(enabled ? colors.text : colors.dim_text));
      SetBkColor(dc, color_ref(ground));
      return reinterpret_cast<LRESULT>(look().brush(ground));
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE: {
      const LRESULT answer = by_default(message, wparam, lparam);
      InvalidateRect(window(), nullptr, FALSE);
      return answer;
    }
    case WM_SIZE: {
      const LRESULT answer = by_default(message, wparam, lparam);
      place_edit();
      return answer;
    }
    default:
      break;
  }
  return by_default(message, wparam, lparam);
}

void ChoiceBoxControl::paint(HDC given) {
  const BufferedPaint paint(window(), given);
  const RECT whole = paint.room();
  const LookColors& colors = look().colors();
  const bool enabled = IsWindowEnabled(window());
  fill_room(paint.dc(), whole, enabled ? colors.field : colors.ground);
  if (!editable()) {
    TextPaint how;
    how.font = look().font();
    how.color = enabled ? colors.text : colors.dim_text;
    const RECT room =
        turned_room({look().scaled(1.5 * kGrid), 0, whole.right - arrow_width(), whole.bottom},
                    whole.right, look().right_to_left());
    paint_text(paint.dc(), room, text(), how, look());
  }
  const RECT arrow = turned_room({whole.right - arrow_width(), 0, whole.right, whole.bottom},
                                 whole.right, look().right_to_left());
  paint_drop_arrow(paint.dc(), arrow, look(), enabled);
  paint_field_edge(paint.dc(), whole, look(), enabled, GetFocus() == focus_target());
}

}  // namespace orvello
