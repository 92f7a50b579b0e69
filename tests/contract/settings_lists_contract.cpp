// The settings sheet's pages of pretexts, profiles and times.
#include "ports/messages.h"
#include "resources/editor_ids.h"
#include "resources/ids.h"
#include "resources/pretext_page_ids.h"
#include "resources/profiles_page_ids.h"
#include "resources/times_page_ids.h"
#include "settings/category_list.h"
#include "settings/pretexts.h"
#include "settings/profiles.h"
#include "tests/appointments.h"
#include "tests/contract/settings_contract.h"

namespace orvello::test {
namespace {

using Texts = std::vector<Text>;

struct ListsOf {
  SettingsDesk& desk;

  Texts pretexts(TextView list) const {
    Texts texts;
    loadPreTextToLB(desk.volume, texts, list);
    return texts;
  }
  Texts rows(int control) const { return desk.dialog().list(control)->rows(); }
  Texts names() const { return desk.dialog().choice(kProfilesName)->rows(); }
  Texts selected() const {
    Texts texts;
    for (const int row : desk.dialog().list(kProfilesList)->selected())
      texts.push_back(rows(kProfilesList).at(static_cast<std::size_t>(row)));
    return texts;
  }
  Texts profile(TextView name) const {
    Texts labels;
    EXPECT_TRUE(loadProfile(desk.volume, name, labels));
    return labels;
  }
  void labels(const Texts& labels) const {
    for (const Text& label : labels) addCategory(desk.volume, label);
  }
  void save(TextView name, const Texts& labels) const {
    std::vector<int> all;
    for (std::size_t i = 0; i < labels.size(); ++i) all.push_back(static_cast<int>(i));
    EXPECT_TRUE(
        saveProfileInfoToDatabase(desk.volume, Text(kProfilePrefix).append(name), {labels, all}));
  }
};

TEST_P(SettingsContract, PretextsAreAddedAndDeletedAtOnce) {
  const ListsOf lists{*desk};
  const Text longest(100, u'ж');
  const int result = desk->open(kPagePretext, [&] {
    EXPECT_EQ(desk->bench->focused(), kPretextEdit);
    EXPECT_EQ(desk->text(kPretextChoice), u"Subject text");
    EXPECT_EQ(lists.rows(kPretextList).size(), 20u);
    const auto add = [&](TextView text) {
      desk->bench->type(text);
      desk->bench->key(kKeyReturn);
      EXPECT_EQ(desk->text(kPretextEdit), u"");
      EXPECT_EQ(desk->bench->focused(), kPretextEdit);
    };
    add(u"Visit ");  // there already
    EXPECT_EQ(lists.rows(kPretextList).size(), 20u);
    add(u"visit ");
    add(longest);
    EXPECT_EQ(lists.rows(kPretextList).back(), longest.substr(0, 79));
    desk->bench->type(u"  ");
    desk->tap(kPretextAdd);
    desk->tap(kPretextDelete);  // none is selected
    EXPECT_EQ(lists.rows(kPretextList).size(), 22u);
    EXPECT_EQ(lists.pretexts(kSubjectPretexts).size(), 22u);

    // The last is deleted first: who cannot delete any more keeps those above it.
    for (const int row : {0, 1, 2}) desk->bench->tap_row(kPretextList, row);
    const Texts before = lists.rows(kPretextList);
    desk->device.databases.fail_write = DatabaseError::disk_full;
    desk->device.databases.fail_write_after = 1;
    desk->tap(kPretextDelete);
    EXPECT_EQ(desk->boxes_shown(), Messages{"Error: Disk Full"});
    desk->type(kPretextEdit, u"unsaved");
    desk->tap(kPretextAdd);
    EXPECT_EQ(desk->boxes_shown(), Messages{"Error: Disk Full"});
    EXPECT_EQ(desk->text(kPretextEdit), u"unsaved");
    desk->device.databases.fail_write = DatabaseError::none;
    Texts left = before;
    left.erase(left.begin() + 2);
    EXPECT_EQ(lists.rows(kPretextList), left);
    // Another program deletes one of the two that are still selected.
    deletePreTextFromDB(desk->volume, before[1], kSubjectPretexts);
    desk->tap(kPretextDelete);
    left.erase(left.begin(), left.begin() + 2);
    EXPECT_EQ(lists.rows(kPretextList), left);
    EXPECT_EQ(lists.pretexts(kSubjectPretexts).size(), left.size());

    desk->choose(kPretextChoice, 1);
    EXPECT_EQ(lists.rows(kPretextList), Texts());
    desk->type(kPretextEdit, u"Room 1");
    desk->tap(kPretextAdd);
    desk->device.databases.fail_read_at = 0;
    desk->choose(kPretextChoice, 0);
    EXPECT_EQ(desk->boxes_shown(), Messages{"error: loadPreTextToLB(): Failed to read record"});
    EXPECT_EQ(lists.rows(kPretextList), Texts());
    desk->device.databases.fail_read_at = -1;
  });
  EXPECT_EQ(result, kSheetCancelled) << "and yet";
  EXPECT_EQ(lists.pretexts(kLocationPretexts), Texts{u"Room 1"});
  EXPECT_EQ(desk->boxes_shown(), Messages());
}

TEST_P(SettingsContract, ProfilesAreSavedDeletedAndShown) {
  const ListsOf lists{*desk};
  const Text longest(31, u'n');
  lists.labels({u"Work", u"Home", u"Garden"});
  lists.save(u"w", {u"Work", u"Gone"});
  lists.save(u"Home", {u"Home", u"home"});
  lists.save(longest, {});
  const int result = desk->open(kPageProfiles, [&] {
    EXPECT_EQ(lists.names(), (Texts{u"Home", longest, u"w"}));
    EXPECT_EQ(lists.rows(kProfilesList), (Texts{u"Work", u"Home", u"Garden"}));
    EXPECT_EQ(lists.selected(), Texts{u"Home"});
    desk->choose(kProfilesName, 2);
    EXPECT_EQ(lists.selected(), Texts{u"Work"});
    desk->tap(kProfilesName);
    desk->bench->key(kKeyUp);
    EXPECT_EQ(desk->text(kProfilesName), longest);
    EXPECT_EQ(lists.selected(), Texts());
    desk->bench->tap_row(kProfilesList, 2);
    EXPECT_EQ(lists.selected(), Texts{u"Garden"}) << "not taken back by leaving the name";
    desk->tap(kProfilesSave);
    EXPECT_EQ(lists.profile(longest), Texts{u"Garden"});

    // What is typed leaves the labels alone, and becomes 24 characters without
    // blanks.
    desk->type(kProfilesName, u" w");
    desk->type(kProfilesName, u"  " + Text(60, u'x'));
    EXPECT_EQ(lists.selected(), Texts{u"Garden"});
    desk->tap(kProfilesSave);
    EXPECT_EQ(desk->text(kProfilesName), Text(22, u'x'));
    desk->type(kProfilesName, u" w ");
    desk->tap(kProfilesClear);
    EXPECT_EQ(lists.selected(), Texts());
    desk->bench->tap_row(kProfilesList, 1);
    desk->tap(kProfilesSave);
    EXPECT_EQ(lists.profile(u"w"), Texts{u"Home"}) << "replaced, and not added to";
    EXPECT_EQ(lists.names(), (Texts{u"Home", longest, u"w", Text(22, u'x')}));
    EXPECT_EQ(desk->device.boxes.hands, 3);
    EXPECT_EQ(desk->boxes_shown(), Messages());

    for (const TextView refused : {u"", u"  ", u"All", u" All "}) {
      desk->dialog().set_text(kProfilesName, refused);
      desk->tap(kProfilesSave);
      EXPECT_EQ(desk->bench->focused(), kProfilesName);
    }
    const std::string empty = "Error: Must enter a profile name!";
    const std::string all = "Error: Profile name cannot be \"All\"! Please use a different name.";
    EXPECT_EQ(desk->boxes_shown(), (Messages{empty, empty, all, all}));
    EXPECT_EQ(lists.names().size(), 4u);

    desk->choose(kProfilesName, 2);
    desk->tap(kProfilesDelete);
    EXPECT_EQ(lists.names(), (Texts{u"Home", longest, Text(22, u'x')}));
    EXPECT_EQ(desk->text(kProfilesName), u"Home");
    EXPECT_EQ(lists.selected(), Texts{u"Home"});
    EXPECT_EQ(desk->device.boxes.hands, 4);
    EXPECT_EQ(desk->commands.reloads, 0) << "none of them is the active one";

    // The Category page renames a label, here and in the profile; then another one is removed.
    const auto meanwhile = [&](const std::function<void()>& what) {
      desk->show_page(kPageCategory);
      what();
      desk->show_page(kPageProfiles);
    };
    meanwhile([&] {
      removeCategory(desk->volume, u"Home");
      lists.labels({u"House"});
      lists.save(u"Home", {u"House"});
    });
    EXPECT_EQ(lists.rows(kProfilesList), (Texts{u"Work", u"Garden", u"House"}));
    EXPECT_EQ(lists.selected(), Texts{u"House"});
    desk->bench->tap_row(kProfilesList, 1);
    meanwhile([&] { removeCategory(desk->volume, u"Work"); });
    EXPECT_EQ(lists.selected(), (Texts{u"Garden", u"House"})) << "as the person left them";
    const int menus = desk->commands.profile_menus;
    desk->ok();
    EXPECT_EQ(desk->commands.profile_menus, menus + 1);
  });
  EXPECT_EQ(result, kSheetOk);
}

TEST_P(SettingsContract, AProfileThatCannotBeReadIsNotOverwrittenByAccident) {
  const ListsOf lists{*desk};
  lists.labels({u"Work", u"Home"});
  lists.save(u"Job", {u"Work"});
  MemoryRecordDatabases& faults = desk->device.databases;
  desk->open(kPageProfiles, [&] {
    faults.fail_read_at = 0;
    desk->choose(kProfilesName, 0);
    faults.fail_read_at = -1;
    EXPECT_EQ(desk->boxes_shown(), Messages{"error: Failed to read record 1"});
    EXPECT_EQ(lists.selected(), Texts());
    desk->device.boxes.answers = {BoxAnswer::no};
    desk->tap(kProfilesSave);
    EXPECT_EQ(desk->boxes_shown(), Messages{"Warning: The profile \"Job\" could not be read. "
                                            "Replace it by what is selected?"});
    EXPECT_EQ(lists.profile(u"Job"), Texts{u"Work"});
    desk->tap(kProfilesSave);
    EXPECT_EQ(desk->boxes_shown().size(), 1u);
    EXPECT_EQ(lists.profile(u"Job"), Texts());
  });
  desk->open(kPageProfiles, [&] {
    for (const DatabaseError fault : {DatabaseError::disk_full, DatabaseError::none}) {
      faults.fail_write = fault;
      faults.fail_read_after = fault == DatabaseError::none ? 0 : -1;
      desk->tap(kProfilesSave);
      desk->tap(kProfilesDelete);
    }
    faults.fail_read_after = -1;
    EXPECT_EQ(lists.names(), Texts{u"Job"});
  });
  EXPECT_EQ(desk->boxes_shown(),
            (Messages{"Error: Disk Full", "Error: error in CeDeleteDatabaseEx!",
                      "error: Failed to read record 1", "error: Failed to read record 1"}));
  EXPECT_EQ(desk->device.boxes.hands, 1) << "only of the one that was agreed to";
}

TEST_P(SettingsContract, TheViewsFollowTheActiveProfileAtOnce) {
  AppointmentRecord record = one_hour({11, 21, 2026}, 10, u"Planting");
  record.fields.categories = u"Garden";
  desk->device.store.put(record);
  const ListsOf lists{*desk};
  lists.labels({u"Work", u"Garden"});
  lists.save(u"Job", {u"Work"});
  desk->store(u"activeprofilename", u"Job");
  desk->start(ViewMode::day);
  const auto first = [&] { return desk->program->day().agenda().rows.at(0).oid; };
  const auto checked = [&] {
    std::vector<std::uint32_t> commands;
    for (const MenuItem& item : desk->device.menu_bar.menu(kCommandProfileMenu))
      if (item.checked) commands.push_back(item.command);
    return commands;
  };
  EXPECT_LT(first(), 0);
  desk->open(kPageProfiles, [&] {
    desk->bench->tap_row(kProfilesList, 1);
    desk->tap(kProfilesSave);
    EXPECT_GT(first(), 0);
    desk->bench->tap_row(kProfilesList, 1);
    desk->tap(kProfilesSave);
    EXPECT_LT(first(), 0);
    EXPECT_EQ(checked(), std::vector<std::uint32_t>{60001});
    desk->tap(kProfilesDelete);
    EXPECT_GT(first(), 0);
    EXPECT_EQ(checked(), std::vector<std::uint32_t>{60000});
    EXPECT_EQ(desk->device.menu_bar.menu(kCommandProfileMenu).size(), 1u);
  });
  EXPECT_EQ(desk->stored_text(u"activeprofilename"), u"All");
  EXPECT_EQ(desk->boxes_shown(), Messages());
}

TEST_P(SettingsContract, TimesAreStoredWhenTheSheetIsApplied) {
  desk->store(u"defaultStartTimeIndex", 99);
  desk->settings.default_end = {7, 0};  // as a start of the program takes what is missing
  const auto choices = [&] {
    std::vector<int> rows;
    for (const int control : {kTimesMarks[0], kTimesMarks[1], kTimesMarks[2], kTimesMarks[3],
                              kTimesStart, kTimesEnd, kTimesUnit})
      rows.push_back(desk->row(control));
    return rows;
  };
  desk->open(kPageTimes, [&] {
    EXPECT_EQ(choices(), (std::vector<int>{12, 24, 34, 42, 24, 24, 0}));
    EXPECT_EQ(desk->text(kTimesAmount), u"30");
    EXPECT_EQ(desk->row(kTimesAmount), 9);
    desk->choose(kTimesMarks[0], 3);
  });
  EXPECT_EQ(desk->settings.timeA, 12) << "cancelled";
  EXPECT_EQ(desk->settings.default_end, (HourMinute{12, 0})) << "read when the sheet opened";

  const std::string message = "Error: Default End time must be greater or equal to the Start time!";
  const int result = desk->open(kPageTimes, [&] {
    desk->choose(kTimesStart, 47);
    EXPECT_EQ(desk->row(kTimesEnd), 1);
    desk->choose(kTimesStart, 20);
    EXPECT_EQ(desk->row(kTimesEnd), 21);
    desk->choose(kTimesEnd, 20);
    EXPECT_EQ(desk->boxes_shown(), Messages());
    desk->choose(kTimesEnd, 19);
    EXPECT_EQ(desk->boxes_shown(), Messages{message});
    EXPECT_EQ(desk->row(kTimesEnd), 21);
    desk->choose(kTimesMarks[1], 20);
    // The clock may be chosen on another page; what is chosen here stays.
    desk->show_page(kPageDisplay);
    desk->settings.timeformat = 1;
    desk->show_page(kPageTimes);
    EXPECT_EQ(desk->text(kTimesMarks[1]), u"10:00");
    EXPECT_EQ(choices(), (std::vector<int>{12, 20, 34, 42, 20, 21, 0}));
    desk->tap(kTimesRemind);
    desk->type(kTimesAmount, u"soon");
    desk->choose(kTimesUnit, 3);
    EXPECT_EQ(desk->text(kTimesUnit), u"weeks(s)");
    desk->ok();
  });
  EXPECT_EQ(result, kSheetOk);
  EXPECT_EQ(desk->settings.time_fraction[1], static_cast<double>(static_cast<float>(10 / 24.0)));
  EXPECT_EQ(desk->settings.default_start, (HourMinute{10, 0}));
  EXPECT_EQ(desk->settings.default_end, (HourMinute{10, 30}));
  const std::pair<TextView, std::int32_t> stored[] = {
      {u"timeA", 12},        {u"timeB", 20},         {u"timeC", 34},
      {u"timeD", 42},        {u"defremindme", 1},    {u"defaultStartTimeIndex", 20},
      {u"defremindtime", 0}, {u"defremindunits", 3}, {u"defaultEndTimeIndex", 21},
  };
  for (const auto& [name, number] : stored) EXPECT_EQ(desk->number(name), number) << to_utf8(name);
  EXPECT_EQ(desk->settings.defremindunits, 3);
  EXPECT_EQ(desk->settings.defremindme, 1);
}

TEST_P(SettingsContract, DayViewAndNewAppointmentsFollowTheTimes) {
  desk->device.store.put(one_hour({11, 21, 2026}, 10, u"Until eleven"));
  desk->store(u"rowcolorindex", 1);
  desk->start(ViewMode::day);
  const auto ground = [&]() -> std::optional<Color> {  // where it can be seen
    const auto* list =
        dynamic_cast<HeadlessReport*>(desk->watched.modeless->report(kControlDayList));
    if (!list) return std::nullopt;
    return list->content().rows.at(0).background;
  };
  const auto morning = ground();
  desk->open(kPageTimes, [&] {
    desk->choose(kTimesMarks[1], 20);
    desk->choose(kTimesStart, 18);
    desk->choose(kTimesEnd, 20);
    desk->tap(kTimesRemind);
    desk->type(kTimesAmount, u"2");
    desk->choose(kTimesUnit, 2);
    desk->ok();
  });
  if (morning) {
    EXPECT_NE(ground(), morning) << "eleven is day now";
  }
  desk->bench->in_front([&] {
    EXPECT_EQ(desk->text(kLineStartTime), u"9:00 AM");
    EXPECT_EQ(desk->text(kLineEndTime), u"10:00 AM");
    EXPECT_TRUE(desk->checked(kEditorRemind));
    EXPECT_EQ(desk->text(kLineAmount), u"2");
    EXPECT_EQ(desk->text(kLineUnit), u"day(s)");
  });
  desk->device.window.command(kCommandNew);
  desk->settle();
  EXPECT_EQ(desk->boxes_shown(), Messages());
}

}  // namespace
}  // namespace orvello::test
