// Walks every template and string in every language without a screen.
#include "resources/dialog_templates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "resources/menus.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
constexpr int kScreenWidth = 240;

bool must_say_something(Kind kind) {
  return kind == Kind::button || kind == Kind::default_button || kind == Kind::picture_button ||
         kind == Kind::check_box || kind == Kind::radio_button || kind == Kind::toggle;
}

bool takes_limit(Kind kind) {
  return kind == Kind::edit || kind == Kind::multi_line_edit || kind == Kind::combo ||
         kind == Kind::notes;
}

// Where controls stand on a screen is tried in tests/draw, whether their texts fit in tests/qt.
TEST(Dialogs, ControlsHaveIdsTextsGroupsAndRules) {
  for (const LanguageInfo& info : all_languages()) {
    const Language language = info.language;
    for (const DialogTemplate& dialog : all_dialogs(language)) {
      SCOPED_TRACE(dialog.id);
      EXPECT_FALSE(dialog.title.empty());
      EXPECT_LE(dialog.size.width, kScreenWidth);
      std::set<int> ids;
      std::map<int, int> groups;
      int defaults = 0, section = 0;
      for (const ControlTemplate& control : dialog.controls) {
        SCOPED_TRACE(control.id);
        EXPECT_TRUE(control.id > 0 && ids.insert(control.id).second);
        const Rect all{0, 0, dialog.size.width, dialog.size.height};
        EXPECT_EQ(intersection(all, control.place), control.place);
        if (must_say_something(control.kind)) {
          EXPECT_FALSE(control.text.empty());
        }
        defaults += control.kind == Kind::default_button;
        EXPECT_EQ(control.group != 0, control.kind == Kind::radio_button);
        ++groups[control.group];
        if (!takes_limit(control.kind)) {
          EXPECT_EQ(control.limit, 0);
        }
        EXPECT_GE(control.limit, 0);
        if (control.image) {
          EXPECT_TRUE(control.kind == Kind::picture_button || control.kind == Kind::toggle);
        }
        // Sections follow each other; what stands outside of them comes before or after.
        EXPECT_TRUE(control.section == 0 || control.section >= section);
        section = control.section != 0 ? control.section : section != 0 ? 1000 : 0;
      }
      EXPECT_LE(defaults, 1);
      for (const auto& [group, radios] : groups)
        if (group != 0) {
          EXPECT_GE(radios, 2) << group;
        }
    }
  }
}

TEST(DayMenu, OffersWhatCanBeDone) {
  const auto enabled = [](const DayMenuState& state) {
    std::set<std::uint32_t> commands;
    for (const MenuItem& item : day_menu(Language::russian, state))
      if (item.command != 0 && item.enabled) commands.insert(item.command);
    return commands;
  };
  using Commands = std::set<std::uint32_t>;
  EXPECT_EQ(enabled(DayMenuState()), Commands{kCommandCreate});
  EXPECT_EQ(enabled({.has_source = true}), (Commands{kCommandPaste, kCommandCreate}));
  EXPECT_EQ(enabled({.on_appointment = true}),
            (Commands{kCommandCut, kCommandCopy, kCommandBeam, kCommandDelete, kCommandMoveTo,
                      kCommandEditAppointment, kCommandCreate}));
  EXPECT_EQ(day_menu(Language::russian, {true, false})[0].text, u"Вырезать");
}

TEST(MenuBar, ButtonsAreTheDevicesInTheirOrder) {
  const MenuBarContent bar = main_menu_bar(Language::russian, {}, 27);
  std::vector<std::uint32_t> commands;
  for (const MenuBarButton& button : bar.buttons) commands.push_back(button.command);
  EXPECT_EQ(commands,
            (std::vector<std::uint32_t>{40001, 40004, 40008, 0, 40032, 40033, 40035, 40031}));
  EXPECT_EQ(bar.buttons[0].text, u"Новое");
  EXPECT_EQ(bar.buttons[1].text, u"Опции");
  EXPECT_EQ(bar.buttons[1].menu[0].text, u"Настройки");
  EXPECT_EQ(bar.buttons[2].text, u"Выход");
  EXPECT_EQ(bar.buttons[7].menu[0].command, 60000u);
  for (const MenuBarButton& button : bar.buttons)
    EXPECT_EQ(button.hint.empty(), button.image < 0) << button.command;
}

}  // namespace
}  // namespace orvello
