// Input methods, and a handheld's shell played by functions of the test's own: no handheld was seen
// by this.
#include <string>

#include "hosts/win32/input_panel.h"
#include "hosts/win32/win32_menu_bar.h"
#include "tests/contract/input_methods_contract.h"
#include "tests/contract/win32/window_bench.h"

namespace orvello {
namespace {

INSTANTIATE_TEST_SUITE_P(Win32, InputMethodsContract,
                         ::testing::Values(InputCase{
                             "desktop", [] { return std::make_unique<Win32InputPanel>(); }}));

// What the shell was asked for; it may lack a function, or refuse everything. Its functions are
// plain ones, so there is one at a time.
struct PlayedShell {
  static inline std::string heard;
  static inline RECT panel{0, 240, 240, 320};
  static inline DWORD panel_flags = 0;
  static inline const void* kept = nullptr;  // the window's state between activations
  static inline std::string missing;
  static inline bool refuses = false;

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
    if (request->size != sizeof(BarRequest) || request->flags != 1 || refuses) return FALSE;
    heard += "bar ";
    request->made = CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 290, 240, 30, request->parent,
                                    nullptr, nullptr, nullptr);
    SetWindowLongPtrW(request->made, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(answer_as_bar));
    return TRUE;
  }
  static LRESULT CALLBACK answer_as_bar(HWND window, UINT id, WPARAM wparam, LPARAM lparam) {
    if (id == WM_USER + 403 && lparam == MAKELPARAM(3, 3))
      heard += "key " + std::to_string(wparam) + " ";
    return DefWindowProcW(window, id, wparam, lparam);
  }
  struct Activation {
    DWORD size;
    HWND last_focus;
    UINT flags;
  };
  static BOOL WINAPI activate(HWND window, WPARAM, LPARAM, Activation* state, DWORD flags) {
    if (flags == 0 && state->size == sizeof(Activation) && IsWindow(window)) heard += "activate ";
    kept = state;
    return !refuses;
  }
  static BOOL WINAPI setting(HWND, WPARAM wparam, LPARAM, Activation* state) {
    heard += state == kept ? "setting " + std::to_string(wparam) + " " : "another state ";
    return !refuses;
  }
  struct DialogAsked {
    DWORD mask;
    HWND dialog;
    DWORD flags;
  };
  static BOOL WINAPI init_dialog(DialogAsked* asked) {
    return !refuses && asked->mask == 1 && asked->flags == 5 && IsWindow(asked->dialog);
  }
  static BOOL WINAPI prefer(HWND, int wish) {
    heard += "prefer " + std::to_string(wish) + " ";
    return !refuses;
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
    if (wanted == missing) return nullptr;
    if (wanted == "SHCreateMenuBar") return reinterpret_cast<void*>(create_menu_bar);
    if (wanted == "SHInitDialog") return reinterpret_cast<void*>(init_dialog);
    if (wanted == "SHHandleWMActivate") return reinterpret_cast<void*>(activate);
    if (wanted == "SHHandleWMSettingChange") return reinterpret_cast<void*>(setting);
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
  PlayedShell::heard.clear();
  PlayedShell::refuses = true;
  input.raise_input_panel({0, 200, 240, 20});
  EXPECT_EQ(PlayedShell::heard, "prefer 0 show 1 ") << "by the other way";
  PlayedShell::refuses = false;
}

// A window and its bar as the shell has them; what it lacks or refuses is done without.
std::string talk_to_shell() {
  constexpr WPARAM kPanelChanged = 224;
  PlayedShell::heard.clear();
  auto options = test::small_screen();
  options.handheld = Handheld(PlayedShell::look_up, {5, 2});
  Recorder recorder;
  Win32Window window(options);
  Win32MenuBar port(window);
  EXPECT_TRUE(window.create(u"Orvello", u"Orvello", 320, recorder));
  MenuBarContent content;
  content.buttons = {{MenuBarButton::Kind::text, 1, u"New", -1, {}, {}},
                     {MenuBarButton::Kind::text, 2, u"Exit", -1, {}, {}}};
  content.height = 30;
  EXPECT_TRUE(port.create(content));
  window.show();
  test::settle(window);
  recorder.messages.clear();
  PlayedShell::heard += "| ";
  SendMessageW(window.frame(), WM_ACTIVATE, WA_ACTIVE, 0);
  SendMessageW(window.frame(), WM_SETTINGCHANGE, kPanelChanged, 0);
  EXPECT_EQ(recorder.count(kMessageSettingChange), 1);
  PostMessageW(window.view(), WM_KEYDOWN, VK_F2, 0);
  test::settle(window);
  EXPECT_EQ(recorder.count(kMessageCommand), 1) << PlayedShell::missing;
  EXPECT_EQ(recorder.of(kMessageCommand).at(0).wparam, 2u);
  port.destroy();
  EXPECT_TRUE(IsWindow(window.frame()));
  return PlayedShell::heard;
}

TEST(Handheld, WindowAndBarLiveWithTheShellOrWithoutIt) {
  const std::string heard = talk_to_shell();
  EXPECT_NE(heard.find("bar key 112 key 113 "), std::string::npos) << heard;
  EXPECT_NE(heard.find("| activate setting 224 "), std::string::npos) << heard;
  PlayedShell::refuses = true;
  EXPECT_EQ(talk_to_shell().find("key"), std::string::npos);
  PlayedShell::refuses = false;
  for (const char* name : {"SHCreateMenuBar", "SHHandleWMActivate", "SHHandleWMSettingChange"}) {
    PlayedShell::missing = name;
    talk_to_shell();
  }
  PlayedShell::missing.clear();
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
  EXPECT_TRUE(played.fill_screen(window.window()));
  PlayedShell::panel_flags = 1;
  EXPECT_EQ(played.visible_desktop(), (Rect{0, 0, 240, 240}));
  PlayedShell::panel_flags = 0;
  EXPECT_EQ(played.visible_desktop(), std::nullopt);
}

}  // namespace
}  // namespace orvello
