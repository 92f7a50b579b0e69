// Input methods, and a handheld's shell played by functions of the test's own: no handheld was seen
// by this.
#include <string>

#include "hosts/win32/input_panel.h"
#include "tests/contract/input_methods_contract.h"
#include "tests/contract/win32/window_bench.h"

namespace orvello {
namespace {

INSTANTIATE_TEST_SUITE_P(Win32, InputMethodsContract,
                         ::testing::Values(InputCase{
                             "desktop", [] { return std::make_unique<Win32InputPanel>(); }}));

// What the shell was asked for. Its functions are plain ones, so there is one at a time.
struct PlayedShell {
  static inline std::string heard;
  static inline RECT panel{0, 240, 240, 320};
  static inline DWORD panel_flags = 0;

  struct BarRequest {
    DWORD size;
    HWND parent;
    DWORD flags;
    UINT tool_bar;
    HINSTANCE resources;
    int bitmap, images;
    HWND made;
    COLORREF background;
  };
  static BOOL WINAPI create_menu_bar(BarRequest* request) {
    if (request->size != sizeof(BarRequest) || request->flags != 1) return FALSE;
    request->made = request->parent;
    return TRUE;
  }
  static BOOL WINAPI prefer(HWND, int wish) {
    heard += "prefer " + std::to_string(wish) + " ";
    return TRUE;
  }
  static BOOL WINAPI show(DWORD on) {
    heard += "show " + std::to_string(on) + " ";
    return TRUE;
  }
  static BOOL WINAPI info(DWORD* out) {
    out[1] = panel_flags;
    auto* rects = reinterpret_cast<RECT*>(out + 2);
    rects[0] = {0, 0, 240, 240};
    rects[1] = panel;
    return TRUE;
  }
  static void* look_up(const wchar_t*, const char* name) {
    const std::string wanted = name;
    if (wanted == "SHCreateMenuBar") return reinterpret_cast<void*>(create_menu_bar);
    if (wanted == "SHSipPreference") return reinterpret_cast<void*>(prefer);
    if (wanted == "SipShowIM") return reinterpret_cast<void*>(show);
    if (wanted == "SipGetInfo") return reinterpret_cast<void*>(info);
    return nullptr;
  }
};

TEST(Handheld, RaisesThePanelWhereItCoversNothingThatIsWritten) {
  PlayedShell::heard.clear();
  Win32InputPanel input(Handheld(PlayedShell::look_up, {5, 2}));
  EXPECT_EQ(input.raise_input_panel({0, 200, 240, 20}), PanelAnswer::raised);
  EXPECT_EQ(PlayedShell::heard, "prefer 0 ");
  PlayedShell::heard.clear();
  EXPECT_EQ(input.raise_input_panel({0, 230, 240, 20}), PanelAnswer::no_room);
  EXPECT_EQ(PlayedShell::heard, "prefer 1 show 0 ") << "one that is up goes down";
  EXPECT_FALSE(input.load_library(u"no such library.dll"));
}

TEST(Handheld, IsAskedOnlyWhereTheSystemIsOne) {
  const Handheld played(PlayedShell::look_up, {5, 2}),
      bare([](auto, auto) { return nullptr; }, {5, 2});
  const Handheld desktop;
  const test::Soon window;
  EXPECT_EQ(played.soft_key(VK_F2), 1);
  EXPECT_EQ(desktop.soft_key(VK_F2), -1);
  EXPECT_EQ(desktop.version().major, 0);
  for (const Handheld* one : {&bare, &desktop}) {
    EXPECT_EQ(one->create_menu_bar(window.window()), nullptr);
    EXPECT_FALSE(one->fill_screen(window.window()));
    EXPECT_EQ(one->panel_place(), std::nullopt);
  }
  EXPECT_EQ(played.create_menu_bar(window.window()), window.window());
  PlayedShell::panel_flags = 1;
  EXPECT_EQ(played.visible_desktop(), (Rect{0, 0, 240, 240}));
  PlayedShell::panel_flags = 0;
  EXPECT_EQ(played.visible_desktop(), std::nullopt);
}

}  // namespace
}  // namespace orvello
