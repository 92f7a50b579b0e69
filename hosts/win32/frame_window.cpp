#include "hosts/win32/frame_window.h"

#include <algorithm>

#include "hosts/win32/painting.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_window.h"

namespace orvello {
namespace {

constexpr int kLeastWidth = 240, kLeastHeight = 240;  // design units
constexpr UINT_PTR kResizePause = 1;
constexpr UINT kResizePauseMilliseconds = 60;
constexpr UINT kDensityChanged = 0x02E0;

// Entry points that older systems lack.
template <typename Call>
Call entry_point(const wchar_t* library, const char* name) {
  const HMODULE module = GetModuleHandleW(library);
  if (!module) return nullptr;
  return reinterpret_cast<Call>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace

int monitor_dpi(HWND window) {
  if (window) {
    const auto of_window = entry_point<UINT(WINAPI*)(HWND)>(L"user32.dll", "GetDpiForWindow");
    const UINT dpi = of_window ? of_window(window) : 0;
    if (dpi > 0) return static_cast<int>(dpi);
  }
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI;
}

Rect fitted_to_screen(const Rect& place) {
  const RECT wanted = native_rect(place);
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  if (!GetMonitorInfoW(MonitorFromRect(&wanted, MONITOR_DEFAULTTONEAREST), &monitor)) return place;
  const Rect room = from_native(monitor.rcWork);
  Rect fitted = place;
  fitted.width = std::min(place.width, room.width);
  fitted.height = std::min(place.height, room.height);
  fitted.x = std::clamp(place.x, room.x, room.right() - fitted.width);
  fitted.y = std::clamp(place.y, room.y, room.bottom() - fitted.height);
  return fitted;
}

bool FrameWindow::make(const Text& window_class, const Text& title, const Rect& inside, Kind kind) {
  kind_ = kind;
  Creation creation;
  creation.window_class = wide(window_class);
  creation.title = wide(title);
  creation.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
  if (kind == Kind::fixed) creation.style &= ~static_cast<DWORD>(WS_THICKFRAME | WS_MAXIMIZEBOX);
  creation.extended_style = WS_EX_APPWINDOW;
  if (kind == Kind::whole_screen) {
    creation.style = WS_CLIPCHILDREN;
    creation.extended_style = 0;
    creation.place = {CW_USEDEFAULT, 0, CW_USEDEFAULT, 0};
    return create_own(creation) != nullptr;
  }
  RECT around = native_rect(inside);
  AdjustWindowRectEx(&around, creation.style, FALSE, creation.extended_style);
  Rect place = fitted_to_screen(from_native(around));
  if (kind == Kind::fixed) {  // with its title in reach, whatever of it does not fit
    place.width = around.right - around.left;
    place.height = around.bottom - around.top;
  }
  creation.place = native_rect(place);
  if (!create_own(creation)) return false;
  DragAcceptFiles(window(), TRUE);
  if (kind == Kind::sizable) return true;
  // A screen of a given size has it whatever the frame takes, as far as the platform goes along.
  const Rect made = client_rect(window());
  const Rect all = from_native(creation.place);
  SetWindowPos(window(), nullptr, 0, 0, all.width + inside.width - made.width,
               all.height + inside.height - made.height,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  return true;
}

Rect FrameWindow::outside(const Rect& inside) const {
  RECT around = native_rect(inside);
  AdjustWindowRectEx(&around, static_cast<DWORD>(GetWindowLongPtrW(window(), GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(window(), GWL_EXSTYLE)));
  return from_native(around);
}

void FrameWindow::set_dark_title(bool dark) {
  using SetAttribute = HRESULT(WINAPI*)(HWND, DWORD, LPCVOID, DWORD);
  constexpr DWORD kDarkTitle = 20;
  const BOOL wanted = dark;
  if (const auto set = entry_point<SetAttribute>(L"dwmapi.dll", "DwmSetWindowAttribute"))
    set(window(), kDarkTitle, &wanted, sizeof wanted);
}

void FrameWindow::limit(MINMAXINFO& limits) const {
  // A screen that was asked for may be larger than the one that there is.
  constexpr LONG kAnySize = 30000;
  if (kind_ != Kind::sizable) {
    limits.ptMaxTrackSize = {kAnySize, kAnySize};
    return;
  }
  const Win32Density& density = owner_.density();
  const Rect least = outside({0, 0, density.scaled(kLeastWidth), density.scaled(kLeastHeight)});
  const Rect room = fitted_to_screen({0, 0, kAnySize, kAnySize});
  limits.ptMinTrackSize = {std::min(least.width, room.width), std::min(least.height, room.height)};
}

bool FrameWindow::take_change(UINT id, WPARAM wparam, LPARAM lparam) {
  switch (id) {
    case WM_SIZE:
      if (wparam == SIZE_MINIMIZED) return false;
      owner_.changed_size();
      SetTimer(window(), kResizePause, kResizePauseMilliseconds, nullptr);
      return true;
    case WM_TIMER:
      KillTimer(window(), kResizePause);
      owner_.resized();
      return true;
    case kDensityChanged:
      owner_.changed_density(LOWORD(wparam), *reinterpret_cast<const RECT*>(lparam));
      return true;
    case WM_SETTINGCHANGE:
      owner_.setting_changed(wparam, lparam);
      return true;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      owner_.read_look();
      return true;
    case WM_TIMECHANGE:
      owner_.changed_clock(true);
      return true;
    case WM_ENDSESSION:
      if (wparam != 0) owner_.session_ended();
      return true;
    case WM_DROPFILES:
      owner_.dropped(reinterpret_cast<HDROP>(wparam));
      return true;
    case WM_CLOSE:
      owner_.close_wanted();
      return true;
    default:
      return false;
  }
}

LRESULT FrameWindow::message(UINT id, WPARAM wparam, LPARAM lparam) {
  if (take_change(id, wparam, lparam)) return 0;
  switch (id) {
    case WM_GETMINMAXINFO:
      limit(*reinterpret_cast<MINMAXINFO*>(lparam));
      return 0;
    case WM_POWERBROADCAST:
      // Midnight may have passed meanwhile.
      if (wparam == PBT_APMRESUMEAUTOMATIC) owner_.changed_clock(false);
      break;
    case WM_QUERYENDSESSION:
      owner_.session_ending();
      return TRUE;  // an open form is no reason to stop it: its draft is kept
    case WM_ACTIVATE:
      owner_.activated(wparam, lparam);
      break;  // which gives it the focus
    case WM_SETFOCUS:
      owner_.take_focus();
      return 0;
    case WM_SYSCOMMAND:
      // Alt alone, or F10: the menu of this window is the bar.
      if ((wparam & 0xFFF0) == SC_KEYMENU && lparam == 0) {
        owner_.take_bar_by_key();
        return 0;
      }
      break;
    case WM_SETCURSOR:
      if (!owner_.sets_cursor()) break;
      SetCursor(LoadCursorW(nullptr, reinterpret_cast<const wchar_t*>(IDC_WAIT)));
      return TRUE;
    case WM_ERASEBKGND:
      fill_native(reinterpret_cast<HDC>(wparam), client_rect(window()),
                  owner_.density().colors->field);
      return 1;
    default:
      break;
  }
  return by_default(id, wparam, lparam);
}

}  // namespace orvello
