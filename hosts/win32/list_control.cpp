#include "hosts/win32/list_control.h"

#include <algorithm>

#include "hosts/win32/form_paint.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kHighestRow = 255;  // what the platform's rows can be

RECT text_room(const RECT& row, const FormLook& look) {
  return shrunk(row, look.scaled(1.5 * kGrid), look.scaled(3));
}

}  // namespace

int list_row_height(TextView text, int width, const FormLook& look) {
  const RECT room = text_room({0, 0, width, 0}, look);
  const int words = wrapped_height(look.font(), text, std::max<int>(1, room.right - room.left));
  return std::clamp(words + look.scaled(6), look.scaled(kTouchHeight),
                    std::max(kHighestRow, look.scaled(kTouchHeight)));
}

void draw_list_row(const DRAWITEMSTRUCT& item, TextView text, const FormLook& look, bool focused) {
  const LookColors& colors = look.colors();
  const bool enabled = !(item.itemState & ODS_DISABLED);
  const bool selected = item.itemState & ODS_SELECTED;
  const Color ground = !selected ? enabled ? colors.field : colors.ground
                       : enabled ? colors.accent
                                 : colors.dim_text;
  fill_room(item.hDC, item.rcItem, ground);
  TextPaint how;
  how.font = look.font();
  how.wraps = true;
  how.color = selected ? colors.accent_text : enabled ? colors.text : colors.dim_text;
  paint_text(item.hDC, text_room(item.rcItem, look), text, how, look);
  if (!focused) return;
  const int line = std::max(1, look.scaled(1));
  paint_round_edge(item.hDC, shrunk(item.rcItem, line, line),
                   selected ? colors.accent_text : colors.accent, line, 1);
}

bool ListBoxControl::create(HWND parent) {
  Creation creation;
  creation.window_class = L"LISTBOX";
  creation.style = WS_CHILD | WS_TABSTOP | LBS_NOTIFY | LBS_HASSTRINGS | LBS_OWNERDRAWVARIABLE |
                   LBS_NOINTEGRALHEIGHT;
  if (several()) creation.style |= LBS_MULTIPLESEL;
  creation.place = {0, 0, 0, 0};
  creation.parent = parent;
  creation.id = id();
  if (!create_control(creation)) return false;
  look_changed();
  return true;
}

void ListBoxControl::look_changed() {
  FormControl::look_changed();
  measure_rows();
  FieldFrame::refresh(window());
}

void ListBoxControl::put(const Rect& place) {
  if (stands_at(place)) return;
  FormControl::put(place);
  measure_rows();
}

void ListBoxControl::measure_rows() {
  RECT room{};
  GetWindowRect(window(), &room);
  const int edges = 2 * std::max(1, look().scaled(kFieldEdge));
  const int width = static_cast<int>(room.right - room.left) - edges,
            height = static_cast<int>(room.bottom - room.top) - edges;
  if (width <= 0 || height <= 0) return;
  bool scrolls = false;
  for (std::size_t row = 0, all = 0; row < rows_.size() && !scrolls; ++row) {
    all += static_cast<std::size_t>(list_row_height(rows_[row], width, look()));
    scrolls = all > static_cast<std::size_t>(height);
  }
  const int room_of_rows = width - (scrolls ? scroll_.width() : 0);
  for (std::size_t row = 0; row < rows_.size(); ++row)
    SendMessageW(window(), LB_SETITEMHEIGHT, row,
                 list_row_height(rows_[row], room_of_rows, look()));
  scroll_.show(window(), scrolls);
  InvalidateRect(window(), nullptr, FALSE);
}

void ListBoxControl::set_rows(const std::vector<Text>& rows) {
  rows_ = rows;
  SendMessageW(window(), WM_SETREDRAW, FALSE, 0);
  SendMessageW(window(), LB_RESETCONTENT, 0, 0);
  for (const Text& row : rows_)
    SendMessageW(window(), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide(row)));
  SendMessageW(window(), WM_SETREDRAW, TRUE, 0);
  measure_rows();
}

std::vector<int> ListBoxControl::selected() const {
  std::vector<int> found;
  for (int row = 0; is_row(row); ++row)
    if (SendMessageW(window(), LB_GETSEL, static_cast<WPARAM>(row), 0) > 0) found.push_back(row);
  return found;
}

void ListBoxControl::select(const std::vector<int>& rows) {
  if (several())
    SendMessageW(window(), LB_SETSEL, FALSE, -1);
  else
    SendMessageW(window(), LB_SETCURSEL, static_cast<WPARAM>(-1), 0);
  for (const int row : rows) {
    if (!is_row(row)) continue;
    if (!several()) {
      SendMessageW(window(), LB_SETCURSEL, static_cast<WPARAM>(row), 0);
      return;
    }
    SendMessageW(window(), LB_SETSEL, TRUE, row);
  }
}

void ListBoxControl::show_row(int row) {
  if (!is_row(row)) return;
  RECT room{}, place{};
  GetClientRect(window(), &room);
  const auto top = SendMessageW(window(), LB_GETTOPINDEX, 0, 0);
  if (row < top) {
    SendMessageW(window(), LB_SETTOPINDEX, static_cast<WPARAM>(row), 0);
    return;
  }
  for (auto first = top; first < row; ++first) {
    SendMessageW(window(), LB_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&place));
    if (place.bottom <= room.bottom) return;
    SendMessageW(window(), LB_SETTOPINDEX, static_cast<WPARAM>(first + 1), 0);
  }
}

Text ListBoxControl::text() const {
  const std::vector<int> rows = selected();
  return rows.empty() ? Text() : rows_[static_cast<std::size_t>(rows.front())];
}

void ListBoxControl::set_text(TextView text) {
  const auto found = std::find(rows_.begin(), rows_.end(), text);
  select({found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin())});
}

bool ListBoxControl::uses_key(UINT key) const {
  return key == VK_RETURN || key == VK_UP || key == VK_DOWN || key == VK_LEFT || key == VK_RIGHT;
}

int ListBoxControl::row_at(LPARAM point) const {
  const auto found = SendMessageW(window(), LB_ITEMFROMPOINT, 0, point);
  return HIWORD(found) != 0 || !is_row(LOWORD(found)) ? -1 : LOWORD(found);
}

// A tap selects and takes; in a list of several it selects or clears.
void ListBoxControl::tap(int row) {
  const std::vector<int> before = selected();
  SendMessageW(window(), several() ? LB_SETCARETINDEX : LB_SETCURSEL, static_cast<WPARAM>(row), 0);
  if (several()) {
    const bool had = std::find(before.begin(), before.end(), row) != before.end();
    SendMessageW(window(), LB_SETSEL, !had, row);
  }
  if (selected() != before) tell(Event::changed);
  tell(Event::taken);
}

std::optional<LRESULT> ListBoxControl::reflected(UINT message, WPARAM wparam, LPARAM lparam) {
  const LookColors& colors = look().colors();
  switch (message) {
    case WM_CTLCOLORLISTBOX:
      return reinterpret_cast<LRESULT>(
          look().brush(IsWindowEnabled(window()) ? colors.field : colors.ground));
    case WM_DRAWITEM: {
      const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lparam);
      const int row = static_cast<int>(item.itemID);
      const bool focused = (item.itemState & ODS_FOCUS) && GetFocus() == window();
      if (is_row(row)) draw_list_row(item, rows_[static_cast<std::size_t>(row)], look(), focused);
      return TRUE;
    }
    case WM_COMMAND:
      // By a key; the pointer's is told by tap().
      if (HIWORD(wparam) == LBN_SELCHANGE) tell(Event::changed);
      return 0;
    default:
      return {};
  }
}

// A list that shows all of its rows leaves the wheel to its form.
void ListBoxControl::turn_wheel(int delta) {
  if (scroll_.is_shown()) return scroll_.turn_wheel(window(), delta);
  sink().scroll_form(-delta * 3 * look().scaled(5 * kGrid) / WHEEL_DELTA);
}

LRESULT ListBoxControl::control_message(UINT message, WPARAM wparam, LPARAM lparam) {
  const bool beside = message == WM_NCLBUTTONDOWN || message == WM_NCLBUTTONDBLCLK;
  if (beside && sink().covered()) return 0;
  return scroll_.take(window(), message, wparam, lparam);
}

LRESULT ListBoxControl::platform_message(UINT message, WPARAM wparam, LPARAM lparam) {
  const auto rest = [this](UINT id, WPARAM w, LPARAM l) { return by_default(id, w, l); };
  if (const auto answer = frame_.take(window(), message, wparam, lparam, rest)) return *answer;
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      if (sink().covered()) return 0;
      take_focus();
      SetCapture(window());
      return 0;
    case WM_MOUSEMOVE:
      return 0;
    case WM_MOUSEWHEEL:
      if (!sink().covered()) turn_wheel(GET_WHEEL_DELTA_WPARAM(wparam));
      return 0;
    case WM_LBUTTONUP: {
      if (GetCapture() != window()) return 0;
      ReleaseCapture();
      RECT room{};
      GetClientRect(window(), &room);
      const POINT at{static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
      const int row = PtInRect(&room, at) ? row_at(lparam) : -1;
      if (row >= 0 && !sink().covered()) tap(row);
      return 0;
    }
    case WM_KEYDOWN:
      if (wparam != VK_RETURN) break;
      tell(Event::taken);
      return 0;
    case WM_KEYUP:
      // The platform has changed the selection by the blank.
      if (wparam == VK_SPACE && several() && !rows_.empty()) tell(Event::taken);
      break;
    default:
      break;
  }
  return by_default(message, wparam, lparam);
}

}  // namespace orvello
