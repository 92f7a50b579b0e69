// Copies of good days, what is left of bad ones, and how the one replaces the other.
#include "store/embedded/calendar_copies.h"
#include "calendar/iso_date.h"
#include "files/system_files.h"
#include "store/embedded/calendar_check.h"
#include "store/embedded/calendar_restore.h"
#include "store/embedded/salvage.h"
#include "tests/processes.h"
#include "tests/store/embedded/store_file.h"

namespace orvello::test {
namespace {

namespace fs = std::filesystem;

constexpr int kAppointments = 300;

MonthDayYear november(int day) { return {11, day, 2026}; }

class CalendarCopiesTest : public StoreFile {
 protected:
  void SetUp() override { add("first", kAppointments); }
  void add(const std::string& name, int count) {
    auto store = open();
    ASSERT_TRUE(store->begin());
    for (int i = 0; i < count; ++i) {
      AppointmentRecord one = record(name + std::to_string(i));
      // Some of them longer than a page.
      if (i % 50 == 0) one.fields.body = Text(9000, static_cast<char16_t>(u'a' + i % 26));
      one.recipients = {{u"Ann", u"ann@example.com"}};
      if (i % 10 == 0) {
        one.rules = "RRULE:FREQ=DAILY;COUNT=5\n";
        one.exceptions.resize(1);
        one.exceptions[0].original_start = one.start + kSecondsPerDay;
        one.exceptions[0].deleted = true;
      }
      ASSERT_NE(store->put(one), 0);
    }
    ASSERT_TRUE(store->commit());
  }
  CalendarCopies copies() const { return CalendarCopies(path); }
  std::vector<std::string> names(MonthDayYear today) const {
    std::vector<std::string> result;
    for (const auto& copy : copies().list(today)) result.push_back(iso_text(copy.day));
    return result;
  }
  // Overwrites some pages, from 1.
  void damage(std::initializer_list<int> pages) const {
    std::string bytes = contents();
    for (const int page : pages) bytes.replace((page - 1) * 4096, 4096, 4096, '\x5A');
    write(bytes);
  }
  std::string kept() const { return directory / "calendar-replaced"; }
};

TEST_F(CalendarCopiesTest, OneIsMadeADayWhenSomethingChanged) {
  ASSERT_TRUE(*copies().take(november(1)));
  EXPECT_EQ(check_calendar(directory / "backups/calendar-2026-11-01.db").appointments,
            kAppointments);
  if (open_files_can_move()) {  // where rights are three groups of three
    EXPECT_EQ(fs::status(directory / "backups").permissions(), fs::perms::owner_all);
  }
  add("second", 1);
  EXPECT_FALSE(*copies().take(november(1))) << "one a day";
  ASSERT_TRUE(*copies().take(november(2)));
  EXPECT_FALSE(*copies().take(november(3))) << "nothing changed";
  EXPECT_EQ(names(november(3)), (std::vector<std::string>{"2026-11-02", "2026-11-01"}));
  EXPECT_EQ(copies().newest_good(november(3))->day, november(2));
  EXPECT_EQ(names(november(1))[0], "2026-11-01") << "one of the future is not the newest";
}

TEST_F(CalendarCopiesTest, ADamagedCalendarIsNotCopiedAndADamagedCopyNotOffered) {
  ASSERT_TRUE(*copies().take(november(1)));
  add("second", 1);
  ASSERT_TRUE(*copies().take(november(2)));
  const std::string good = contents();
  EXPECT_EQ(glance_at_calendar(path, 1 << 30).health, CalendarHealth::good);
  damage({20});
  EXPECT_EQ(glance_at_calendar(path, 1 << 30).health, CalendarHealth::damaged);
  const auto refused = copies().take(november(3));
  ASSERT_FALSE(refused);
  EXPECT_NE(refused.reason().find("damaged"), std::string::npos) << refused.reason();
  EXPECT_EQ(names(november(3)).size(), 2u);
  const std::string calendar = path;
  path = directory / "backups/calendar-2026-11-02.db";
  damage({30});
  path = calendar;
  EXPECT_EQ(copies().newest_good(november(3))->day, november(1));
}

TEST_F(CalendarCopiesTest, OneThatContradictsItselfIsDamagedToo) {
  for (const char* sql : {"UPDATE exceptions SET oid = oid + 999999",
                          "UPDATE recipients SET oid = 999999 WHERE oid = 7",
                          "UPDATE items SET recurring = 1 WHERE oid = 7"}) {
    const std::string good = contents();
    sqlite3* raw = open_raw();
    ASSERT_EQ(sqlite3_exec(raw, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(raw);
    sqlite3_close(raw);
    EXPECT_EQ(check_calendar(path).health, CalendarHealth::damaged) << sql;
    EXPECT_FALSE(copies().take(november(1))) << sql;
    write(good);
  }
  EXPECT_TRUE(names(november(1)).empty());
}

TEST_F(CalendarCopiesTest, ThoseOfTheFutureAreNobodysToThinOut) {
  fs::create_directory(directory / "backups");
  for (int day = 10; day < 30; ++day)
    std::ofstream(directory / ("backups/calendar-2026-12-" + std::to_string(day) + ".db"));
  ASSERT_TRUE(*copies().take(november(1)));
  EXPECT_EQ(names(november(1)).size(), 21u);
}

TEST_F(CalendarCopiesTest, AnEmptyCalendarAndOneThatIsGoneLeaveTheCopiesAlone) {
  ASSERT_TRUE(*copies().take(november(1)));
  fs::remove(path);
  EXPECT_FALSE(*copies().take(november(2)));
  open();
  EXPECT_FALSE(*copies().take(november(2)));
  EXPECT_EQ(names(november(2)).size(), 1u);
}

TEST(CalendarCopies, AreThinnedOutToDaysWeeksAndMonths) {
  std::vector<MonthDayYear> days;
  const Day newest = day_of(2026, 11, 21);
  for (int back = 0; back < 400; ++back) days.push_back(triple_of(newest - back));
  const auto keep = copies_to_keep(days);
  std::string kept;
  for (std::size_t i = 0; i < days.size(); ++i)
    if (keep[i]) kept += iso_text(days[i]).substr(5) + " ";
  EXPECT_EQ(kept,
            "11-21 11-20 11-19 11-18 11-17 11-16 11-15 11-08 11-01 10-31 09-30 08-31 07-31 06-30 ");
  // A calendar that rested for years keeps what it has.
  EXPECT_EQ(copies_to_keep({november(1), {1, 1, 2020}, {5, 5, 2011}}),
            std::vector<bool>({true, true, true}));
}

TEST_F(CalendarCopiesTest, WhatIsLeftOfADamagedCalendarIsReadFromItsPages) {
  const auto fresh = directory / "fresh.db";
  // The header and the schema; what leads to the pages; a part of the file.
  const std::string good = contents();
  const int pages = static_cast<int>(good.size() / 4096);
  struct Case {
    const char* what;
    std::function<void()> harm;
    int least;
  };
  const Case cases[] = {
      {"nothing", [] {}, kAppointments},
      {"the first page", [&] { damage({1}); }, kAppointments},
      {"one leaf or two",
       [&] {
         damage({pages / 2, pages / 2 + 1});
       },
       kAppointments - 20},
      {"the second half", [&] { write(good.substr(0, good.size() / 2)); }, kAppointments / 4}};
  for (const Case& one : cases) {
    write(good);
    one.harm();
    const std::string harmed = contents();
    fs::remove(fresh);
    ASSERT_TRUE(EmbeddedStore::open(fresh, clock));
    const auto salvaged = salvage_calendar(path, fresh);
    ASSERT_TRUE(salvaged) << salvaged.reason();
    EXPECT_GE(salvaged->appointments, one.least) << one.what;
    EXPECT_EQ(contents(), harmed) << "the damaged file is left alone";
    EXPECT_EQ(check_calendar(fresh).health, CalendarHealth::good) << one.what;
  }
  // All of an appointment, also what lies on other pages than its own.
  write(good);
  damage({1});
  fs::remove(fresh);
  ASSERT_TRUE(EmbeddedStore::open(fresh, clock));
  ASSERT_TRUE(salvage_calendar(path, fresh));
  auto store = EmbeddedStore::open(fresh, clock);
  const auto oid = (*store)->oid_of_uid("first50");
  ASSERT_TRUE(oid && *oid);
  const auto loaded = (*store)->load(**oid);
  ASSERT_TRUE(loaded && *loaded);
  const AppointmentRecord& record = **loaded;
  EXPECT_EQ(record.fields.body, Text(9000, static_cast<char16_t>(u'a' + 50 % 26)));
  EXPECT_EQ(record.recipients.size(), 1u);
  ASSERT_EQ(record.exceptions.size(), 1u);
  EXPECT_TRUE(record.exceptions[0].deleted);
}

TEST_F(CalendarCopiesTest, ACopyTakesTheCalendarsPlaceAndTheFileBeforeIsKept) {
  const auto copy = *copies().take(november(1));
  const std::string good = contents();
  damage({1, 2});
  const std::string bad = contents();
  std::ofstream(path + "-journal") << "what could not be played back";
  const auto kept_one = replace_calendar(path, copy->path, kept());
  ASSERT_TRUE(kept_one) << kept_one.reason();
  EXPECT_EQ(check_calendar(path).appointments, kAppointments);
  EXPECT_FALSE(fs::exists(path + "-journal")) << "it would be played back into the copy";
  EXPECT_TRUE(fs::exists(*kept_one + "-journal"));
  path = *kept_one;
  EXPECT_EQ(contents(), bad);
  path = directory / "calendar.db";
  // A copy that is damaged itself changes nothing.
  const std::string before = contents();
  std::ofstream(copy->path) << bad;
  EXPECT_FALSE(replace_calendar(path, copy->path, kept()));
  EXPECT_EQ(contents(), before);
}

PROCESS_WORK(replace_by_copy) {
  std::istringstream lines(argument);
  std::string path, copy, kept;
  std::getline(lines, path), std::getline(lines, copy), std::getline(lines, kept);
  return replace_calendar(path, copy, kept) ? 0 : 1;
}

TEST_F(CalendarCopiesTest, AProcessThatDiesWhileReplacingLeavesOneOrTheOther) {
  const auto copy = *copies().take(november(1));
  damage({2});
  const std::string bad = contents();
  for (int delay = 0; delay < 12; ++delay) {
    write(bad);
    killed_after(delay * 400, replace_by_copy, path + '\n' + copy->path + '\n' + kept());
    const bool restored = check_calendar(path).health == CalendarHealth::good;
    EXPECT_TRUE(restored || contents() == bad) << delay;
  }
}

}  // namespace
}  // namespace orvello::test
