// Series found through the file's indexes are those that a store without any finds.
#include <algorithm>
#include <set>

#include "calendar/rule_text.h"
#include "hosts/headless/memory_store.h"
#include "store/embedded/embedded_database.h"
#include "tests/calendar/rule_random.h"
#include "tests/store/embedded/store_file.h"

namespace orvello::test {
namespace {

using Row = std::tuple<std::int32_t, LocalSeconds, LocalSeconds>;

class SeriesInDays : public StoreFile {
 protected:
  AppointmentRecord series(int number) {
    constexpr const char* kRules[] = {
        "RRULE:FREQ=DAILY;COUNT=5",
        "RRULE:FREQ=WEEKLY;BYDAY=MO,TH",
        "RRULE:FREQ=MONTHLY;BYDAY=MO,TU;BYSETPOS=-1;COUNT=30",
        "RRULE:FREQ=YEARLY;UNTIL=20200101T000000",
        "RRULE:FREQ=DAILY;COUNT=3\nRDATE:20010203T100000",
        "RDATE:20030405T100000,20240101T100000",
    };
    AppointmentRecord made;
    made.uid = std::to_string(number);
    made.start = random.start();
    made.end = made.start + random.number(0, random.chance(10) ? 400 * 1440 : 600) * 60LL;
    made.rules = kRules[random.number(0, 5)];
    for (int i = random.chance(30) ? random.number(1, 4) : 0; i > 0; --i) {
      AppointmentException exception;
      exception.original_start = made.start + random.number(0, 9) * kSecondsPerDay;
      exception.deleted = random.chance(50);
      exception.start = random.start();  // far from its series
      exception.end = exception.start + (random.chance(20) ? 90 * kSecondsPerDay : 3600);
      made.exceptions.push_back(exception);
    }
    return made;
  }
  template <typename Store>
  static std::set<Row> rows(Store& store, const DayBounds& bounds) {
    OccurrenceList list;
    EXPECT_TRUE(store.query({bounds, true}, list)) << store.problem();
    std::set<Row> found;
    for (std::size_t i = 0; i < list.size(); ++i) {
      const StoreItem item = list.item(i);
      found.insert({item.summary->oid, to_seconds(item.start), to_seconds(item.end)});
    }
    EXPECT_EQ(found.size(), list.size());
    return found;
  }

  RandomRules random{2026};
};

TEST_F(SeriesInDays, AreThoseOfAStoreWithoutAFile) {
  const auto disk = open();
  MemoryStore memory(clock);
  std::size_t seen = 0;
  ASSERT_TRUE(disk->begin());
  for (int round = 0; round < 350; ++round) {
    if (round == 150) {
      ASSERT_TRUE(disk->commit());
    }
    if (round < 150 || random.chance(20)) {
      const AppointmentRecord one = series(round);
      const std::int32_t oid = disk->put(one);
      ASSERT_NE(oid, 0) << disk->problem();
      EXPECT_EQ(memory.put(one), oid);
    } else if (random.chance(10)) {
      const std::int32_t oid = random.number(1, 150);
      EXPECT_EQ(disk->erase(oid), memory.erase(oid));
    }
    if (random.chance(50)) continue;
    DayBounds bounds;
    bounds.end_from = day_of(random.start());
    bounds.start_to = bounds.end_from + (random.chance(80) ? random.number(0, 45) : 366);
    if (random.chance(10)) std::swap(bounds.end_from, bounds.start_to);
    if (random.chance(5)) bounds.start_from = bounds.end_from;
    const auto expected = rows(memory, bounds);
    EXPECT_EQ(rows(*disk, bounds), expected) << round;
    seen += expected.size();
  }
  EXPECT_GT(seen, 1000u);
}

// A file without the indexes is read all the same; the first change makes them, and corrects what
// an older program held for the first day of a series with a date before its start.
TEST_F(SeriesInDays, OfAnOlderFileAreFoundToo) {
  AppointmentRecord early = series(1);
  early.start = midnight_of(day_of(2026, 1, 5));
  early.end = early.start + 3600;
  early.rules = "RRULE:FREQ=DAILY;COUNT=3\nRDATE:20010203T100000";
  early.exceptions.clear();
  ASSERT_NE(open()->put(early), 0);
  {
    auto file = EmbeddedDatabase::open(path);
    ASSERT_TRUE(file) << file.reason();
    for (const char* sql : {"DROP INDEX items_alive", "DROP INDEX exceptions_changed",
                            "UPDATE items SET first_day = start / 86400"})
      ASSERT_TRUE((*file)->run(sql)) << (*file)->reason();
  }
  DayBounds bounds;
  bounds.end_from = bounds.start_to = day_of(2001, 2, 3);
  const auto disk = open();
  EXPECT_EQ(rows(*disk, bounds).size(), 1u);
  ASSERT_NE(disk->put(series(2)), 0);
  EXPECT_EQ(rows(*disk, bounds).size(), 1u);
  auto file = EmbeddedDatabase::open(path);
  EXPECT_EQ((*file)->has_series_indexes(), true);
  EXPECT_EQ(rows(*open(), bounds).size(), 1u);
}

}  // namespace
}  // namespace orvello::test
