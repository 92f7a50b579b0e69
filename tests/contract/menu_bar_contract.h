// What every menu bar must do.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "ports/menu_bar.h"
#include "tests/contract/message_log.h"

namespace orvello {

// A window that stands and can have a menu bar, and the person in front of it.
struct MenuBarDevice {
  virtual ~MenuBarDevice() = default;
  virtual MenuBar& bar() = 0;
  virtual Recorder& recorder() = 0;  // the window's handler
  virtual void deliver() = 0;        // until what was posted has arrived
  virtual void tap(std::uint32_t command) = 0;
  // Opens the menu and taps that item; the texts of all of them.
  virtual std::vector<Text> choose(std::uint32_t menu, std::uint32_t item) = 0;
  virtual Text text(std::uint32_t command) = 0;
  virtual bool checked(std::uint32_t command) = 0;
  virtual Text highlight(std::uint32_t command) = 0;  // the hint of one; empty: it is none
};
using MenuBarCase = std::pair<const char*, std::function<std::unique_ptr<MenuBarDevice>()>>;
inline void PrintTo(const MenuBarCase& one, std::ostream* out) { *out << one.first; }

class MenuBarContract : public ::testing::TestWithParam<MenuBarCase> {
 protected:
  static constexpr std::uint32_t kNew = 101, kMenu = 102, kView = 103;
  static MenuBarContent content() {
    using Kind = MenuBarButton::Kind;
    MenuBarContent made;
    made.buttons = {{Kind::text, kNew, u"New", -1, {}, {}},
                    {Kind::separator, 0, {}, -1, {}, {}},
                    {Kind::menu, kMenu, u"Options", -1, {{201, u"First"}}, {}},
                    {Kind::image, kView, {}, 0, {}, u"Month view"}};
    made.strip = {16, 16, std::vector<Color>(256, kBlack)};
    made.height = 30;
    return made;
  }
  // The commands that reached the handler since the last look.
  std::vector<std::uint32_t> commands() {
    device->deliver();
    std::vector<std::uint32_t> found;
    for (const Message& message : device->recorder().of(kMessageCommand))
      found.push_back(message.wparam);
    device->recorder().messages.clear();
    return found;
  }
  using Commands = std::vector<std::uint32_t>;
  std::unique_ptr<MenuBarDevice> device = GetParam().second();
  MenuBar& bar = device->bar();
};

TEST_P(MenuBarContract, HasTheHeightAskedForWhileItIsThere) {
  EXPECT_FALSE(bar.exists());
  EXPECT_EQ(bar.height(), 0);
  bar.destroy();
  bar.enable_button(kNew, true);
  bar.set_menu(kMenu, {});
  bar.set_button_text(0, u"x");
  ASSERT_TRUE(bar.create(content()));
  EXPECT_TRUE(bar.exists());
  EXPECT_EQ(bar.height(), 30);
  EXPECT_FALSE(bar.create(content())) << "one stands already";
  bar.destroy();
  EXPECT_FALSE(bar.exists());
  EXPECT_EQ(bar.height(), 0);
  EXPECT_TRUE(bar.create(content()));
}

TEST_P(MenuBarContract, AChoiceReachesTheHandlerLaterAsACommand) {
  ASSERT_TRUE(bar.create(content()));
  for (const std::uint32_t command : {kNew, kView}) {
    device->tap(command);
    EXPECT_EQ(device->recorder().count(kMessageCommand), 0) << "posted";
    EXPECT_EQ(commands(), Commands{command});
  }
  device->choose(kMenu, 201);
  EXPECT_EQ(commands(), Commands{201});
  EXPECT_FALSE(device->checked(kView)) << "a tap marks nothing";
  // A command may destroy the bar that it came from.
  device->recorder().on_message = [this](const Message& message) {
    if (message.id == kMessageCommand) bar.destroy();
    return true;
  };
  device->tap(kNew);
  EXPECT_EQ(commands(), Commands{kNew});
  EXPECT_FALSE(bar.exists());
}

TEST_P(MenuBarContract, ButtonsAndMenusAreWhatWasSetLast) {
  ASSERT_TRUE(bar.create(content()));
  bar.enable_button(kNew, false);
  bar.enable_button(999, false);
  device->tap(kNew);
  EXPECT_EQ(commands(), Commands{});
  bar.enable_button(kNew, true);
  device->tap(kNew);
  EXPECT_EQ(commands(), Commands{kNew});
  bar.check_button(kView, true);
  EXPECT_TRUE(device->checked(kView));
  bar.check_button(kView, false);
  EXPECT_FALSE(device->checked(kView));
  device->tap(kView);
  EXPECT_EQ(commands(), Commands{kView});
  EXPECT_FALSE(device->checked(kView)) << "marks are the program's";
  EXPECT_EQ(device->highlight(kView), u"");
  for (const std::uint32_t command : {kView, 999u})
    bar.highlight_button(command, true, u"Only holidays");
  EXPECT_EQ(device->highlight(kView), u"Only holidays");
  bar.highlight_button(kView, false, u"Only holidays");
  EXPECT_EQ(device->highlight(kView), u"");
  bar.set_button_text(2, u"More");
  for (const int index : {-1, 1, 9}) bar.set_button_text(index, u"x");
  EXPECT_EQ(device->text(kNew), u"New");
  EXPECT_EQ(device->text(kMenu), u"More");
  bar.set_menu(kMenu, {{301, u"All", true, true}, {}, {302, u"Work & home"}, {303, u"Off", false}});
  EXPECT_EQ(device->choose(kMenu, 302), (std::vector<Text>{u"All", u"", u"Work & home", u"Off"}));
  EXPECT_EQ(commands(), Commands{302});
  device->choose(kMenu, 303);  // is off
  EXPECT_EQ(commands(), Commands{});
}

}  // namespace orvello
