// The one way in which the platform calls the program: every window of the host and every control
// that it changes is a NativeWindow. What is thrown in a message goes to the fault handler and
// never through the platform.
#pragma once

#include <windows.h>

#include <exception>
#include <functional>

namespace orvello {

// What hears of a thrown fault, on the user-interface thread; it must not throw. One a process: the
// platform calls windows without telling for whom.
using FaultHandler = std::function<void(std::exception_ptr)>;
FaultHandler set_fault_handler(FaultHandler handler);  // answers the one before
void report_fault(std::exception_ptr fault) noexcept;

// Calls `action`; false when it threw, which has been reported.
template <typename Action>
bool guarded(Action action) noexcept {
  try {
    action();
    return true;
  } catch (...) {
    report_fault(std::current_exception());
    return false;
  }
}

class NativeWindow {
 public:
  NativeWindow() = default;
  virtual ~NativeWindow();  // destroys a window of its own, gives an adopted one its procedure back
  NativeWindow(const NativeWindow&) = delete;
  NativeWindow& operator=(const NativeWindow&) = delete;

  HWND window() const { return window_; }
  // Whose window it is; null: nobody's here.
  static NativeWindow* of(HWND window);

 protected:
  struct Creation {
    const wchar_t* window_class = nullptr;
    const wchar_t* title = L"";
    DWORD style = 0, extended_style = 0;
    RECT place{CW_USEDEFAULT, 0, CW_USEDEFAULT, 0};  // edges; as the platform likes unless set
    HWND parent = nullptr;
    int id = 0;  // of a child
  };
  // A window of a class that this registers once (`class_style` counts then), or null with
  // GetLastError(). Messages arrive at message() from WM_NCCREATE on.
  HWND create_own(const Creation& creation, UINT class_style = 0);
  // A control of the platform's, whose messages come here first.
  HWND create_control(const Creation& creation);
  void adopt(HWND window);

  // The answer to a message; what is not handled goes to by_default().
  virtual LRESULT message(UINT id, WPARAM wparam, LPARAM lparam) {
    return by_default(id, wparam, lparam);
  }
  LRESULT by_default(UINT id, WPARAM wparam, LPARAM lparam);

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT id, WPARAM wparam, LPARAM lparam);
  static LRESULT dispatch(NativeWindow& self, UINT id, WPARAM wparam, LPARAM lparam) noexcept;

  HWND window_ = nullptr;
  WNDPROC before_ = nullptr;  // of an adopted one
};

}  // namespace orvello
