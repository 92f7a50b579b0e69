#include "store/rename_label.h"

#include "settings/category_list.h"
#include "settings/category_props.h"
#include "settings/category_text.h"
#include "settings/profiles.h"
#include "settings/setting_table.h"
#include "tests/settings/settings_fixture.h"
#include "tests/store/store_fixture.h"

namespace orvello {
namespace {

class RenameLabelTest : public StoreTest {
 protected:
  RenameLabelTest() {
    EnsureSettingsKey(registry);
    databases.on_volume_created = [this](TextView path) { files.present.emplace(path); };
    databases.create(kObjectStore, kCategoriesDatabase, 0);
    for (const TextView label : {u"Work", u"Home", u"Sport"}) addCategory(volume, label);
    saveCategoryProps(volume, u"Work", 0x112233, 0);
    for (const TextView label : {u"Work", u"Sport"}) add_profile_label(volume, u"Job", label);
    add_profile_label(volume, u"Rest", u"Home");
    settings.activeprofilename = u"Job";
    settings.displayiconstring[3] = settings.displayiconstring[9] = u"Work";
    settings.strdefcategory = u"Work";
    single = put(labelled(u"Work, Home", 3, 9));
    plain = put(labelled(u"Homework", 3, 11));
    series = put_series(labelled(u"Work", 2, 9));
    put_occurrence(4, u"Urgent,Work");
    put_occurrence(5, u"Home");
  }
  static AppointmentFields labelled(TextView categories, int of_november, int hour) {
    AppointmentFields made = fields(u"x", at(of_november, hour), at(of_november, hour + 1));
    made.categories = categories;
    return made;
  }
  void put_occurrence(int of_november, TextView categories) {
    const auto one = occurrence(series, at(of_november, 9));
    write_all(*one, labelled(categories, of_november, 10));
    ASSERT_TRUE(one->save());
  }
  std::string categories() {
    std::string all;
    for (const std::int32_t oid : {single, plain, series}) {
      const auto record = **store.load(oid);
      all += to_utf8(record.fields.categories) + "; ";
      for (const auto& one : record.exceptions) all += to_utf8(one.fields.categories) + "; ";
    }
    return all;
  }
  // What else names labels.
  std::string elsewhere() {
    std::vector<Text> labels;
    readCategoryList(volume, generation, {}, labels);
    std::string all = joined(labels) + "| ";
    for (const CategoryProp& prop : settings.category_props)
      all += to_utf8(prop.label) + "=" + std::to_string(prop.color) + " ";
    all += "| " + joined(settings.profile_labels) + "| ";
    EXPECT_TRUE(loadProfile(volume, u"Rest", labels));
    return all + joined(labels) + "| " + to_utf8(settings.displayiconstring[3]) + " " +
           to_utf8(settings.displayiconstring[9]) + "| " + to_utf8(settings.strdefcategory);
  }
  static std::string joined(const std::vector<Text>& labels) {
    std::string all;
    for (const Text& label : labels) all += to_utf8(label) + " ";
    return all;
  }
  std::optional<int> rename(TextView label, TextView name) {
    return rename_label(context, {settings, registry, volume, generation}, label, name);
  }

  MemoryRegistry registry;
  MemoryRecordDatabases databases;
  SettingsVolume volume{databases, boxes, files};
  SettingsRecord settings;
  int generation = 2;
  std::int32_t single = 0, plain = 0, series = 0;
};

constexpr const char* kBefore = "Work, Home; Homework; Work; Urgent,Work; Home; ";
constexpr const char* kAfter = "Office, Home; Homework; Office; Urgent,Office; Home; ";

TEST_F(RenameLabelTest, EverythingFollowsAndComesBack) {
  EXPECT_EQ(rename(u"Work", u"Office"), 3);
  EXPECT_EQ(categories(), kAfter);
  const std::string after =
      "Office Home Sport | Office=1122867 | Office Sport | Home | "
      "Office Office| Office";
  EXPECT_EQ(elsewhere(), after);
  SettingsRecord stored;
  load_settings_of(LoadStep::display_icons, registry, english_locale(), stored);
  EXPECT_EQ(stored.displayiconstring[9], u"Office");
  // What was chosen meanwhile stays with the label.
  saveCategoryProps(volume, u"Office", 7, 1);
  settings.displayiconstring[9] = u"Sport";
  ASSERT_TRUE(history.undo(boxes));
  EXPECT_EQ(categories(), kBefore);
  EXPECT_EQ(elsewhere(), "Work Home Sport | Work=7 | Sport Work | Home | Work Sport| Work");
  ASSERT_TRUE(history.redo(boxes));
  EXPECT_EQ(categories(), kAfter);
  EXPECT_EQ(boxes_shown(), "");
}

TEST_F(RenameLabelTest, TwoLabelsBecomeOneAndTwoAgain) {
  saveCategoryProps(volume, u"Home", 5, 1);
  settings.displayiconstring[20] = u"Home";
  for (const bool light : {false, true}) {
    store.faults.state = light;  // without states the texts alone are remembered
    EXPECT_EQ(rename(u"Work", u"Home"), 3);
    EXPECT_EQ(categories(), "Home; Homework; Home; Urgent,Home; Home; ");
    EXPECT_EQ(elsewhere(), "Home Sport | Home=5 | Home Sport | Home |  | Home");
    ASSERT_TRUE(history.undo(boxes));
    EXPECT_EQ(categories(), kBefore);
    EXPECT_EQ(elsewhere(),
              "Home Sport Work | Home=5 Work=1122867 | Sport Work | Home | Work Work| Work");
  }
  store.faults.state = true;
  rename(u"Work", u"Office");
  AppointmentFields changed = labelled(u"Office", 2, 9);
  const auto item = session.ItemFromOid(single);
  item->write(changed, {AppointmentField::categories});
  item->save();
  EXPECT_FALSE(history.undo(boxes)) << "it was changed elsewhere";
}

// Whatever fails, appointments carry all the one name or all the other, and it has its colour and
// its place in the profile.
TEST_F(RenameLabelTest, NothingIsHalfRenamed) {
  for (const int times : {0, 1, -1}) {  // of writes: one, or all from then on
    const bool writes = times != 0;
    int number = 0;
    for (bool failed = true; failed; ++number) {
      if (writes) databases.fail_write = DatabaseError::disk_full;
      databases.fail_write_times = times;
      databases.fail_write_after = number;
      databases.fail_read_after = writes ? -1 : number;
      const auto renamed = rename(u"Work", u"Office");
      databases.fail_write = DatabaseError::none;
      databases.fail_read_after = -1;
      failed = !boxes_shown().empty();
      EXPECT_EQ(categories(), renamed ? kAfter : kBefore);
      const TextView carried = renamed ? u"Office" : u"Work";
      std::vector<CategoryProp> props;
      std::vector<Text> labels;
      ASSERT_TRUE(loadCategoryProps(volume, props) && loadProfile(volume, u"Job", labels));
      EXPECT_TRUE(find_category_prop(props, carried)) << number;
      EXPECT_EQ(std::count(labels.begin(), labels.end(), carried), 1) << number;
      if (renamed) {
        EXPECT_TRUE(rename(u"Office", u"Work"));
      }
    }
    EXPECT_GT(number, writes ? 4 : 10);
  }
}

TEST_F(RenameLabelTest, AStoreThatFailsIsLeftAsItWas) {
  const std::string before = elsewhere();
  for (int read = 1;; ++read) {
    store.faults.call = read;
    const auto renamed = rename(u"Work", u"Office");
    const bool reached = store.faults.call == 0;
    store.faults.call = 0;
    if (!reached) {
      EXPECT_EQ(renamed, 3);
      EXPECT_GT(read, 10);
      break;
    }
    if (renamed) {  // without the states, which could not be read
      EXPECT_EQ(categories(), kAfter);
      ASSERT_TRUE(history.undo(boxes));
      continue;
    }
    EXPECT_NE(boxes_shown().find("The category was not renamed."), std::string::npos);
    ASSERT_EQ(categories(), kBefore) << read;
  }
  EXPECT_NE(elsewhere(), before);
}

}  // namespace
}  // namespace orvello
