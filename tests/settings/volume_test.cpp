#include "settings/category_props.h"
#include "settings/category_text.h"
#include "settings/pretexts.h"
#include "settings/profiles.h"
#include "tests/settings/settings_fixture.h"

namespace orvello {
namespace {

class VolumeTest : public SettingsTest {
 protected:
  bool profile_read = false;  // the last one
  std::vector<Text> texts(TextView list) {
    std::vector<Text> all;
    loadPreTextToLB(volume, all, list);
    return all;
  }
  std::vector<Text> profile(TextView name) {
    std::vector<Text> labels{u"of the one before"};
    profile_read = loadProfile(volume, name, labels);
    return labels;
  }
  void save_profile(TextView name, std::vector<Text> labels) {
    ListSelection selection{{u"never chosen"}, {}};
    for (Text& label : labels) {
      selection.selected.push_back(static_cast<int>(selection.items.size()));
      selection.items.push_back(std::move(label));
    }
    saveProfileInfoToDatabase(volume, Text(kProfilePrefix).append(name), selection);
  }
};

TEST_F(VolumeTest, PretextsAreUniqueByCaseAndSorted) {
  EXPECT_EQ(savePreTextToDB(volume, u"Lunch with ", kSubjectPretexts), 1);
  EXPECT_EQ(savePreTextToDB(volume, u"Lunch with ", kSubjectPretexts), 0);
  EXPECT_EQ(savePreTextToDB(volume, u"lunch with ", kSubjectPretexts), 1);
  EXPECT_EQ(savePreTextToDB(volume, u"Dinner", kSubjectPretexts), 1);
  EXPECT_EQ(savePreTextToDB(volume, u"Lunch with ", kLocationPretexts), 1);
  EXPECT_EQ(texts(kSubjectPretexts),
            (std::vector<Text>{u"Dinner", u"Lunch with ", u"lunch with "}));
  ChoiceList combo{{u"typed"}, u"edit", 0};
  loadPreTextToCB(volume, combo, kLocationPretexts);
  EXPECT_EQ(combo, (ChoiceList{{u"typed", u"Lunch with "}, u"edit", 0}));
  EXPECT_EQ(boxes_shown(), Messages{});
}

TEST_F(VolumeTest, DeletingTakesTheFirstOfEqualTexts) {
  savePreTextToDB(volume, u"Twice", kSubjectPretexts);
  {
    const MountedVolume mounted(volume);
    const DatabaseHandle list = databases.open(mounted.id(), kSubjectPretexts, 0);
    databases.write(list, 0, {{kPretextText, Text(u"Twice")}});
  }
  EXPECT_EQ(deletePreTextFromDB(volume, u"Twice", kSubjectPretexts), 1);
  EXPECT_EQ(texts(kSubjectPretexts), std::vector<Text>{u"Twice"});
  EXPECT_EQ(deletePreTextFromDB(volume, u"twice", kSubjectPretexts), 0);
  EXPECT_EQ(deletePreTextFromDB(volume, u"Twice", kSubjectPretexts), 1);
  EXPECT_EQ(deletePreTextFromDB(volume, u"Twice", kSubjectPretexts), 0);
}

TEST_F(VolumeTest, FailedMountShowsOneMessageOrNone) {
  const std::pair<DatabaseError, Messages> cases[] = {
      {DatabaseError::disk_full, {"Error: Database mount failed: Disk Full"}},
      {DatabaseError::not_enough_memory, {"Error: Database mount failed: Not Enough Memory"}},
      {DatabaseError::invalid_parameter, {"Error: Database mount failed: Invalid Parameter"}},
      {DatabaseError::sharing_violation,
       {"Error: Database mount failed: In Use By Another Program"}},
      {DatabaseError::access_denied, {"Error: Database mount failed: Access Denied"}},
      {DatabaseError::damaged, {}},
  };
  for (const auto& [reason, messages] : cases) {
    databases.fail_mount = reason;
    EXPECT_EQ(savePreTextToDB(volume, u"x", kSubjectPretexts), 0);
    EXPECT_EQ(boxes_shown(), messages);
    EXPECT_EQ(profile(u"Work"), std::vector<Text>{});
    EXPECT_FALSE(profile_read);
    EXPECT_EQ(boxes_shown(), messages);
    std::vector<MenuItem> menu;
    EXPECT_EQ(listProfilesInMenu(volume, u"All", menu), 0);
    EXPECT_EQ(boxes_shown(), messages);
  }
}

TEST_F(VolumeTest, FailedOpeningNamesItsOperation) {
  const Text saver = u"savePreTextToDB(): Error in call to OpenCreateDB";
  databases.fail_open = DatabaseError::sharing_violation;
  savePreTextToDB(volume, u"x", kSubjectPretexts);
  deletePreTextFromDB(volume, u"x", kSubjectPretexts);
  texts(kSubjectPretexts);
  saveCategoryProps(volume, u"x", 1, 1);
  EXPECT_EQ(boxes_shown(), (Messages{"Error: " + to_utf8(saver), "Error: " + to_utf8(saver),
                                     "Error: loadPreTextToLB(): Error in call to OpenCreateDB",
                                     "Error: Error in call to OpenCreateDB"}));
  profile(u"Work");
  EXPECT_EQ(boxes_shown(), Messages{});

  databases.fail_open = DatabaseError::not_enough_memory;
  texts(kSubjectPretexts);
  profile(u"Work");
  EXPECT_EQ(boxes_shown(), (Messages{"Error: Not enough memory!",
                                     "Error: loadPreTextToLB(): Error in call to OpenCreateDB",
                                     "Error: OpenCreateDB_profile: Not enough memory!"}));
  databases.fail_open = DatabaseError::none;
  databases.fail_create = DatabaseError::disk_full;
  texts(kSubjectPretexts);
  profile(u"Work");
  EXPECT_EQ(boxes_shown(), (Messages{"Error: Database creation failed",
                                     "Error: loadPreTextToLB(): Error in call to OpenCreateDB",
                                     "Error: OpenCreateDB_profile: Database creation failed"}));
}

TEST_F(VolumeTest, FailedReadsStopAndKeepWhatIsStored) {
  for (const TextView text : {u"A", u"B", u"C"}) savePreTextToDB(volume, text, kSubjectPretexts);
  save_profile(u"Work", {u"A", u"B"});
  saveCategoryProps(volume, u"A", 1, 1);
  databases.fail_read_at = 1;
  EXPECT_EQ(texts(kSubjectPretexts), std::vector<Text>{u"A"});
  EXPECT_EQ(savePreTextToDB(volume, u"D", kSubjectPretexts), 0);
  EXPECT_EQ(deletePreTextFromDB(volume, u"C", kSubjectPretexts), 0);
  EXPECT_EQ(profile(u"Work"), std::vector<Text>{u"A"});
  EXPECT_FALSE(profile_read);
  EXPECT_EQ(boxes_shown(), (Messages{"error: loadPreTextToLB(): Failed to read record",
                                     "error: savePreTextToDB(): Failed to read record",
                                     "error: savePreTextToDB(): Failed to read record",
                                     "error: Failed to read record 1"}));
  databases.fail_read_at = 0;
  std::vector<CategoryProp> props{{u"old", 1, 1}};
  loadCategoryProps(volume, props);
  saveCategoryProps(volume, u"A", 2, 2);
  EXPECT_TRUE(props.empty());
  EXPECT_EQ(boxes_shown(),
            (Messages{"error: Failed to read record", "error: Failed to read record"}));
  databases.fail_read_at = -1;
  EXPECT_EQ(texts(kSubjectPretexts).size(), 3u);
  loadCategoryProps(volume, props);
  EXPECT_EQ(props, (std::vector<CategoryProp>{{u"A", 1, 1}}));
}

TEST_F(VolumeTest, FailedWritesSayWhy) {
  const std::pair<DatabaseError, std::string> cases[] = {
      {DatabaseError::not_enough_memory, "Error: Not enough memory"},
      {DatabaseError::invalid_parameter, "Error: Invalid Parameter"},
      {DatabaseError::disk_full, "Error: Disk Full"},
      {DatabaseError::sharing_violation, "Error: In Use By Another Program"},
      {DatabaseError::damaged, "Error: Unknown Error"},
  };
  save_profile(u"Work", {u"kept"});
  for (const auto& [reason, message] : cases) {
    databases.fail_write = reason;
    EXPECT_EQ(savePreTextToDB(volume, u"x", kSubjectPretexts), 0);
    save_profile(u"Work", {u"A", u"B"});
    saveCategoryProps(volume, u"x", 1, 1);
    EXPECT_EQ(boxes_shown(), (Messages{message, message, message}));
    // Nor does one that fails after the removal lose the profile that it replaces.
    databases.fail_write_after = 1;
    save_profile(u"Work", {u"A", u"B"});
    databases.fail_write_after = 0;
    EXPECT_EQ(boxes_shown(), Messages{message});
    EXPECT_EQ(profile(u"Work"), std::vector<Text>{u"kept"});
  }
  deleteSettingsDatabase(volume, u"pfile-Work");
  EXPECT_EQ(boxes_shown(), Messages{"Error: error in CeDeleteDatabaseEx!"});
  databases.fail_write = DatabaseError::none;
  EXPECT_EQ(texts(kSubjectPretexts), std::vector<Text>{});
}

TEST_F(VolumeTest, CategoryPropertiesKeepOneRecordALabel) {
  saveCategoryProps(volume, u"Work", 0x00FF8000, -2);
  saveCategoryProps(volume, u"Home", 5, 1);
  saveCategoryProps(volume, u"work", 6, 0);
  saveCategoryProps(volume, u"Work", 0x00112233, 3);
  std::vector<CategoryProp> props;
  loadCategoryProps(volume, props);
  EXPECT_EQ(props, (std::vector<CategoryProp>{
                       {u"Home", 5, 1}, {u"Work", 0x00112233, 3}, {u"work", 6, 0}}));
  saveCategoryProps(volume, u"Work", 7, -2);
  loadCategoryProps(volume, props);
  EXPECT_EQ(props[1], (CategoryProp{u"Work", 7, -2}));
}

TEST_F(VolumeTest, ProfilesAreReplacedListedAndDeleted) {
  save_profile(u"Work", {u"b", u"a", u"B"});
  savePreTextToDB(volume, u"x", u"pfileWork");
  save_profile(u"Home", {});
  EXPECT_EQ(profile(u"Work"), (std::vector<Text>{u"B", u"a", u"b"}));
  EXPECT_EQ(profile(u"All"), std::vector<Text>{});

  std::vector<MenuItem> menu(5);
  menu[0].command = 60000;
  menu[0].checked = true;
  EXPECT_EQ(listProfilesInMenu(volume, u"Home", menu), 2);
  ASSERT_EQ(menu.size(), 4u);
  EXPECT_FALSE(menu[0].checked);
  EXPECT_EQ(menu[2].text, u"Work");
  EXPECT_EQ(menu[2].command, 60001u);
  EXPECT_FALSE(menu[2].checked);
  EXPECT_EQ(menu[3].text, u"Home");
  EXPECT_EQ(menu[3].command, 60002u);
  EXPECT_TRUE(menu[3].checked);

  deleteSettingsDatabase(volume, u"pfile-Work");
  deleteSettingsDatabase(volume, u"pfile-work");
  ChoiceList combo{{u"old"}, u"old", 0};
  listProfilesInCombo(volume, combo);
  EXPECT_EQ(combo.items, std::vector<Text>{u"Home"});
  EXPECT_EQ(listProfilesInMenu(volume, u"All", menu), 1);
  EXPECT_TRUE(menu[0].checked);
  EXPECT_EQ(boxes_shown(), Messages{});
}

TEST_F(VolumeTest, ProfileFiltersByExactLabel) {
  SettingsRecord settings;
  EXPECT_TRUE(profileAllowsCategory(settings, u"anything"));
  settings.activeprofilename = u"Empty";
  EXPECT_FALSE(profileAllowsCategory(settings, u""));
  settings.profile_labels = {u"Work", u"Home"};
  EXPECT_TRUE(profileAllowsCategory(settings, u"Home"));
  EXPECT_FALSE(profileAllowsCategory(settings, u"home"));
}

TEST_F(VolumeTest, AnActiveProfileThatCannotBeReadHidesNothing) {
  save_profile(u"Work", {u"A", u"B"});
  SettingsRecord settings;
  settings.activeprofilename = u"Work";
  const auto shows = [&](TextView label) {
    load_active_profile(volume, settings);
    return profileAllowsCategory(settings, label);
  };
  EXPECT_TRUE(shows(u"A") && !shows(u"C"));
  const std::string unread =
      "Error: The profile \"Work\" could not be read. All appointments are "
      "shown.";
  int failed = 0;
  for (int reads = 0; failed == reads; ++reads) {
    databases.fail_read_after = reads;
    if (!shows(u"C")) continue;
    ++failed;
    EXPECT_EQ(boxes_shown().back(), unread);
  }
  EXPECT_EQ(failed, 6) << "listing, opening, counting and each record with the end";
  databases.fail_read_after = -1;
  databases.fail_mount = DatabaseError::sharing_violation;
  EXPECT_TRUE(shows(u"C"));
  EXPECT_EQ(boxes_shown().back(), unread);
  databases.fail_mount = DatabaseError::none;
  deleteSettingsDatabase(volume, u"pfile-Work");
  EXPECT_TRUE(shows(u"C")) << "it is not there, and is not made";
  EXPECT_EQ(boxes_shown(), Messages{"Error: The profile \"Work\" is not there any more. All "
                                    "appointments are shown."});
  save_profile(u"Work", {});
  EXPECT_FALSE(shows(u"C")) << "an empty one hides everything";
  EXPECT_EQ(boxes_shown(), Messages{});
}

// Other programs may have written longer ones.
TEST_F(VolumeTest, LabelsAndNamesAreCutToTheirLengths) {
  const Text fits(29, u'x'), longer(30, u'x'), endless(10000, u'x');
  save_profile(u"Work", {fits, longer, endless, u"a,,b"});
  EXPECT_EQ(profile(u"Work"), (std::vector<Text>{u"a,,b", fits, fits, fits}));
  saveCategoryProps(volume, endless, 1, 2);
  std::vector<CategoryProp> props;
  loadCategoryProps(volume, props);
  EXPECT_EQ(props, (std::vector<CategoryProp>{{fits, 1, 2}}));
  save_profile(Text(31, u'n'), {});
  save_profile(endless, {});
  std::vector<MenuItem> menu(2);
  EXPECT_EQ(listProfilesInMenu(volume, Text(31, u'n'), menu), 3);
  EXPECT_EQ(menu[3].text, Text(31, u'n'));
  EXPECT_EQ(menu[4].text, Text(31, u'x'));
  EXPECT_EQ(savePreTextToDB(volume, endless, kSubjectPretexts), 1);
  EXPECT_EQ(texts(kSubjectPretexts), std::vector<Text>{endless});

  SettingsRecord settings;
  settings.activeprofilename = u"Work";
  settings.profile_labels = {fits, u"a,,b"};
  EXPECT_TRUE(profileAllowsCategory(settings, u"a,,b"));
  for (const Text& text : {longer, endless, Text(u","), Text(u"a,b"), Text()})
    EXPECT_FALSE(profileAllowsCategory(settings, text)) << to_utf8(text);
}

TEST(CategoryText, LabelsAreFoundBehindAtMostOneBlank) {
  EXPECT_TRUE(categoryTextHasLabel(u"Work, Home", u"Home"));
  EXPECT_TRUE(categoryTextHasLabel(u"Work,Home", u"Work"));
  EXPECT_FALSE(categoryTextHasLabel(u"Work,  Home", u"Home"));
  EXPECT_FALSE(categoryTextHasLabel(u"Work ,Home", u"Work"));
  EXPECT_FALSE(categoryTextHasLabel(u"Workshop", u"Work"));
  EXPECT_FALSE(categoryTextHasLabel(u"", u""));
  EXPECT_TRUE(categoryTextHasLabel(u"Work,", u""));
  EXPECT_TRUE(categoryTextHasLabel(u"Work,, ,Home", u"Home"));
  EXPECT_FALSE(categoryTextHasLabel(Text(10000, u','), u"Home"));
}

TEST(CategoryText, TrimmingCountingAndDuplicates) {
  const std::pair<TextView, TextView> cases[] = {
      {u"  a b ", u"a b"}, {u" ", u""}, {u"", u""}, {u"\ta ", u"\ta"}, {u"a", u"a"}};
  for (const auto& [given, wanted] : cases) {
    Text text(given);
    trimSpaces(text);
    EXPECT_EQ(text, wanted);
  }
  EXPECT_EQ(countChar(u"a,b,,", u','), 3);
  EXPECT_EQ(countChar(u"", u','), 0);
  std::vector<Text> labels{u"b", u"a", u"b", u"B", u"a"};
  removeDuplicateLabels(labels);
  EXPECT_EQ(labels, (std::vector<Text>{u"b", u"a", u"B"}));
}

TEST(CategoryText, OnlyLabelsWithoutAStoredColorUseThePalette) {
  const auto colors = buildCategoryColors({u"A", u"B", u"C"}, {{u"B", 0x123456, 7}});
  ASSERT_EQ(colors.size(), 3u);
  EXPECT_EQ(colors[0], (CategoryColor{rgb(119, 119, 255), 0}));
  EXPECT_EQ(colors[1], (CategoryColor{0x123456, 7}));
  EXPECT_EQ(colors[2], (CategoryColor{rgb(159, 255, 159), 0}));
  const auto many = buildCategoryColors(std::vector<Text>(9, u"x"), {});
  EXPECT_EQ(many[7].color, rgb(255, 255, 255));
  EXPECT_EQ(many[8].color, many[0].color);
}

}  // namespace
}  // namespace orvello
