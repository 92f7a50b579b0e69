// The menu bar's contract on the platform's window.
#include <oleacc.h>

#include "hosts/win32/bar_window.h"
#include "hosts/win32/win32_menu_bar.h"
#include "tests/contract/menu_bar_contract.h"
#include "tests/contract/win32/window_bench.h"

namespace orvello {
namespace {

struct NativeBarDevice : MenuBarDevice {
  NativeBarDevice() {
    window.create(u"Orvello", u"Orvello", 320, heard);
    window.show();
    test::settle(window);
    heard.messages.clear();
  }
  MenuBar& bar() override { return port; }
  Recorder& recorder() override { return heard; }
  void deliver() override { test::settle(window); }
  void tap(std::uint32_t command) override {
    const auto& buttons = port.bar()->buttons();
    for (std::size_t i = 0; i < buttons.size(); ++i)
      if (buttons[i].content.command == command && !buttons[i].place.empty())
        test::click(port.bar()->window(), port.bar()->place_on_window(i).center());
  }
  std::vector<Text> choose(std::uint32_t menu, std::uint32_t item) override {
    std::vector<Text> texts;
    test::choose_in_next_menu(person, item, [&texts](auto shown) { texts = std::move(shown); });
    tap(menu);
    test::settle(window, 80);
    return texts;
  }
  Text text(std::uint32_t command) override { return port.bar()->button_of(command)->content.text; }
  bool checked(std::uint32_t command) override { return port.bar()->button_of(command)->checked; }
  Text highlight(std::uint32_t command) override { return port.bar()->button_of(command)->hint; }

  Recorder heard;
  Win32Window window{test::small_screen()};
  Win32MenuBar port{window};
  test::Soon person;
};
INSTANTIATE_TEST_SUITE_P(Win32, MenuBarContract,
                         ::testing::Values(MenuBarCase{
                             "win32", [] { return std::make_unique<NativeBarDevice>(); }}));

// Tab and F10 bring the keyboard from the view to the bar, Escape brings it back.
TEST(Win32MenuBar, IsReachedByKeysAndToldToAScreenReader) {
  NativeBarDevice device;
  using Kind = MenuBarButton::Kind;
  MenuBarContent content;
  content.buttons = {{Kind::text, 1, u"New", -1, {}, {}},
                     {Kind::separator, 0, {}, -1, {}, {}},
                     {Kind::image_menu, 2, u"All", 0, {{7, u"One"}, {8, u"Two"}}, u"Profiles"}};
  content.strip = {16, 16, std::vector<Color>(256, kBlack)};
  content.height = 30;
  ASSERT_TRUE(device.port.create(content));
  const HWND bar = device.port.bar()->window(), view = device.window.view();
  SendMessageW(view, WM_KEYDOWN, VK_TAB, 0);
  EXPECT_EQ(GetFocus(), bar);
  EXPECT_EQ(device.port.bar()->accessible_focus(), 0);
  SendMessageW(bar, WM_KEYDOWN, VK_TAB, 0);
  EXPECT_EQ(device.port.bar()->accessible_focus(), 1);
  // What opened the menu, and the letter that comes with it, chooses nothing; its first row is.
  for (const WPARAM opener : {WPARAM{VK_RETURN}, WPARAM{VK_SPACE}, WPARAM{VK_UP}}) {
    device.heard.messages.clear();
    device.person.in(60, [] { PostMessageW(GetFocus(), WM_KEYDOWN, VK_DOWN, 0); });
    device.person.in(120, [] { PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0); });
    device.person.in(400, [] { EndMenu(); });
    PostMessageW(bar, WM_KEYDOWN, opener, 0);
    test::settle(device.window, 500);
    ASSERT_EQ(device.heard.count(kMessageCommand), 1) << opener;
    EXPECT_EQ(device.heard.of(kMessageCommand).at(0).wparam, 8u) << opener;
  }
  SendMessageW(bar, WM_KEYDOWN, VK_TAB, 0);
  EXPECT_EQ(GetFocus(), view);
  EXPECT_EQ(device.heard.count(kMessageSetFocus), 1);
  SendMessageW(device.window.frame(), WM_SYSCOMMAND, SC_KEYMENU, 0);
  EXPECT_EQ(GetFocus(), bar);
  SendMessageW(bar, WM_KEYDOWN, VK_ESCAPE, 0);
  EXPECT_EQ(GetFocus(), view);
  device.port.enable_button(1, false);
  const AccessiblePart off = device.port.bar()->accessible_part(0);
  EXPECT_TRUE(off.name == u"New" && off.state & STATE_SYSTEM_UNAVAILABLE && off.action.empty());
  device.port.highlight_button(2, true, u"Profile: All");
  EXPECT_EQ(device.port.bar()->accessible_part(1).name, u"Profile: All");
}

}  // namespace
}  // namespace orvello
