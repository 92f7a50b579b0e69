// The menu bar's contract on the platform's window.
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

}  // namespace
}  // namespace orvello
