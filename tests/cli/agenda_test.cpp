// The agenda's two forms over a store in memory.
#include "cli/agenda.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/commands.h"
#include "hosts/headless/headless_host.h"
#include "settings/profiles.h"
#include "settings/registry_access.h"
#include "store/day_agenda.h"

namespace orvello {
namespace {

class Agenda : public ::testing::Test {
 protected:
  static Day day(int day_of_november) { return day_of(2026, 11, 1) - 1 + day_of_november; }
  static LocalSeconds at(int day_of_november, int hour, int minute = 0) {
    return midnight_of(day(day_of_november)) + hour * 3600 + minute * 60;
  }

  static AppointmentRecord record(TextView subject, LocalSeconds start, LocalSeconds end) {
    AppointmentRecord made;
    made.uid = to_utf8(subject);
    made.fields.subject = subject;
    made.start = start;
    made.end = end;
    made.fields.start = to_calendar_date(start);
    made.fields.end = to_calendar_date(end);
    return made;
  }
  void put(const AppointmentRecord& record) { ASSERT_NE(store.put(record), 0); }
  void put_all_day(TextView subject, int first, int last) {
    AppointmentRecord made = record(subject, at(first, 0), at(last, 23, 59));
    made.fields.all_day = true;
    put(made);
  }

  std::string plain_text(int from, int to) {
    std::ostringstream out;
    const auto written = write_agenda_text(store, day(from), day(to), settings, out);
    EXPECT_TRUE(written) << written.reason();
    return out.str();
  }
  std::string text(int from, int to, bool clock24 = true,
                   const LocaleData& locale = english_locale()) {
    settings.timeformat = clock24 ? 1 : 0;
    settings.locale = locale;
    return plain_text(from, to);
  }
  std::string json(int from, int to) {
    std::ostringstream out;
    const auto written = write_agenda_json(store, day(from), day(to), out);
    EXPECT_TRUE(written) << written.reason();
    return out.str();
  }
  static std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
    return found;
  }

  HeadlessClock clock;
  MemoryStore store{clock};
  SettingsRecord settings;
};

TEST_F(Agenda, ASpanStandsUnderEachOfItsDays) {
  put(record(u"Trip", at(5, 20), at(8, 7)));
  EXPECT_EQ(text(6, 8),
            "Friday, November 6, 2026\n"
            "  multiday         Trip\n"
            "\n"
            "Saturday, November 7, 2026\n"
            "  multiday         Trip\n"
            "\n"
            "Sunday, November 8, 2026\n"
            "  multiday-7:00    Trip\n");
  put_all_day(u"Fair", 4, 5);
  EXPECT_EQ(text(5, 5),
            "Thursday, November 5, 2026\n"
            "  All Day          Fair\n"
            "  20:00-multiday   Trip\n");
  EXPECT_EQ(text(9, 9), "No Appointments\n");
}

TEST_F(Agenda, FollowsTheLocalesOrderAndTheClock) {
  put(record(u"Обед", at(6, 13), at(6, 14)));
  EXPECT_EQ(text(6, 6, true, russian_locale()),
            "пятница, 6 ноября 2026\n"
            "  13:00-14:00      Обед\n");
  EXPECT_NE(text(6, 6, false).find("1:00p-2:00p"), std::string::npos) << text(6, 6, false);
}

// What came from somebody else's file must not move a terminal's cursor.
TEST_F(Agenda, ControlCharactersNeverReachATerminal) {
  AppointmentRecord made = record(u"One\x1B[2J\nTwo\x7F", at(6, 9), at(6, 10));
  made.fields.location = u"Room\r7";
  put(made);
  EXPECT_EQ(text(6, 6),
            "Friday, November 6, 2026\n"
            "  9:00-10:00       One [2J Two  [Room 7]\n");
  EXPECT_NE(json(6, 6).find(R"("One\u001b[2J\u000aTwo)"), std::string::npos);
}

TEST_F(Agenda, JsonTellsEveryField) {
  AppointmentRecord made = record(u"Say \"hi\" \\ Привет 🌙", at(6, 9, 15), at(6, 10));
  made.fields.location = u"Room 7";
  made.fields.categories = u"Work,  Big plans ,,Home";
  made.fields.busy_status = BusyStatus::out_of_office;
  made.fields.sensitivity = 2;
  made.fields.reminder_set = true;
  made.fields.reminder_minutes = 0;
  put(made);
  EXPECT_EQ(json(6, 6),
            "[\n  {\"oid\": 1, \"start\": \"2026-11-06T09:15:00\", "
            "\"end\": \"2026-11-06T10:00:00\", \"allDay\": false, "
            "\"subject\": \"Say \\\"hi\\\" \\\\ Привет 🌙\", \"location\": \"Room 7\", "
            "\"categories\": [\"Work\", \"Big plans\", \"Home\"], \"recurring\": false, "
            "\"busyStatus\": \"outOfOffice\", \"private\": true, \"reminderMinutes\": 0}\n]\n");
  EXPECT_EQ(json(7, 7), "[]\n");
}

TEST_F(Agenda, JsonEndsAllDayItemsOnTheDayAfter) {
  put_all_day(u"Fair", 6, 7);
  const std::string answer = json(7, 7);
  EXPECT_NE(answer.find("\"start\": \"2026-11-06\", \"end\": \"2026-11-08\", \"allDay\": true"),
            std::string::npos)
      << answer;
  EXPECT_NE(answer.find("\"reminderMinutes\": null"), std::string::npos);
  EXPECT_NE(answer.find("\"categories\": []"), std::string::npos);
}

TEST_F(Agenda, ManyOfASeriesAreOneRowWithTheirNumber) {
  AppointmentRecord tick = record(u"Tick", at(6, 0), at(6, 0));
  tick.rules = "RRULE:FREQ=SECONDLY;UNTIL=20261106T002501";
  put(tick);
  EXPECT_NE(text(6, 6).find("  0:25-0:25        and 2 more: Tick\n"), std::string::npos);
  const std::string answer = json(6, 6);
  EXPECT_NE(answer.find("\"recurring\": true"), std::string::npos);
  EXPECT_EQ(answer.find("\"occurrences\": 2}"), answer.rfind("\"occurrences\":"));
  EXPECT_NE(answer.find("\"occurrences\": 2}"), std::string::npos);
}

// Long spans are read in parts: of 31 days first, here.
TEST_F(Agenda, WhatGoesOnFromPartToPartStandsOnceForEachDay) {
  put(record(u"Before", at(-2, 9), at(3, 10)));
  put(record(u"Long", at(25, 9), at(200, 10)));
  put(record(u"Edge", at(31, 23), at(32, 1)));
  put(record(u"Last", at(400, 9), at(400, 10)));
  const std::string all = json(1, 400), rows = text(1, 400, true);
  for (const auto& [subject, days] :
       {std::pair{"Before", 3u}, {"Long", 176u}, {"Edge", 2u}, {"Last", 1u}}) {
    EXPECT_EQ(count(all, subject), 1u) << subject;
    EXPECT_EQ(count(rows, subject), days) << subject;
  }
  EXPECT_LT(all.find("Before"), all.find("Long"));
  EXPECT_LT(all.find("Long"), all.find("Edge"));
  EXPECT_EQ(count(rows, "2026\n  "), 3u + 6 + 31);
}

// Whatever the Day view lists stands here, in the same words and order.
TEST_F(Agenda, RowsAreTheDayViews) {
  put(record(u"Trip", at(5, 20), at(8, 7)));
  put(record(u"Same start, longer", at(6, 9), at(6, 11)));
  AppointmentRecord made = record(u"Same start", at(6, 9), at(6, 10));
  made.fields.location = Text(30, u'x');
  put(made);
  put_all_day(u"Fair", 6, 7);
  made = record(u"Standup", at(2, 22), at(3, 1));
  RecurrencePattern pattern;
  pattern.pattern_start_date = to_calendar_date(day(2));
  pattern.start_time = 22.0 / 24;
  pattern.end_time = 1.0 / 24;
  pattern.duration = 180;
  made.pattern = pattern;
  put(made);
  made = record(u"Hidden", at(6, 10), at(6, 11));
  made.fields.categories = u"Work, Home";
  put(made);
  settings.showlocation = 1;
  settings.locale = english_locale();
  settings.activeprofilename = u"Work";
  settings.profile_labels = {u"", u"Work"};
  const auto passes = [this](TextView categories) {
    return profileAllowsCategory(settings, categories);
  };
  const auto application = store.create_application(false);
  for (int clock24 : {0, 1})
    for (int of_november : {6, 7, 8, 20}) {
      settings.timeformat = clock24;
      std::string wanted;
      const auto agenda = full_agenda(application->default_folder(kFolderCalendar)->items().get(),
                                      day(of_november), settings, passes);
      for (const DayRow& row : agenda.rows) {
        if (row.continues()) wanted.pop_back();
        std::string line = row.continues() ? " " : "  " + to_utf8(row.time);
        if (!row.continues()) line.resize(std::max<std::size_t>(line.size() + 2, 19), ' ');
        wanted += line + to_utf8(row.subject) + "\n";
      }
      const std::string shown = plain_text(of_november, of_november);
      EXPECT_EQ(shown.rfind("Profile: Work\n\n", 0), 0u) << shown;
      EXPECT_EQ(shown.substr(shown.find("2026\n") + 5), wanted);
    }
}

TEST_F(Agenda, FollowsTheStoredClockAndProfile) {
  AppointmentRecord made = record(u"Shown", at(6, 13), at(6, 14));
  made.fields.categories = u"Home";
  put(made);
  put(record(u"Hidden", at(6, 9), at(6, 10)));
  MemoryRegistry registry;
  MemoryRecordDatabases databases;
  MemoryFiles files;
  HeadlessBoxes boxes;
  const SettingsVolume volume{databases, boxes, files};
  const auto shown = [&] {
    load_agenda_settings(settings, registry, volume, english_locale());
    return plain_text(6, 6);
  };
  EXPECT_NE(shown().find("Hidden"), std::string::npos);
  EnsureSettingsKey(registry);
  WriteTextSetting(registry, u"activeprofilename", u"At home");
  const std::string all =
      "Friday, November 6, 2026\n  9:00a-10:00a     Hidden\n"
      "  1:00p-2:00p      Shown\n";
  EXPECT_EQ(shown(), all) << "there is no such profile";
  EXPECT_EQ(databases.mounts, 0) << "listing makes no volume";
  EXPECT_EQ(boxes.shown.size(), 1u);
  databases.on_volume_created = [&](TextView path) { files.present.emplace(path); };
  saveProfileInfoToDatabase(volume, u"pfile-At home", {{u"Home"}, {0}});
  EXPECT_EQ(shown(), "Profile: At home\n\nFriday, November 6, 2026\n  1:00p-2:00p      Shown\n");
  EXPECT_NE(json(6, 6).find("Hidden"), std::string::npos);
  databases.fail_mount = DatabaseError::damaged;
  EXPECT_EQ(shown(), all) << "it cannot be read";
  EXPECT_EQ(boxes.shown.size(), 2u);
}

TEST_F(Agenda, AStoreThatCannotBeReadIsAFailureWithItsReason) {
  store.faults.logon = true;
  store.faults.reason = "calendar.db is in use by another program.";
  std::ostringstream out, err;
  EXPECT_EQ(run_agenda(CommandLine{}, store, clock, settings, out, err), 1);
  EXPECT_EQ(out.str(), "");
  EXPECT_EQ(err.str(), "orvello: calendar.db is in use by another program.\n");
}

}  // namespace
}  // namespace orvello
