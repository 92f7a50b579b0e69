// Processes that die, disks that fill, and two processes at once.
#include <sqlite3.h>

#include "tests/processes.h"
#include "tests/store/embedded/store_file.h"

namespace orvello::test {
namespace {

using StoreProcesses = StoreFile;

PROCESS_WORK(put_tens) {
  HeadlessClock clock;
  auto store = EmbeddedStore::open(argument, clock);
  for (int i = 0; store && i < 1000; ++i) {
    (*store)->begin();
    for (int k = 0; k < 10; ++k) (*store)->put(StoreFile::record(""));
    (*store)->commit();
  }
  return 0;
}

PROCESS_WORK(make_file_and_put) {
  HeadlessClock clock;
  auto store = EmbeddedStore::open(argument, clock);
  return store && (*store)->put(StoreFile::record("")) != 0 ? 0 : 1;
}

// Whenever the process dies, its transactions of ten are there whole or not at all.
TEST_F(StoreProcesses, KilledAtAnyMomentLeavesBeforeOrAfter) {
  for (int round = 0; round < 25; ++round) {
    killed_after(1500 * round, put_tens, path);
    auto store = open();
    ASSERT_TRUE(store);
    const auto oids = *store->oids({}, {});
    EXPECT_EQ(oids.size() % 10, 0u);
    const auto uses = *store->category_use_counts();
    EXPECT_EQ(uses.empty() ? 0 : uses[0].appointments, static_cast<int>(oids.size()));
    EXPECT_TRUE(oids.empty() || *store->load(oids.back()));
  }
}

TEST_F(StoreProcesses, AnotherProcessesChangesAreSeenAndPostedAsRemote) {
  struct Listener : StoreListener {
    void store_changed(std::uint32_t notification) override { heard.push_back(notification); }
    std::vector<std::uint32_t> heard;
  } listener;
  auto window = open();
  auto app = window->create_application(false);
  app->logon(&listener);
  auto series = record("series");
  series.rules = "RRULE:FREQ=DAILY";
  const auto oid = window->put(series);
  EXPECT_EQ(window->oids(Day(46300), Day(46300))->size(), 1u);
  window->poll();
  listener.heard.clear();
  {
    auto command = open();
    ASSERT_TRUE(command->begin());
    ASSERT_NE(command->put(record("one")), 0);
    ASSERT_NE(command->put(record("two")), 0);
    ASSERT_TRUE(command->erase(oid));
    ASSERT_TRUE(command->commit());
    EXPECT_EQ(window->oids(Day(46300), Day(46300))->size(), 0u)
        << "the series kept in memory is gone as well";
  }
  EXPECT_TRUE(window->poll());
  EXPECT_EQ(listener.heard, (std::vector<std::uint32_t>{0x8105, 0x8106}));
  EXPECT_FALSE(window->poll());
  // Of what the log has forgotten meanwhile, anything may have been a change.
  listener.heard.clear();
  for (const char* uid : {"three", "four"}) ASSERT_NE(open()->put(record(uid)), 0);
  sqlite3* raw = open_raw();
  sqlite3_exec(raw, "DELETE FROM changes WHERE number < (SELECT max(number) FROM changes)", nullptr,
               nullptr, nullptr);
  sqlite3_close(raw);
  EXPECT_TRUE(window->poll());
  EXPECT_EQ(listener.heard, (std::vector<std::uint32_t>{0x8105, 0x8107}));
}

TEST_F(StoreProcesses, SeveralMayMakeTheFileAtOnce) {
  constexpr int kProcesses = 4;
  for (int round = 0; round < 5; ++round) {
    std::filesystem::remove(path);
    ChildProcess children[kProcesses];
    for (ChildProcess& child : children) child = start_work(make_file_and_put, path);
    for (const ChildProcess child : children) EXPECT_EQ(end_of(child), 0);
    EXPECT_EQ(open()->oids({}, {})->size(), 4u);
    EXPECT_EQ(files(), 1u);
  }
}

// A lock is a failure that says so, for reads and writes alike, and nothing has to be opened again
// when it is gone.
TEST_F(StoreProcesses, AnotherOnesLockIsToldAndForgotten) {
  auto store = open();
  ASSERT_NE(store->put(record("a")), 0);
  EXPECT_TRUE(store->poll());
  store->limit_wait(std::chrono::milliseconds(20));
  sqlite3* other = open_raw();
  sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
  const auto locked = [&](bool failed) {
    EXPECT_TRUE(failed);
    EXPECT_TRUE(store->busy());
    EXPECT_EQ(store->problem(), path + " is in use by another program.");
  };
  OccurrenceList list;
  for (int i = 0; i < 2; ++i) {
    locked(!store->query({DayBounds(), true}, list));
    locked(!store->load(1));
    locked(!store->contacts());
    locked(!store->begin_read());
    locked(store->put(record("b")) == 0);
    EXPECT_FALSE(store->poll());
  }
  sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
  sqlite3_close(other);
  EXPECT_TRUE(store->query({DayBounds(), true}, list));
  EXPECT_EQ(list.size(), 1u);
  EXPECT_FALSE(store->busy());
  EXPECT_NE(store->put(record("b")), 0);
}

TEST_F(StoreProcesses, AWindowOpensAFileThatAnotherOneHolds) {
  ASSERT_NE(open()->put(record("a")), 0);
  sqlite3* other = open_raw();
  sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
  const auto window = EmbeddedStore::open_for_window(path, clock, std::chrono::milliseconds(20));
  ASSERT_TRUE(window) << window.reason();
  OccurrenceList list;
  EXPECT_FALSE((*window)->query({DayBounds(), true}, list));
  EXPECT_TRUE((*window)->busy());
  EXPECT_FALSE((*window)->poll());
  sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
  sqlite3_close(other);
  EXPECT_TRUE((*window)->poll()) << "what came meanwhile is not known";
  EXPECT_TRUE((*window)->query({DayBounds(), true}, list));
  EXPECT_EQ(list.size(), 1u);
  ASSERT_NE(open()->put(record("b")), 0);
  EXPECT_TRUE((*window)->poll()) << "the other process's change";
}

TEST_F(StoreProcesses, TheLogOfChangesStaysShort) {
  open()->put(record("a"));
  sqlite3* raw = open_raw();
  sqlite3_exec(raw,
               "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000)"
               " INSERT INTO changes (process, kind) SELECT 1, 0 FROM n",
               nullptr, nullptr, nullptr);
  sqlite3_close(raw);
  open()->put(record("b"));
  raw = open_raw();
  const auto count = [](void* into, int, char** values, char**) {
    *static_cast<int*>(into) = std::atoi(values[0]);
    return 0;
  };
  int rows = 0;
  sqlite3_exec(raw, "SELECT count(*) FROM changes", count, &rows, nullptr);
  sqlite3_close(raw);
  EXPECT_GT(rows, 0);
  EXPECT_LE(rows, 1000);
}

// The span index groups by length; every length must be found from its first day to its last.
TEST_F(StoreProcesses, ItemsOfAnyLengthAreFoundOnEachOfTheirDays) {
  auto store = open();
  for (std::int32_t days : {0, 1, 2, 7, 8, 31, 32, 366, 367, 4000, 4001, 40001}) {
    auto item = record("");
    item.end = item.start + days * kSecondsPerDay + 60;
    const auto oid = store->put(item);
    for (std::int32_t day : {46200, 46200 + days / 2, 46200 + days})
      EXPECT_EQ(*store->oids(Day(day), Day(day)), std::vector<std::int32_t>{oid}) << days;
    EXPECT_TRUE(store->oids(Day(46199), Day(46199))->empty());
    EXPECT_TRUE(store->oids(Day(46201 + days), Day(46201 + days))->empty());
    store->erase(oid);
  }
}

}  // namespace
}  // namespace orvello::test
