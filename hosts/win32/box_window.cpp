#include "hosts/win32/box_window.h"

#include <algorithm>

#include "hosts/win32/form_paint.h"
#include "hosts/win32/frame_window.h"
#include "hosts/win32/painting.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

constexpr int kLeastBoxWidth = 216, kMostBoxWidth = 300;  // inside, design units
constexpr int kLeastButton = 56;                          // three of them fit the narrowest box
constexpr int kIconSide = 32;

INT_PTR CALLBACK leave_to_box(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

// Alone, since the words follow the structure without a gap.
struct BareTemplate {
  DLGTEMPLATE head{};
  WORD menu = 0, window_class = 0, title = 0;
};

}  // namespace

BoxWindow::BoxWindow(const FormLook& look, Content content)
    : look_(look), content_(std::move(content)) {}

BoxWindow::~BoxWindow() {
  const HWND box = window();
  buttons_.clear();
  if (box) DestroyWindow(box);
}

bool BoxWindow::make(HWND owner, const Rect& over) {
  BareTemplate bare;
  bare.head.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
  bare.head.dwExtendedStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;
  if (look_.right_to_left()) bare.head.dwExtendedStyle |= WS_EX_LAYOUTRTL | WS_EX_RTLREADING;
  const HWND box =
      CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &bare.head, owner, leave_to_box, 0);
  if (!box) return false;
  adopt(box);
  SetWindowTextW(box, wide(content_.caption));
  if (!make_parts()) return false;
  lay_out(over);
  return true;
}

bool BoxWindow::make_parts() {
  const HINSTANCE module = GetModuleHandleW(nullptr);
  if (content_.icon != BoxIcon::none) {
    icon_ = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_ICON, 0, 0, 0, 0,
                            window(), nullptr, module, nullptr);
    const wchar_t* name = content_.icon == BoxIcon::error
                              ? reinterpret_cast<const wchar_t*>(IDI_ERROR)
                              : reinterpret_cast<const wchar_t*>(IDI_WARNING);
    SendMessageW(icon_, STM_SETICON, reinterpret_cast<WPARAM>(LoadIconW(nullptr, name)), 0);
  }
  text_ = CreateWindowExW(0, L"STATIC", wide(content_.text),
                          WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX, 0, 0, 0, 0, window(),
                          nullptr, module, nullptr);
  for (std::size_t i = 0; i < content_.choices.size(); ++i) {
    const Choice& choice = content_.choices[i];
    const auto face =
        i == content_.by_return ? FrameButton::Face::strong : FrameButton::Face::plain;
    auto button = std::make_unique<FrameButton>(look_, face, choice.text);
    if (!button->create(window())) return false;
    button->pressed = [this, choice] { answer_ = choice.answer; };
    buttons_.push_back(std::move(button));
  }
  return text_ != nullptr;
}

int BoxWindow::button_width(const Text& text) const {
  return std::max(look_.scaled(kLeastButton),
                  measured_text(look_.font(true), text).width + 4 * look_.scaled(kGrid));
}

int BoxWindow::buttons_width() const {
  int sum = -look_.scaled(kGrid);
  for (const Choice& choice : content_.choices)
    sum += button_width(choice.text) + look_.scaled(kGrid);
  return sum;
}

Rect BoxWindow::room_on_screen(const Rect& over) const {
  RECT around{0, 0, 0, 0};
  AdjustWindowRectEx(&around, static_cast<DWORD>(GetWindowLongPtrW(window(), GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(window(), GWL_EXSTYLE)));
  constexpr int kAnySize = 30000;
  const Rect screen = fitted_to_screen({over.x, over.y, kAnySize, kAnySize});
  return {screen.x - around.left, screen.y - around.top,
          screen.width - (around.right - around.left),
          screen.height - (around.bottom - around.top)};
}

// A text that is higher than the screen scrolls.
void BoxWindow::lay_out(const Rect& over) {
  const int edge = look_.scaled(3 * kGrid), gap = look_.scaled(2 * kGrid);
  const int high = look_.scaled(kTouchHeight);
  const int icon = icon_ ? std::max(kIconSide, GetSystemMetrics(SM_CXICON)) : 0;
  const int beside = icon_ ? icon + gap : 0;
  const Rect room = room_on_screen(over);
  int inside =
      std::clamp(over.width * 3 / 4, look_.scaled(kLeastBoxWidth), look_.scaled(kMostBoxWidth));
  inside = std::min(std::max(inside - 2 * edge, buttons_width()), room.width - 2 * edge);
  const int width = std::max(1, inside - beside);
  const int wanted = std::max(icon, wrapped_height(look_.font(), content_.text, width));
  const int most = std::max(high, room.height - 2 * edge - gap - high);
  if (wanted > most) {
    DestroyWindow(text_);
    text_ = CreateWindowExW(
        0, L"EDIT", wide(content_.text),
        WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | ES_MULTILINE | ES_READONLY, 0, 0, 0, 0,
        window(), nullptr, GetModuleHandleW(nullptr), nullptr);
  }
  const int text_height = std::min(wanted, most);
  SendMessageW(text_, WM_SETFONT, reinterpret_cast<WPARAM>(look_.font()), FALSE);
  SetWindowPos(text_, nullptr, edge + beside, edge, width, text_height, SWP_NOZORDER);
  if (icon_) SetWindowPos(icon_, nullptr, edge, edge, icon, icon, SWP_NOZORDER);
  int x = edge + inside - std::min(inside, buttons_width());
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const int wide = button_width(content_.choices[i].text);
    buttons_[i]->put({x, edge + text_height + gap, wide, high}, true);
    x += wide + look_.scaled(kGrid);
  }
  const Rect client{0, 0, inside + 2 * edge, 2 * edge + text_height + gap + high};
  const Rect place{over.center().x - client.width / 2, over.center().y - client.height / 2,
                   client.width, client.height};
  RECT around = native_rect(place);
  AdjustWindowRectEx(&around, static_cast<DWORD>(GetWindowLongPtrW(window(), GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(window(), GWL_EXSTYLE)));
  const Rect fitted = fitted_to_screen(from_native(around));
  SetWindowPos(window(), nullptr, fitted.x, fitted.y, fitted.width, fitted.height, SWP_NOZORDER);
}

void BoxWindow::show() {
  ShowWindow(window(), SW_SHOW);
  SetFocus(buttons_[content_.by_return]->window());
}

void BoxWindow::step(bool backwards) {
  std::vector<HWND> stops;
  if (GetWindowLongPtrW(text_, GWL_STYLE) & WS_TABSTOP) stops.push_back(text_);
  for (const auto& button : buttons_) stops.push_back(button->window());
  const auto at = std::find(stops.begin(), stops.end(), GetFocus());
  const std::size_t count = stops.size();
  std::size_t next = at == stops.end() ? 0 : static_cast<std::size_t>(at - stops.begin());
  if (at != stops.end()) next = (next + (backwards ? count - 1 : 1)) % count;
  SetFocus(stops[next]);
}

bool BoxWindow::take_key(const MSG& message) {
  if (message.message != WM_KEYDOWN) return false;
  const bool in_text = GetFocus() == text_;
  switch (message.wParam) {
    case VK_ESCAPE:
      leave();
      return true;
    case VK_TAB:
      step(GetKeyState(VK_SHIFT) < 0);
      return true;
    case VK_LEFT:
    case VK_RIGHT:
      if (in_text) return false;
      step((message.wParam == VK_LEFT) != look_.right_to_left());
      return true;
    case VK_RETURN:
      // A button that has the keyboard presses itself.
      if (!in_text && IsChild(window(), GetFocus())) return false;
      answer_ = content_.choices[content_.by_return].answer;
      return true;
    default:
      return false;
  }
}

LRESULT BoxWindow::message(UINT id, WPARAM wparam, LPARAM lparam) {
  switch (id) {
    case WM_CLOSE:
      leave();
      return 0;
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC: {
      const auto dc = reinterpret_cast<HDC>(wparam);
      SetTextColor(dc, color_ref(look_.colors().text));
      SetBkColor(dc, color_ref(look_.colors().ground));
      return reinterpret_cast<LRESULT>(look_.brush(look_.colors().ground));
    }
    case WM_ERASEBKGND:
      fill_native(reinterpret_cast<HDC>(wparam), client_rect(window()), look_.colors().ground);
      return 1;
    default:
      return by_default(id, wparam, lparam);
  }
}

}  // namespace orvello
