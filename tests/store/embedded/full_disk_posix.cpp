// Whose file it is, and what the system refuses.
#include <sqlite3.h>

#include "tests/processes.h"
#include "tests/store/embedded/store_file.h"

namespace orvello::test {
namespace {

using StoreProcesses = StoreFile;

TEST_F(StoreProcesses, TheFileIsItsOwnersAlone) {
  auto store = open();
  ASSERT_NE(store->put(record("a")), 0);
  EXPECT_EQ(mode_of(path), 0600u);
  store.reset();
  EXPECT_EQ(files(), 1u);
}

TEST_F(StoreProcesses, AFullDiskFailsTheChangeAndKeepsTheRest) {
  open()->put(record("before"));
  EXPECT_EQ(end_of(start_process([&] {
              auto store = EmbeddedStore::open(path, clock);
              if (!store) return 1;
              limit_files(200000);
              if (!(*store)->begin()) return 2;
              for (int i = 0; i < 5000; ++i)
                if ((*store)->put(record(std::to_string(i))) == 0) break;
              if ((*store)->commit()) return 3;
              if ((*store)->problem().find(path) == std::string::npos) return 4;
              if ((*store)->oids({}, {})->size() != 1) return 5;
              return (*store)->put(record("small")) != 0 ? 0 : 6;  // there is room for this one
            })),
            0);
  EXPECT_EQ(open()->oids({}, {})->size(), 2u);
}

int open_no_folder(const char*, int* descriptor) {
  *descriptor = -1;
  return SQLITE_OK;
}

// The last step of a transaction syncs the folder, when the file has everything already.
TEST_F(StoreProcesses, WhatTheFileHasWasNotLostBecauseItsFolderCouldNotBeSynced) {
  auto store = open();
  auto series = record("series");
  series.rules = "RRULE:FREQ=DAILY";
  ASSERT_NE(store->put(series), 0);
  sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
  system->xSetSystemCall(system, "openDirectory",
                         reinterpret_cast<sqlite3_syscall_ptr>(open_no_folder));
  const auto oid = store->put(record("told as written"));
  const bool kept = store->put_foreign({"task", "BEGIN:VTODO\r\nEND:VTODO\r\n"});
  system->xSetSystemCall(system, "openDirectory", nullptr);
  EXPECT_NE(oid, 0);
  EXPECT_TRUE(kept);
  EXPECT_EQ(store->oids(Day(46200), Day(46200))->size(), 2u);
  EXPECT_NE(store->put(record("after")), 0);
  EXPECT_EQ(open()->oids({}, {})->size(), 3u);
  EXPECT_EQ(open()->foreign()->size(), 1u);
}

}  // namespace
}  // namespace orvello::test
