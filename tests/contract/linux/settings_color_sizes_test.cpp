// The Color page and its picker on the screens that there are: nothing of them has to be scrolled
// to. With ORVELLO_PICTURES=folder they are also saved as they look there.
#include <QDir>
#include <QScrollArea>
#include <cstdlib>

#include "resources/color_page_ids.h"
#include "settings/color_schemes.h"
#include "tests/contract/linux/qt_person.h"
#include "tests/contract/settings_contract.h"

namespace orvello::test {
namespace {

struct ColorScreen {
  const char* name;
  Size size;
  int dpi;
};
constexpr ColorScreen kColorScreens[] = {{"portrait", {240, 320}, 96},
                                         {"landscape", {320, 240}, 96},
                                         {"double", {480, 640}, 192},
                                         {"desktop", {1000, 700}, 96}};

void look(QtPerson& person, const std::string& name) {
  person.settle();
  for (QScrollArea* area : person.shell()->findChildren<QScrollArea*>()) {
    if (!area->isVisible()) continue;
    EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0) << name;
    EXPECT_EQ(area->verticalScrollBar()->maximum(), 0) << name;
  }
  const char* folder = std::getenv("ORVELLO_PICTURES");
  if (!folder) return;
  QDir().mkpath(QString::fromLocal8Bit(folder));
  person.shell()->grab().save(QString::fromStdString(folder + ("/" + name) + ".png"));
}

TEST(ColorSizes, ThePageAndThePickerAreSeenWhole) {
  for (const ColorScreen& screen : kColorScreens) {
    for (const bool russian : {false, true}) {
      auto made = std::make_unique<QtPerson>(screen.size, screen.dpi);
      QtPerson& person = *made;
      SettingsDesk desk(std::move(made), russian);
      desk.device.window.rotate(
          {screen.size, {0, 0, screen.size.width, screen.size.height}, screen.dpi, screen.dpi});
      desk.start(ViewMode::month);
      const std::string name = std::string("color-") + screen.name + (russian ? "-ru-" : "-en-");
      desk.open(kPageColor, [&] {
        for (int group = 0; group < 5; ++group) {
          desk.choose(kColorGroupList, group);
          EXPECT_GE(desk.dialog().place(kColorPreview).height, 60 * screen.dpi / 96);
          look(person, name + std::to_string(group));
        }
        person.choose_in_menu(2);
        desk.tap(kColorSchemes);
        desk.choose(kColorGroupList, 0);
        look(person, name + "dark");
        person.in_front([&] {
          look(person, name + "palette");
          desk.tap(kPickerRgbToggle);
          look(person, name + "rgb");
          desk.tap(kPickerHsvToggle);
          desk.type(kPickerHex, u"#E0E0E0");
          look(person, name + "hsv");
        });
        person.tap_row(kColorSlotList, 0);
      });
    }
  }
}

}  // namespace
}  // namespace orvello::test
