// A main window and the person in front of it, whose acts are the messages that the platform sends.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "hosts/win32/native_window.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_window.h"
#include "tests/contract/message_log.h"

namespace orvello::test {

// Does something while a loop of the platform's or a box runs.
class Soon : public NativeWindow {
 public:
  Soon() {
    Creation creation;
    creation.window_class = L"OrvelloTestSoon";
    creation.parent = HWND_MESSAGE;
    create_own(creation);
  }
  void in(UINT milliseconds, std::function<void()> action) {
    actions_[++last_] = std::move(action);
    SetTimer(window(), last_, milliseconds, nullptr);
  }

 protected:
  LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) override {
    if (id != WM_TIMER) return by_default(id, wparam, lparam);
    KillTimer(window(), wparam);
    if (auto action = actions_.extract(wparam)) action.mapped()();
    return 0;
  }

 private:
  std::map<UINT_PTR, std::function<void()>> actions_;
  UINT_PTR last_ = 0;
};

inline Win32WindowOptions small_screen() {
  Win32WindowOptions options;
  options.screen = Size{240, 320};
  options.dpi = 96;
  options.fixed_look = true;
  return options;
}

// Until nothing is due for some milliseconds.
inline void settle(Win32Window& window, DWORD milliseconds = 30) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  do {
    window.loop().deliver();
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
  } while (GetTickCount64() < end);
  window.loop().deliver();
}

inline LPARAM packed_point(Point point) { return MAKELPARAM(point.x, point.y); }

inline void click(HWND window, Point at) {
  SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, packed_point(at));
  SendMessageW(window, WM_LBUTTONUP, 0, packed_point(at));
}

// Keys that are held count by the thread's own state.
class HeldKeys {
 public:
  explicit HeldKeys(int held) {
    GetKeyboardState(before_);
    BYTE keys[256] = {};
    if (held & kControlHeld) keys[VK_CONTROL] = 0x80;
    if (held & kShiftHeld) keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys);
  }
  ~HeldKeys() { SetKeyboardState(before_); }

 private:
  BYTE before_[256] = {};
};

// The menu that stands open, and null without one.
inline HMENU open_menu() {
  const HWND window = FindWindowW(L"#32768", nullptr);
  constexpr UINT kGetMenu = 0x01E1;
  if (!window || !IsWindowVisible(window)) return nullptr;
  return reinterpret_cast<HMENU>(SendMessageW(window, kGetMenu, 0, 0));
}

inline std::vector<Text> menu_texts(HMENU menu) {
  std::vector<Text> texts;
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    wchar_t text[200] = {};
    GetMenuStringW(menu, static_cast<UINT>(i), text, 200, MF_BYPOSITION);
    Text shown = from_wide(text);
    for (std::size_t at = 0; (at = shown.find(u"&&", at)) != Text::npos; ++at) shown.erase(at, 1);
    texts.push_back(shown);
  }
  return texts;
}

// Goes to an item of the open menu by the keys and takes it; false: it is not there.
inline bool choose_in_menu(HMENU menu, std::uint32_t command) {
  int steps = 0;
  bool found = false;
  for (int i = 0; i < GetMenuItemCount(menu) && !found; ++i) {
    const UINT id = GetMenuItemID(menu, i);
    if (id != 0) ++steps;
    found = id == command && command != 0;
  }
  for (int i = 0; found && i < steps; ++i) PostMessageW(GetFocus(), WM_KEYDOWN, VK_DOWN, 0);
  if (found) PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
  return found;
}

// The same in the next menu; an item that is off, or not there, leaves the menu open, which is
// closed then. `seen` is told the texts.
inline void choose_in_next_menu(Soon& person, std::uint32_t command,
                                const std::function<void(std::vector<Text>)>& seen = {}) {
  person.in(60, [&person, command, seen] {
    const HMENU menu = open_menu();
    if (seen) seen(menu_texts(menu));
    choose_in_menu(menu, command);
    person.in(60, [] { EndMenu(); });
  });
}

}  // namespace orvello::test
