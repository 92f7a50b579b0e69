// Walks every template and string in every language without a screen.
#include "resources/dialog_templates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "resources/menus.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
constexpr Language kLanguages[] = {Language::russian, Language::english};
constexpr int kScreenWidth = 240, kLeastTouch = 26;

std::vector<DialogTemplate> all_dialogs(Language language) {
  return {day_view_dialog(language),      notes_dialog(language),        day_popup_dialog(language),
          delete_dialog(language, false), delete_dialog(language, true), import_dialog(language),
          date_dialog(language)};
}

bool is_button(Kind kind) { return kind == Kind::button || kind == Kind::default_button; }

TEST(Dialogs, ControlsHaveIdsPlacesAndTexts) {
  for (const Language language : kLanguages) {
    for (const DialogTemplate& dialog : all_dialogs(language)) {
      SCOPED_TRACE(dialog.id);
      EXPECT_LE(dialog.size.width, kScreenWidth);
      std::set<int> ids;
      int defaults = 0;
      for (const ControlTemplate& control : dialog.controls) {
        SCOPED_TRACE(control.id);
        EXPECT_TRUE(ids.insert(control.id).second);
        const Rect all{0, 0, dialog.size.width, dialog.size.height};
        EXPECT_EQ(intersection(all, control.place), control.place);
        if (is_button(control.kind)) {
          EXPECT_FALSE(control.text.empty());
          EXPECT_GE(control.place.height, kLeastTouch);
          EXPECT_GE(control.place.width, kLeastTouch);
        }
        defaults += control.kind == Kind::default_button;
      }
      EXPECT_LE(defaults, 1);
    }
  }
}

TEST(Dialogs, ControlsDoNotOverlapAndFollowReadingOrder) {
  for (const DialogTemplate& dialog : all_dialogs(Language::russian)) {
    SCOPED_TRACE(dialog.id);
    for (std::size_t i = 0; i < dialog.controls.size(); ++i) {
      const Rect& place = dialog.controls[i].place;
      for (std::size_t j = i + 1; j < dialog.controls.size(); ++j) {
        const Rect& later = dialog.controls[j].place;
        EXPECT_TRUE(intersection(place, later).empty()) << i << " and " << j;
        EXPECT_TRUE(later.y > place.y || (later.y == place.y && later.x > place.x))
            << i << " and " << j;
      }
    }
  }
}

TEST(Strings, EveryoneIsThereInBothLanguages) {
  for (int id = static_cast<int>(StringId::today); id <= static_cast<int>(StringId::import_failed);
       ++id) {
    const Text russian = load_string(static_cast<StringId>(id), Language::russian);
    const Text english = load_string(static_cast<StringId>(id), Language::english);
    EXPECT_FALSE(russian.empty()) << id;
    EXPECT_FALSE(english.empty()) << id;
    // Both take the same arguments.
    EXPECT_EQ(std::count(russian.begin(), russian.end(), u'%'),
              std::count(english.begin(), english.end(), u'%'))
        << id;
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
  EXPECT_EQ(enabled({false, false, false}), Commands());
  EXPECT_EQ(enabled({false, true, true}), (Commands{kCommandPaste, kCommandCreate}));
  EXPECT_EQ(enabled({true, false, false}),
            (Commands{kCommandCut, kCommandCopy, kCommandBeam, kCommandDelete}));
  EXPECT_EQ(enabled({true, true, true}).size(), 7u);
  EXPECT_EQ(day_menu(Language::russian, {})[0].text, u"Вырезать");
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
