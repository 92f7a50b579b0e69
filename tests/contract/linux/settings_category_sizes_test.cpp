// The Category and the Icons page, and what they do to the views, on the screens that there are:
// nothing of them has to be scrolled to. With ORVELLO_PICTURES=folder they are also saved.
#include "ports/messages.h"
#include "resources/category_page_ids.h"
#include "resources/icons_page_ids.h"
#include "settings/category_list.h"
#include "settings/new_labels.h"
#include "tests/appointments.h"
#include "tests/contract/linux/shown_screens.h"
#include "tests/contract/settings_contract.h"

namespace orvello::test {
namespace {

void list_labels(SettingsDesk& desk, int count, bool russian) {
  for (int i = 0; i < count; ++i) {
    Text label = format(russian ? u"Категория %d" : u"Label %d", i);
    if (i == 0) label = u"W";
    if (i == 1) label = Text(29, russian ? u'Ш' : u'W');
    add_label(desk.volume, desk.settings.category_props, label);
  }
}

TEST(CategorySizes, ThePagesAreSeenWhole) {
  for (const ShownScreen& screen : kShownScreens) {
    for (const bool russian : {false, true}) {
      for (const int count : {0, 1, 2, 60}) {
        auto made = std::make_unique<QtPerson>(screen.size, screen.dpi);
        QtPerson& person = *made;
        SettingsDesk desk(std::move(made), russian);
        desk.device.window.rotate(screen.info());
        list_labels(desk, count, russian);
        desk.store(u"displayiconstring0", u"W");
        desk.store(u"displayiconstring9", Text(29, u'W'));
        desk.start(ViewMode::month);
        const std::string name = std::string(screen.name) + (russian ? "-ru-" : "-en-");
        const std::string labels = std::to_string(count);
        desk.open(kPageCategory, [&] {
          EXPECT_GE(desk.dialog().place(kCategoryPageList).height, 40 * screen.dpi / 96);
          if (count > 1) person.tap_row(kCategoryPageList, 1), desk.tap(kCategoryPageUseColor);
          expect_seen_whole(person, "category-" + name + labels);
          desk.show_page(kPageIcons);
          EXPECT_GE(desk.dialog().place(kIconsPageGrid).height, 40 * screen.dpi / 96);
          expect_seen_whole(person, "icons-" + name + labels);
          if (count != 2) return;
          person.in_front([&] { expect_seen_whole(person, "icon-choice-" + name); });
          desk.tap(kIconsPageIcon);
        });
      }
    }
  }
}

}  // namespace
}  // namespace orvello::test
