// The Category and Icons pages.
#include "options/category_rules.h"
#include "ports/messages.h"
#include "resources/category_page_ids.h"
#include "resources/icons_page_ids.h"
#include "resources/ids.h"
#include "resources/options_page_ids.h"
#include "settings/category_list.h"
#include "settings/category_props.h"
#include "settings/icon_picture.h"
#include "settings/new_labels.h"
#include "settings/profiles.h"
#include "tests/appointments.h"
#include "tests/contract/settings_contract.h"
#include "views/month_snapshot.h"

namespace orvello::test {
namespace {

class LabelsDesk {
 public:
  explicit LabelsDesk(SettingsDesk& desk) : desk_(desk) {}
  void list(const std::vector<Text>& labels) {
    for (const Text& label : labels) addCategory(desk_.volume, label);
  }
  std::vector<Text> listed() {
    std::vector<Text> labels;
    readCategoryList(desk_.volume, 2, {}, labels);
    return labels;
  }
  std::int32_t put(TextView categories) {
    AppointmentRecord record = one_hour({11, 21, 2026}, 9, u"x");
    record.fields.categories = categories;
    return desk_.device.store.put(record);
  }
  Text carried(std::int32_t oid) { return (**desk_.device.store.load(oid)).fields.categories; }
  const CategoryProp* stored(TextView label) {
    props_.clear();
    EXPECT_TRUE(loadCategoryProps(desk_.volume, props_));
    return find_category_prop(props_, label);
  }
  void name(TextView text) { desk_.type(kCategoryPageName, text); }

 private:
  SettingsDesk& desk_;
  std::vector<CategoryProp> props_;
};

TEST_P(SettingsContract, CategoriesAreAddedRenamedAndRemovedAtOnce) {
  LabelsDesk labels(*desk);
  labels.list({u"Work", u"Home"});
  const std::int32_t oid = labels.put(u"Work,Home");
  desk->settings.displayiconstring[4] = u"Home";
  DialogsBench& person = *desk->bench;
  EXPECT_EQ(
      desk->open(
          kPageCategory,
          [&] {
            EXPECT_EQ(desk->text(kCategoryPageName), u"Home") << "the first in the locale's order";
            EXPECT_FALSE(person.enabled(kCategoryPageAdd));
            EXPECT_FALSE(person.enabled(kCategoryPageRename));
            for (const TextView bad : {u"a,b", u"HOME", u" (none) "}) {
              labels.name(bad);
              desk->tap(kCategoryPageAdd);
              EXPECT_EQ(desk->boxes_shown().size(), 1u) << to_utf8(bad);
            }
            labels.name(u" Sport ");
            desk->tap(kCategoryPageAdd);
            EXPECT_EQ(labels.listed(), (std::vector<Text>{u"Work", u"Home", u"Sport"}));
            EXPECT_EQ(labels.stored(u"Sport")->color, static_cast<std::int32_t>(kLabelPalette[0]));
            person.tap_row(kCategoryPageList, 2);
            labels.name(u"Office");
            desk->tap(kCategoryPageRename);
            EXPECT_EQ(labels.carried(oid), u"Office,Home");
            EXPECT_EQ(desk->commands.reloads, 1);
            EXPECT_EQ(desk->text(kCategoryPageName), u"Office");
            labels.name(u"HOME");
            desk->device.boxes.answers = {BoxAnswer::no, BoxAnswer::yes};
            desk->tap(kCategoryPageRename);
            EXPECT_EQ(labels.carried(oid), u"Office,Home");
            desk->tap(kCategoryPageRename);
            EXPECT_EQ(labels.carried(oid), u"Home");
            EXPECT_EQ(desk->boxes_shown().size(), 2u);
            // Removed: what nothing uses, with all that names it.
            person.tap_row(kCategoryPageList, 0);
            desk->settings.strdefcategory = u"Home";
            desk->tap(kCategoryPageRemove);
            EXPECT_EQ(desk->boxes_shown().size(), 1u) << "the default one";
            desk->settings.strdefcategory = kNoCategory;
            desk->tap(kCategoryPageRemove);
            EXPECT_EQ(labels.listed(), std::vector<Text>{u"Sport"});
            EXPECT_EQ(desk->settings.displayiconstring[4], u"");
            desk->cancel();
          }),
      kSheetCancelled);
  EXPECT_TRUE(desk->history.undo(desk->device.boxes));
  EXPECT_TRUE(desk->history.undo(desk->device.boxes));
  EXPECT_EQ(labels.carried(oid), u"Work,Home");
}

TEST_P(SettingsContract, ADefaultCategoryThatIsRenamedStaysTheDefault) {
  LabelsDesk labels(*desk);
  labels.list({u"Work"});
  desk->settings.strdefcategory = u"Work";
  const auto rename = [&](TextView name, bool look) {
    desk->open(kPageCategory, [&] {
      labels.name(name);
      desk->tap(kCategoryPageRename);
      if (look) {
        desk->show_page(kPageOptions);
        EXPECT_EQ(desk->text(kOptionsCategory), name);
      }
      desk->ok();
    });
    EXPECT_EQ(desk->settings.strdefcategory, name);
    EXPECT_EQ(labels.listed(), std::vector<Text>{Text(name)});
  };
  rename(u"Office", false);
  rename(u"Desk", true);
}

TEST_P(SettingsContract, ColoursOfCategoriesWaitForOk) {
  LabelsDesk labels(*desk);
  labels.list({u"A", u"B", u"C"});
  saveCategoryProps(desk->volume, u"B", 0x112233, 0);
  DialogsBench& person = *desk->bench;
  const auto change = [&] {
    person.tap_row(kCategoryPageList, 1);
    EXPECT_TRUE(desk->checked(kCategoryPageUseColor));
    desk->tap(kCategoryPageUseColor);
    EXPECT_FALSE(desk->checked(kCategoryPageUseColor));
  };
  desk->open(kPageCategory, [&] { change(), desk->cancel(); });
  EXPECT_EQ(labels.stored(u"B")->flag, 0);
  desk->open(kPageTimes, [&] { desk->ok(); });
  EXPECT_FALSE(labels.stored(u"A")) << "nobody has seen its colour";
  desk->load();
  loadCategoryProps(desk->volume, desk->settings.category_props);
  desk->open(kPageCategory, [&] { change(), desk->ok(); });
  EXPECT_EQ(*labels.stored(u"B"), (CategoryProp{u"B", 0x112233, kCategoryColorUnused}));
  EXPECT_EQ(labels.stored(u"A")->color, static_cast<std::int32_t>(rgb(119, 119, 255)));
  EXPECT_EQ(labels.stored(u"C")->color, static_cast<std::int32_t>(rgb(159, 255, 159)));
  EXPECT_EQ(used_category_color(desk->settings.category_props, u"B"), std::nullopt);
  EXPECT_GT(desk->commands.reloads, 0);
}

TEST_P(SettingsContract, CategoriesByKeysAlone) {
  LabelsDesk labels(*desk);
  std::vector<Text> many;
  for (int i = 0; i < 12; ++i) many.push_back(format(u"Label %.2d", i));
  labels.list(many);
  DialogsBench& person = *desk->bench;
  desk->open(kPageCategory, [&] {
    EXPECT_EQ(person.focused(), kCategoryPageList);
    person.key(kKeyEnd);
    EXPECT_EQ(desk->text(kCategoryPageName), u"Label 11");
    person.key(kKeyUp);
    person.key(kKeySpace);
    EXPECT_FALSE(desk->checked(kCategoryPageUseColor));
    person.key(kKeyDelete);
    EXPECT_EQ(desk->text(kCategoryPageName), u"Label 11");
    EXPECT_EQ(labels.listed().size(), 11u);
    for (int i = 0; i < 11; ++i) person.key(kKeyDelete);
    EXPECT_TRUE(labels.listed().empty());
    for (const int control : {kCategoryPageRemove, kCategoryPageColor, kCategoryPageUseColor})
      EXPECT_FALSE(person.enabled(control));
    person.key(kKeyDelete);
    desk->ok();
  });
  EXPECT_TRUE(desk->boxes_shown().empty());
}

TEST_P(SettingsContract, IconsAreBoundOnOkAlone) {
  LabelsDesk labels(*desk);
  labels.list({u"Work", u"Birthday"});
  desk->store(u"displayicon7", 9999);
  desk->store(u"displayiconstring8", Text(600, u'x'));
  desk->load();
  DialogsBench& person = *desk->bench;
  const auto bind = [&] {
    person.key(kKeyRight);  // from the first slot to the second
    desk->choose(kIconsPageLabel, 2);
    EXPECT_EQ(desk->text(kIconsPageLabel), u"Birthday");
  };
  desk->open(kPageIcons, [&] { bind(), desk->cancel(); });
  EXPECT_EQ(desk->settings.displayiconstring[1], u"");
  desk->open(kPageIcons, [&] {
    bind();
    person.in_front([&] {
      const Rect grid = desk->dialog().place(kIconChoiceGrid);
      person.key(kKeyEnd);
      EXPECT_FALSE(grid.empty());
      desk->tap(kIconChoiceOk);
    });
    desk->tap(kIconsPageIcon);
    EXPECT_EQ(desk->settings.displayiconstring[1], u"") << "it waits";
    desk->ok();
  });
  EXPECT_EQ(desk->settings.displayiconstring[1], u"Birthday");
  EXPECT_EQ(desk->stored_text(u"displayiconstring1"), u"Birthday");
  EXPECT_EQ(desk->number(u"displayicon1"), desk->settings.total_icon_count - 1);
  EXPECT_EQ(desk->number(u"displayicon2"), -1) << "what was not touched is not written";
  // A label that is renamed after it was chosen is chosen no longer.
  desk->open(kPageIcons, [&] {
    desk->choose(kIconsPageLabel, 3);
    EXPECT_EQ(desk->text(kIconsPageLabel), u"Work");
    desk->show_page(kPageCategory);
    person.key(kKeyDown);
    labels.name(u"Office");
    desk->tap(kCategoryPageRename);
    desk->ok();
  });
  EXPECT_EQ(labels.listed().front(), u"Office");
  EXPECT_EQ(desk->settings.displayiconstring[0], u"");
  desk->open(kPageIcons, [&] { desk->tap(kIconsPageReset), desk->ok(); });
  EXPECT_EQ(desk->number(u"displayicon1"), 1);
  EXPECT_EQ(desk->stored_text(u"displayiconstring1"), u"");
  EXPECT_TRUE(desk->boxes_shown().empty());
}

// What the first-use note promises, through the whole program.
TEST_P(SettingsContract, ABoundIconStandsInTheMonthAndInTheDay) {
  LabelsDesk labels(*desk);
  labels.list({u"Work"});
  labels.put(u"Work");
  desk->store(u"showholiday", 1u);
  desk->store(u"categoryiconflag", 1u);
  desk->start(ViewMode::month);
  const auto icons = [&] {
    desk->settle();
    const auto& settings = desk->program->settings();
    Image wanted = icon_picture(settings, 5);
    return std::pair(
        month_snapshot_without_items(settings, desk->screen, 11, 2026, settings.today).icons.size(),
        category_icon(settings, u"Work") == wanted);
  };
  EXPECT_EQ(icons(), std::pair(std::size_t{0}, false));
  desk->open(kPageIcons, [&] {
    DialogsBench& person = *desk->bench;
    for (int i = 0; i < 5; ++i) person.key(kKeyRight);
    desk->choose(kIconsPageLabel, 2);
    desk->ok();
  });
  EXPECT_EQ(icons(), std::pair(std::size_t{1}, true));
}

}  // namespace
}  // namespace orvello::test
