#include "hosts/win32/bar_window.h"

#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>
#include <utility>

#include "draw/mirrored.h"
#include "draw/readable.h"
#include "hosts/win32/form_look.h"
#include "hosts/win32/painting.h"
#include "hosts/win32/popup_menu.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_surface.h"
#include "hosts/win32/win32_window.h"
#include "ports/messages.h"

namespace orvello {
namespace {

using Kind = MenuBarButton::Kind;

}  // namespace

BarWindow::BarWindow(Win32Window& owner, const MenuBarContent& content)
    : owner_(owner), strip_(content.strip) {
  for (const MenuBarButton& button : content.buttons) {
    buttons_.emplace_back();
    buttons_.back().content = button;
  }
}

BarWindow::~BarWindow() {
  if (hints_ && IsWindow(hints_)) DestroyWindow(hints_);
}

bool BarWindow::make(HWND parent, int height) {
  INITCOMMONCONTROLSEX wanted{sizeof wanted, ICC_BAR_CLASSES};
  InitCommonControlsEx(&wanted);
  const Rect whole = client_rect(parent);
  Creation creation;
  creation.window_class = L"OrvelloMenuBar";
  creation.style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
  creation.place = native_rect({0, whole.height - height, whole.width, height});
  creation.parent = parent;
  if (!create_own(creation)) return false;
  hints_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                           WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, window(), nullptr,
                           GetModuleHandleW(nullptr), nullptr);
  lay_out();
  return true;
}

BarWindow::Button* BarWindow::button_of(std::uint32_t command) {
  for (Button& button : buttons_)
    if (button.content.kind != Kind::separator && button.content.command == command) return &button;
  return nullptr;
}

std::vector<std::size_t> BarWindow::shown() const {
  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < buttons_.size(); ++i)
    if (buttons_[i].content.kind != Kind::separator) found.push_back(i);
  return found;
}

void BarWindow::lay_out() {
  if (!window()) return;
  std::vector<BarButtonShape> shapes;
  for (const Button& button : buttons_)
    shapes.push_back(
        {button.content.kind == Kind::separator, shows_image(button.content), button.highlighted});
  const Rect whole = client_rect(window());
  Win32Canvas measuring(owner_.fonts(), {1, 1});
  const auto width = [&](std::size_t i, int height) {
    return measuring.measure(buttons_[i].content.text, {height, 400, false}).width;
  };
  const BarLayout layout =
      lay_out_bar(shapes, owner_.form_density(), {whole.width, whole.height}, width);
  for (std::size_t i = 0; i < buttons_.size(); ++i) buttons_[i].place = layout.places[i];
  text_height_ = layout.text_height;
  take_pictures();
  tell_hints();
  InvalidateRect(window(), nullptr, FALSE);
}

// Made for light paper: on a dark bar their dark parts are lighter.
void BarWindow::take_pictures() {
  const Color ground = owner_.form_density().colors->ground;
  seen_ = visible_on(ground, strip_);
  grey_ = seen_;
  constexpr int kGreyShare = 102;  // of 256 parts
  for (Color& pixel : grey_.pixels)
    if (pixel != kMagenta) pixel = mixed(ground, pixel, kGreyShare);
}

Rect BarWindow::place_on_window(std::size_t button) const {
  const Rect& place = buttons_[button].place;
  return owner_.right_to_left() ? mirrored(place, client_rect(window()).width) : place;
}

Text BarWindow::told_name(const Button& button) const {
  // An image button keeps its text unseen and goes on being called by its hint.
  if (!shows_image(button.content)) return button.content.text;
  return button.highlighted ? button.hint : button.content.hint;
}

void BarWindow::tell_hints() {
  if (!hints_) return;
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    if (!shows_image(buttons_[i].content)) continue;
    const Text name = told_name(buttons_[i]);
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_SUBCLASS | (owner_.right_to_left() ? UINT{TTF_RTLREADING} : 0);
    tool.hwnd = window();
    tool.uId = i + 1;
    tool.rect = native_rect(place_on_window(i));
    tool.lpszText = const_cast<wchar_t*>(wide(name));
    SendMessageW(hints_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    SendMessageW(hints_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  }
}

int BarWindow::button_at(Point point) const {
  if (owner_.right_to_left()) point = mirrored(point, client_rect(window()).width);
  for (std::size_t i = 0; i < buttons_.size(); ++i)
    if (buttons_[i].enabled && buttons_[i].place.contains(point)) return static_cast<int>(i);
  return -1;
}

void BarWindow::hover(int button) {
  if (button == std::exchange(hovered_, button)) return;
  InvalidateRect(window(), nullptr, FALSE);
  if (leaving_told_ || button < 0) return;
  TRACKMOUSEEVENT leave{sizeof leave, TME_LEAVE, window(), 0};
  leaving_told_ = TrackMouseEvent(&leave) != FALSE;
}

// A tap leaves the keyboard with the calendar.
bool BarWindow::pointer(UINT id, LPARAM lparam) {
  switch (id) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      pressed_ = button_at(pointer_of(lparam));
      if (pressed_ >= 0) SetCapture(window());
      break;
    case WM_LBUTTONUP: {
      const int pressed = std::exchange(pressed_, -1);
      if (GetCapture() == window()) ReleaseCapture();
      InvalidateRect(window(), nullptr, FALSE);
      if (pressed >= 0 && pressed == button_at(pointer_of(lparam))) activate(pressed);
      return true;
    }
    case WM_MOUSEMOVE:
      hover(button_at(pointer_of(lparam)));
      return true;
    case WM_MOUSELEAVE:
      leaving_told_ = false;
      hover(-1);
      return true;
    case WM_CAPTURECHANGED:
      pressed_ = -1;
      break;
    default:
      return false;
  }
  InvalidateRect(window(), nullptr, FALSE);
  return true;
}

// The letter of the key that opens a menu would choose in it, and close it; who opens one by a key
// goes on by keys, from its first row.
void BarWindow::begin_menu_by_key() {
  MSG letter;
  while (PeekMessageW(&letter, window(), WM_CHAR, WM_DEADCHAR, PM_REMOVE)) continue;
  PostMessageW(window(), WM_KEYDOWN, VK_DOWN, 0);
}

// Posted, as a command may destroy the bar and this button with it.
void BarWindow::activate(int button, bool by_key) {
  const auto index = static_cast<std::size_t>(button);
  std::uint32_t command = buttons_[index].content.command;
  if (drops_menu(buttons_[index].content)) {
    RECT place = native_rect(place_on_window(index));
    MapWindowPoints(window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
    open_ = button;
    InvalidateRect(window(), nullptr, FALSE);
    const std::vector<MenuItem> items = buttons_[index].content.menu;
    if (by_key) begin_menu_by_key();
    command = run_popup_menu_above(owner_, items, place);
    if (!window()) return;
    open_ = -1;
    InvalidateRect(window(), nullptr, FALSE);
  }
  if (command) owner_.post({kMessageCommand, command, {}, 0});
}

void BarWindow::press_text_button(int number) {
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const Button& button = buttons_[i];
    if (button.content.kind == Kind::separator || shows_image(button.content)) continue;
    if (number-- > 0) continue;
    if (button.enabled) activate(static_cast<int>(i), true);
    return;
  }
}

void BarWindow::focus_on(int button) {
  focused_ = button;
  InvalidateRect(window(), nullptr, FALSE);
  if (GetFocus() != window()) SetFocus(window());
  AccessibleWindow::tell(window(), EVENT_OBJECT_FOCUS, accessible_focus());
}

bool BarWindow::take_tab(bool backwards) {
  focused_ = -1;
  return step(backwards);
}

// To the next button that is on; false behind the last one.
bool BarWindow::step(bool backwards) {
  const int count = static_cast<int>(buttons_.size());
  int at = focused_ < 0 && backwards ? count : focused_;
  for (at += backwards ? -1 : 1; at >= 0 && at < count; at += backwards ? -1 : 1) {
    const Button& button = buttons_[static_cast<std::size_t>(at)];
    if (button.content.kind == Kind::separator || !button.enabled) continue;
    focus_on(at);
    return true;
  }
  return false;
}

bool BarWindow::key(WPARAM code) {
  const bool back = GetKeyState(VK_SHIFT) < 0;
  const WPARAM before = owner_.right_to_left() ? VK_RIGHT : VK_LEFT;
  const WPARAM behind = owner_.right_to_left() ? VK_LEFT : VK_RIGHT;
  if (code == VK_TAB) {
    if (!step(back) && !owner_.tab_out(window(), back)) take_tab(back);
  } else if (code == before || code == behind) {
    if (!step(code == before)) take_tab(code == before);
  } else if (code == VK_ESCAPE || code == VK_MENU || code == VK_F10) {
    owner_.tab_out(window(), false);
  } else if (focused_ >= 0) {
    const Button& button = buttons_[static_cast<std::size_t>(focused_)];
    const bool opens = drops_menu(button.content) && (code == VK_UP || code == VK_DOWN);
    if (code != VK_RETURN && code != VK_SPACE && !opens) return false;
    if (button.enabled) activate(focused_, true);
  } else {
    return false;
  }
  return true;
}

LRESULT BarWindow::message(UINT id, WPARAM wparam, LPARAM lparam) {
  const std::shared_ptr<BarWindow> kept = weak_from_this().lock();  // a command may let it go
  if (pointer(id, lparam)) return 0;
  switch (id) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      if (key(wparam)) return 0;
      break;
    case WM_KILLFOCUS:
      focused_ = -1;
      InvalidateRect(window(), nullptr, FALSE);
      return 0;
    case WM_SIZE:
      lay_out();
      return 0;
    case WM_PAINT:
      paint(PaintTurn(window()).dc());
      return 0;
    case WM_PRINTCLIENT:
      paint(reinterpret_cast<HDC>(wparam));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_GETOBJECT:
      if (const auto answer = accessible_.answer(window(), wparam, lparam)) return *answer;
      break;
    default:
      break;
  }
  return by_default(id, wparam, lparam);
}

}  // namespace orvello
