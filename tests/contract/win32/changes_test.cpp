// What happens around the window while the program runs: density, clock, size, the session's end.
#include <gtest/gtest.h>

#include <algorithm>

#include "hosts/win32/win32_dialogs.h"
#include "tests/contract/win32/window_bench.h"

namespace orvello::test {
namespace {

using Kind = ControlTemplate::Kind;

DialogTemplate button_form(bool popup = false) {
  DialogTemplate form;
  form.id = 597;
  form.size = {200, 60};
  form.popup = popup;
  form.controls = {{popup ? Kind::custom : Kind::button, 21, u"x", {0, 0, 100, 30}}};
  return form;
}

struct Heard : DialogProcedure {
  void handle(Dialog& dialog, const DialogEvent& event) override {
    if (event.kind == DialogEvent::Kind::init) dialog.set_timer(3, 3600000);
    timers += event.kind == DialogEvent::Kind::timer;
    shown = &dialog;
  }
  Dialog* shown = nullptr;
  int timers = 0;
};

struct ChangingWindow {
  explicit ChangingWindow(Win32WindowOptions options = small_screen())
      : window(std::move(options)), dialogs(window, english_locale()) {
    EXPECT_TRUE(window.create(u"OrvelloChanges", u"", 320, recorder));
    window.show();
    settle(window);
    recorder.messages.clear();
  }
  Recorder recorder;
  Win32Window window;
  Win32Dialogs dialogs;
  Soon person;
};

TEST(Win32Changes, AnotherDensityLaysOutWindowAndFormsAnewOnce) {
  Win32WindowOptions options;
  options.fixed_look = true;
  ChangingWindow world(options);
  Heard heard;
  const auto form = world.dialogs.open_modeless(button_form(), heard);
  settle(world.window);
  const int height = form->place(21).height;
  RECT place{10, 10, 710, 760};
  SendMessageW(world.window.frame(), 0x02E0, MAKEWPARAM(192, 192),
               reinterpret_cast<LPARAM>(&place));
  settle(world.window, 150);
  EXPECT_EQ(world.window.screen().dpi_x, 192);
  EXPECT_EQ(world.window.screen().form_dpi, 192);
  EXPECT_EQ(form->place(21).height, 2 * height);
  EXPECT_EQ(world.recorder.count(kMessageSettingChange), 1);
  RECT now{};
  GetWindowRect(world.window.frame(), &now);
  EXPECT_TRUE(EqualRect(&now, &place)) << "as the system suggests";
}

TEST(Win32Changes, AClockThatIsSetOrHasSleptMovesToday) {
  ChangingWindow world;
  SendMessageW(world.window.frame(), WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC, 0);
  settle(world.window);
  ASSERT_EQ(world.recorder.count(kMessageTimer), 1);
  EXPECT_EQ(world.recorder.of(kMessageTimer)[0].wparam, 5u);
  EXPECT_EQ(world.recorder.count(kMessageRefresh), 0);
  SendMessageW(world.window.frame(), WM_TIMECHANGE, 0, 0);
  settle(world.window);
  EXPECT_EQ(world.recorder.count(kMessageTimer), 2);
  EXPECT_EQ(world.recorder.count(kMessageRefresh), 1) << "the zone may be another";
}

// The registry of a person whose desktop changes.
class ChangingDesktop {
 public:
  ChangingDesktop() {
    RegCreateKeyExW(HKEY_CURRENT_USER, kScratch, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_,
                    nullptr);
    RegOverridePredefKey(HKEY_CURRENT_USER, key_);
  }
  ~ChangingDesktop() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(key_);
    RegDeleteTreeW(HKEY_CURRENT_USER, kScratch);
  }
  void set(const wchar_t* key, const wchar_t* name, DWORD value) {
    RegSetKeyValueW(HKEY_CURRENT_USER, key, name, REG_DWORD, &value, sizeof value);
  }

 private:
  static constexpr const wchar_t* kScratch = L"Software\\OrvelloChangesTest";
  HKEY key_ = nullptr;
};

TEST(Win32Changes, ADesktopThatTurnsDarkAndTakesLargerTextsIsFollowed) {
  ChangingDesktop desktop;
  Win32WindowOptions options = small_screen();
  options.screen = Size{480, 640};
  options.fixed_look = false;
  ChangingWindow world(options);
  EXPECT_FALSE(world.window.screen().dark_desktop);
  int looks = 0;
  world.window.on_look = [&] { ++looks; };
  desktop.set(L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
              L"AppsUseLightTheme", 0);
  desktop.set(L"Software\\Microsoft\\Accessibility", L"TextScaleFactor", 150);
  SendMessageW(world.window.frame(), WM_SETTINGCHANGE, 0,
               reinterpret_cast<LPARAM>(L"ImmersiveColorSet"));
  EXPECT_TRUE(world.window.screen().dark_desktop);
  EXPECT_EQ(world.window.screen().form_dpi, 144);
  EXPECT_EQ(world.window.screen().dpi_x, 96);
  EXPECT_EQ(world.dialogs.colors().ground, kDarkColors.ground);
  EXPECT_EQ(looks, 1);
  EXPECT_EQ(world.recorder.count(kMessageSettingChange), 1);
}

// What a form keeps in a while is kept before the process may be gone, and so is the window's
// place.
TEST(Win32Changes, TheEndOfTheSessionIsNotHeldUpAndLosesNothing) {
  int saved = 0;
  Win32WindowOptions options;
  options.fixed_look = true;
  options.dpi = 96;
  options.save_place = [&](const Rect&) { ++saved; };
  ChangingWindow world(options);
  Heard heard, below;
  const auto day = world.dialogs.open_modeless(button_form(), below);
  LRESULT may_end = 0;
  int ended_with = -1;
  world.person.in(60, [&] {
    may_end = SendMessageW(world.window.frame(), WM_QUERYENDSESSION, 0, 0);
    SendMessageW(world.window.frame(), WM_ENDSESSION, TRUE, 0);
    ended_with = heard.timers;
    heard.shown->close(7);
  });
  EXPECT_EQ(world.dialogs.run_modal(button_form(), heard), 7);
  EXPECT_TRUE(may_end);
  EXPECT_EQ(ended_with, 1);
  EXPECT_EQ(below.timers, 0) << "what a pen has begun there is nothing to keep";
  EXPECT_EQ(saved, 1);
}

TEST(Win32Changes, AMenuBeginsAtThePointAndGoesWhenTheWindowTurns) {
  for (const bool right_to_left : {false, true}) {
    Win32WindowOptions options = small_screen();
    options.right_to_left = right_to_left;
    ChangingWindow world(options);
    RECT menu{};
    bool stands = true;
    world.person.in(80, [&] {
      GetWindowRect(FindWindowW(L"#32768", nullptr), &menu);
      SetWindowPos(world.window.frame(), nullptr, 0, 0, 420, 300, SWP_NOMOVE | SWP_NOZORDER);
      world.person.in(100, [&] {
        stands = open_menu() != nullptr;
        EndMenu();
      });
    });
    // As the program counts: from where lines begin.
    POINT corner{right_to_left ? 240 - 1 - 100 : 100, 60};
    ClientToScreen(world.window.view(), &corner);
    EXPECT_EQ(world.window.track_menu({{70, u"Open"}}, {100, 60}), 0u);
    settle(world.window, 150);
    EXPECT_FALSE(stands);
    EXPECT_NEAR(right_to_left ? menu.right : menu.left, corner.x, 2);
    EXPECT_NEAR(menu.top, corner.y, 2);
  }
}

// The line that is drawn on a popup's outline is a part of it, on every side.
TEST(Win32Changes, APopupInAnOutlineShowsTheLineAroundIt) {
  ChangingWindow world;
  DialogTemplate bubble = button_form(true);
  bubble.place = {20, 40, 120, 80};
  bubble.outline = {{119, 79}, {0, 79}, {0, 10}, {50, 10}, {60, 0}, {70, 10}, {119, 10}};
  Heard heard;
  RECT edges{};
  bool corner = true;
  world.person.in(60, [&] {
    const OwnedGdi region(CreateRectRgn(0, 0, 0, 0));
    const auto shape = static_cast<HRGN>(region.get());
    GetWindowRgn(FindWindowExW(world.window.frame(), nullptr, L"OrvelloForm", nullptr), shape);
    GetRgnBox(shape, &edges);
    corner = PtInRegion(shape, 10, 5) != FALSE;
    heard.shown->close(1);
  });
  EXPECT_EQ(world.dialogs.run_modal(bubble, heard), 1);
  EXPECT_TRUE(edges.left == 0 && edges.right == 120 && edges.bottom == 80)
      << edges.left << " " << edges.right << " " << edges.bottom;
  EXPECT_FALSE(corner);
}

}  // namespace
}  // namespace orvello::test
