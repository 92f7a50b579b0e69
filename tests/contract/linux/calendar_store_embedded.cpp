#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>

#include "store/embedded/embedded_store.h"
// The suite itself, as this is another test program.
#include "tests/contract/calendar_store_contract.cpp"  // NOLINT
#include "tests/contract/edit_scripts_contract.cpp"    // NOLINT
#include "tests/contract/failing_reads_contract.cpp"   // NOLINT
#include "tests/contract/pattern_days_contract.cpp"    // NOLINT
#include "tests/contract/plain_calendar.cpp"           // NOLINT
#include "tests/contract/series_edits_contract.cpp"    // NOLINT
#include "tests/contract/store_changes_contract.cpp"   // NOLINT

namespace orvello::test {
namespace {

std::filesystem::path store_directory() {
  return std::filesystem::temp_directory_path() / ("orvello-stores-" + std::to_string(getpid()));
}

class StoreDirectory : public testing::Environment {
 public:
  void SetUp() override { std::filesystem::create_directories(store_directory()); }
  void TearDown() override { std::filesystem::remove_all(store_directory()); }
};

[[maybe_unused]] const auto* const kDirectory =
    testing::AddGlobalTestEnvironment(new StoreDirectory);

std::unique_ptr<RecordCalendarStore> make_embedded(const Clock& clock) {
  const auto path = store_directory() / "calendar.db";
  std::filesystem::remove(path);
  auto store = EmbeddedStore::open(path.string(), clock);
  return store ? std::move(*store) : nullptr;
}

// The system's files below SQLite, but for one read of a database that fails.
struct BadDisk {
  int countdown = 0;
  bool reached = false;
  sqlite3_vfs layer{};
  sqlite3_io_methods methods{};
  const sqlite3_io_methods* own = nullptr;
  int (*open)(sqlite3_vfs*, const char*, sqlite3_file*, int, int*) = nullptr;
};
BadDisk disk;

int bad_read(sqlite3_file* file, void* into, int count, sqlite3_int64 at) {
  if (disk.countdown > 0 && --disk.countdown == 0) {
    disk.reached = true;
    return SQLITE_IOERR_READ;
  }
  return disk.own->xRead(file, into, count, at);
}

int open_bad(sqlite3_vfs* layer, const char* name, sqlite3_file* file, int flags, int* given) {
  const int result = disk.open(layer, name, file, flags, given);
  if (result != SQLITE_OK || !(flags & SQLITE_OPEN_MAIN_DB)) return result;
  disk.own = file->pMethods;
  disk.methods = *disk.own;
  disk.methods.xRead = bad_read;
  file->pMethods = &disk.methods;
  return result;
}

// Before any database is opened, so that all stand on it.
[[maybe_unused]] const bool kBadDisk = [] {
  disk.layer = *sqlite3_vfs_find(nullptr);
  disk.layer.zName = "bad-disk";
  disk.open = std::exchange(disk.layer.xOpen, open_bad);
  return sqlite3_vfs_register(&disk.layer, 1) == SQLITE_OK;
}();

class FailingFile : public FailingStore {
 public:
  std::unique_ptr<RecordCalendarStore> filled(
      const Clock& clock, const std::function<void(RecordCalendarStore&)>& fill) override {
    const auto kept = store_directory() / "filled.db";
    if (!filled_) fill(*make_embedded(clock));
    if (!filled_) std::filesystem::copy_file(path_, kept);
    filled_ = true;
    std::filesystem::copy_file(kept, path_, std::filesystem::copy_options::overwrite_existing);
    return again(nullptr, clock);
  }
  std::unique_ptr<RecordCalendarStore> again(std::unique_ptr<RecordCalendarStore> store,
                                             const Clock& clock) override {
    store.reset();
    auto opened = EmbeddedStore::open(path_.string(), clock);
    EXPECT_TRUE(opened) << opened.reason();
    return opened ? std::move(*opened) : nullptr;
  }
  void fail_read(RecordCalendarStore&, int number) override {
    disk.countdown = number;
    disk.reached = false;
  }
  bool reached(RecordCalendarStore&) const override { return disk.reached; }

 private:
  std::filesystem::path path_ = store_directory() / "calendar.db";
  bool filled_ = false;
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Embedded, FailingReads, testing::Values(MakeFailingStore([] {
                           return std::make_unique<FailingFile>();
                         })));

INSTANTIATE_TEST_SUITE_P(Embedded, CalendarStoreContract,
                         testing::Values(MakeStore(make_embedded)));

}  // namespace orvello::test
