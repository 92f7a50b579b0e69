#include "hosts/win32/native_window.h"

#include <utility>

namespace orvello {
namespace {

FaultHandler& current_handler() {
  static FaultHandler handler;
  return handler;
}

// The window's own word leads back to the object: asking for it is cheap, and each message does.
void set_object(HWND window, NativeWindow* self) {
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
}

NativeWindow* object_in(HWND window) {
  return reinterpret_cast<NativeWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

HINSTANCE program_module() { return GetModuleHandleW(nullptr); }

}  // namespace

FaultHandler set_fault_handler(FaultHandler handler) {
  return std::exchange(current_handler(), std::move(handler));
}

void report_fault(std::exception_ptr fault) noexcept {
  if (current_handler())
    current_handler()(fault);
  else
    std::terminate();
}

NativeWindow::~NativeWindow() {
  const HWND window = std::exchange(window_, nullptr);
  if (!window) return;
  set_object(window, nullptr);
  if (before_)
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before_));
  else
    DestroyWindow(window);
}

HWND NativeWindow::create_own(const Creation& creation, UINT class_style) {
  WNDCLASSEXW known{};
  known.cbSize = sizeof known;
  if (!GetClassInfoExW(program_module(), creation.window_class, &known)) {
    known = {};
    known.cbSize = sizeof known;
    known.style = class_style;
    known.lpfnWndProc = procedure;
    known.hInstance = program_module();
    known.hCursor = LoadCursorW(nullptr, reinterpret_cast<const wchar_t*>(IDC_ARROW));
    known.hIcon = LoadIconW(program_module(), MAKEINTRESOURCEW(1));
    known.lpszClassName = creation.window_class;
    if (!RegisterClassExW(&known)) return nullptr;
  }
  const RECT& place = creation.place;
  const bool own_place = place.left != CW_USEDEFAULT;
  return CreateWindowExW(
      creation.extended_style, creation.window_class, creation.title, creation.style, place.left,
      place.top, own_place ? place.right - place.left : CW_USEDEFAULT,
      own_place ? place.bottom - place.top : 0, creation.parent,
      (creation.style & WS_CHILD) != 0 ? reinterpret_cast<HMENU>(static_cast<INT_PTR>(creation.id))
                                       : nullptr,
      program_module(), this);
}

HWND NativeWindow::create_control(const Creation& creation) {
  const RECT& place = creation.place;
  const HWND control = CreateWindowExW(
      creation.extended_style, creation.window_class, creation.title, creation.style, place.left,
      place.top, place.right - place.left, place.bottom - place.top, creation.parent,
      reinterpret_cast<HMENU>(static_cast<INT_PTR>(creation.id)), program_module(), nullptr);
  if (control) adopt(control);
  return control;
}

void NativeWindow::adopt(HWND window) {
  window_ = window;
  set_object(window, this);
  before_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

NativeWindow* NativeWindow::of(HWND window) {
  const bool ours =
      GetWindowLongPtrW(window, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(procedure);
  return ours ? object_in(window) : nullptr;
}

LRESULT NativeWindow::by_default(UINT id, WPARAM wparam, LPARAM lparam) {
  return before_ ? CallWindowProcW(before_, window_, id, wparam, lparam)
                 : DefWindowProcW(window_, id, wparam, lparam);
}

LRESULT NativeWindow::dispatch(NativeWindow& self, UINT id, WPARAM wparam, LPARAM lparam) noexcept {
  try {
    return self.message(id, wparam, lparam);
  } catch (...) {
    report_fault(std::current_exception());
    return 0;
  }
}

LRESULT CALLBACK NativeWindow::procedure(HWND window, UINT id, WPARAM wparam, LPARAM lparam) {
  if (id == WM_NCCREATE) {
    auto* creation = reinterpret_cast<CREATESTRUCTW*>(lparam);
    auto* self = static_cast<NativeWindow*>(creation->lpCreateParams);
    self->window_ = window;
    set_object(window, self);
  }
  NativeWindow* self = object_in(window);
  if (!self) return DefWindowProcW(window, id, wparam, lparam);
  if (id != WM_NCDESTROY) return dispatch(*self, id, wparam, lparam);
  // The last message: the object may outlive the window, and knows it by having none.
  const LRESULT answer = dispatch(*self, id, wparam, lparam);
  set_object(window, nullptr);
  self->window_ = nullptr;
  return answer;
}

}  // namespace orvello
