// The main window's contract on the platform's window.
#include "hosts/win32/hover_window.h"
#include "tests/contract/main_window_contract.h"
#include "tests/contract/win32/native_objects.h"
#include "tests/contract/win32/window_bench.h"

namespace orvello {
namespace {

using test::packed_point;

struct NativeWindowDevice : WindowDevice {
  MainWindow& window() override { return port; }
  void deliver() override { test::settle(port); }
  void press(Point p) override { pointer(WM_LBUTTONDOWN, MK_LBUTTON, p); }
  void drag(Point p) override { pointer(WM_MOUSEMOVE, MK_LBUTTON, p); }
  void release(Point p) override { pointer(WM_LBUTTONUP, 0, p); }
  void hover(Point p) override { pointer(WM_MOUSEMOVE, 0, p); }
  void key(std::uint32_t code, int held) override {
    const test::HeldKeys keys(held);
    SendMessageW(port.view(), WM_KEYDOWN, code, 0);
    SendMessageW(port.view(), WM_KEYUP, code, 0);
  }
  void press_other_button(Point p) override {
    pointer(WM_RBUTTONDOWN, MK_RBUTTON, p);
    pointer(WM_RBUTTONUP, 0, p);
  }
  void wheel(Point p, int notches, bool sideways) override {
    POINT at{p.x, p.y};
    ClientToScreen(port.view(), &at);
    // In two parts: a touchpad turns by less than a notch.
    const int turned = WHEEL_DELTA * notches;
    for (const int part : {turned / 4, turned - turned / 4})
      SendMessageW(port.view(), sideways ? WM_MOUSEHWHEEL : WM_MOUSEWHEEL,
                   MAKEWPARAM(0, static_cast<WORD>(part)), MAKELPARAM(at.x, at.y));
  }
  void choose_in_menu(std::uint32_t command) override {
    test::choose_in_next_menu(person, command);
  }
  void close() override { SendMessageW(port.frame(), WM_CLOSE, 0, 0); }
  void turn(Size screen) override {
    RECT outside{}, inside{};
    GetWindowRect(port.frame(), &outside);
    GetClientRect(port.frame(), &inside);
    SetWindowPos(
        port.frame(), nullptr, 0, 0, outside.right - outside.left - inside.right + screen.width,
        outside.bottom - outside.top - inside.bottom + screen.height, SWP_NOMOVE | SWP_NOZORDER);
    test::settle(port, 120);  // the window waits for the last of a row
  }
  void let_timer_fire(int) override { test::settle(port, 60); }
  bool waits() override {
    return GetCursor() == LoadCursorW(nullptr, reinterpret_cast<const wchar_t*>(IDC_WAIT));
  }
  std::optional<Text> label() override { return shown(false); }
  std::optional<Text> notice() override { return shown(true); }

  std::optional<Text> shown(bool notice) {
    const HWND one = notice ? port.notice_window() : port.label_window();
    if (!one || !IsWindowVisible(one)) return std::nullopt;
    wchar_t text[200] = {};
    GetWindowTextW(one, text, 200);
    return from_wide(text);
  }
  void pointer(UINT id, WPARAM keys, Point p) {
    SendMessageW(port.view(), id, keys, packed_point(p));
  }
  Win32Window port{test::small_screen()};
  test::Soon person;
};
INSTANTIATE_TEST_SUITE_P(Win32, MainWindowContract,
                         ::testing::Values(WindowCase{
                             "win32", [] { return std::make_unique<NativeWindowDevice>(); }}));

}  // namespace
}  // namespace orvello
