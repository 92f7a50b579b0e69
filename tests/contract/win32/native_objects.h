// What this process holds of the platform, to tell a leak by.
#pragma once

#include <windows.h>

namespace orvello {

// Some platforms count, others let each number be asked for.
inline int drawing_objects() {
  int count = static_cast<int>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
  if (count > 0) return count;
  for (UINT_PTR number = 0; number < 0x10000; ++number)
    if (GetObjectType(reinterpret_cast<HGDIOBJ>(number)) != 0) ++count;
  return count;
}

// Top-level, message-only and child windows of this thread, seen or not.
inline int thread_windows() {
  int count = 0;
  const auto add = [](HWND window, LPARAM sum) -> BOOL {
    const auto child = [](HWND, LPARAM one) -> BOOL {
      return ++*reinterpret_cast<int*>(one), TRUE;
    };
    ++*reinterpret_cast<int*>(sum);
    EnumChildWindows(window, child, sum);
    return TRUE;
  };
  EnumThreadWindows(GetCurrentThreadId(), add, reinterpret_cast<LPARAM>(&count));
  for (HWND one = FindWindowExW(HWND_MESSAGE, nullptr, nullptr, nullptr); one;
       one = FindWindowExW(HWND_MESSAGE, one, nullptr, nullptr))
    if (GetWindowThreadProcessId(one, nullptr) == GetCurrentThreadId()) ++count;
  return count;
}

}  // namespace orvello
