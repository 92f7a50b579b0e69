// The Color page and its picker on the screens that there are: nothing of them has to be scrolled
// to. With ORVELLO_PICTURES=folder they are also saved as they look there.
#include "resources/color_page_ids.h"
#include "settings/color_schemes.h"
#include "tests/contract/linux/shown_screens.h"
#include "tests/contract/settings_contract.h"

namespace orvello::test {
namespace {

TEST(ColorSizes, ThePageAndThePickerAreSeenWhole) {
  for (const ShownScreen& screen : kShownScreens) {
    for (const bool russian : {false, true}) {
      auto made = std::make_unique<QtPerson>(screen.size, screen.dpi);
      QtPerson& person = *made;
      SettingsDesk desk(std::move(made), russian);
      desk.device.window.rotate(screen.info());
      desk.start(ViewMode::month);
      const std::string name = std::string("color-") + screen.name + (russian ? "-ru-" : "-en-");
      desk.open(kPageColor, [&] {
        for (int group = 0; group < 5; ++group) {
          desk.choose(kColorGroupList, group);
          EXPECT_GE(desk.dialog().place(kColorPreview).height, 60 * screen.dpi / 96);
          expect_seen_whole(person, name + std::to_string(group));
        }
        person.choose_in_menu(2);
        desk.tap(kColorSchemes);
        desk.choose(kColorGroupList, 0);
        expect_seen_whole(person, name + "dark");
        person.in_front([&] {
          expect_seen_whole(person, name + "palette");
          desk.tap(kPickerRgbToggle);
          expect_seen_whole(person, name + "rgb");
          desk.tap(kPickerHsvToggle);
          desk.type(kPickerHex, u"#E0E0E0");
          expect_seen_whole(person, name + "hsv");
        });
        person.tap_row(kColorSlotList, 0);
      });
    }
  }
}

}  // namespace
}  // namespace orvello::test
