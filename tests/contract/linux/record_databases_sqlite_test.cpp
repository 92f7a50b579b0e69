#include <sqlite3.h>

#include <algorithm>

#include "store/embedded/sqlite_record_databases.h"
#include "tests/contract/record_databases_contract.h"
#include "tests/processes.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

constexpr PropertyId kText = 0x000D001F;

// Interrupts every statement of the process's connections once so many steps of them are done.
class Interrupter {
 public:
  Interrupter() {
    left() = -1;
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(&hook));
  }
  ~Interrupter() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&hook)); }
  static int& left() {
    static int steps = -1;
    return steps;
  }

 private:
  static int hook(sqlite3* connection, const char**, const void*) {
    sqlite3_progress_handler(connection, 1, &step, nullptr);
    return SQLITE_OK;
  }
  static int step(void*) { return left() < 0 ? 0 : left() == 0 ? 1 : (--left(), 0); }
};

struct SqlitePlace : DatabasesPlace {
  SqlitePlace() { std::filesystem::create_directory(folder / "data"); }
  void fail_reads_after(int count) override { Interrupter::left() = count; }
  RecordDatabases& open() override {
    all.push_back(
        std::make_unique<SqliteRecordDatabases>(folder / "device.db", [this](TextView name) {
          std::string path = to_utf8(name);
          std::replace(path.begin(), path.end(), '\\', '/');
          return folder / path;
        }));
    return *all.back();
  }
  Interrupter interrupter;
  ScratchFolder folder;
  std::vector<std::unique_ptr<SqliteRecordDatabases>> all;
};

INSTANTIATE_TEST_SUITE_P(Sqlite, RecordDatabasesContract,
                         ::testing::Values(DatabasesCase{
                             "sqlite", [] { return std::make_unique<SqlitePlace>(); }}));

class SqliteVolumeTest : public ::testing::Test {
 protected:
  // Mounts, adds a record and unmounts; what went wrong, if anything.
  DatabaseError add(const Text& text) {
    RecordDatabases& databases = place.open();
    const VolumeId volume = databases.mount(kVolume);
    if (volume == kInvalidVolume) return databases.last_error();
    databases.create(volume, u"list", kText);
    const DatabaseHandle list = databases.open(volume, u"list", kText);
    const RecordId id = list == kInvalidDatabase ? 0 : databases.write(list, 0, {{kText, text}});
    const DatabaseError error = id == 0 ? databases.last_error() : DatabaseError::none;
    databases.unmount(volume);
    return error;
  }
  std::uint32_t records() {
    RecordDatabases& databases = place.open();
    const auto all = databases.enumerate(databases.mount(kVolume));
    EXPECT_TRUE(all);
    return !all || all->empty() ? 0 : all->at(0).record_count;
  }
  void run_sql(const char* sql) {
    sqlite3* connection = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &connection), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(connection, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sql;
    sqlite3_close(connection);
  }
  void expect_refused_untouched() {
    const std::string before = content_of(path);
    EXPECT_EQ(add(u"x"), DatabaseError::invalid_parameter);
    EXPECT_EQ(content_of(path), before);
  }
  static constexpr TextView kVolume = u"\\data\\settings.vol";
  SqlitePlace place;
  std::string path = place.folder / "data/settings.vol";
};

TEST_F(SqliteVolumeTest, TheFileIsForItsOwnerAloneAndNothingIsLeftBeside) {
  EXPECT_EQ(add(u"x"), DatabaseError::none);
  EXPECT_EQ(mode_of(path), 0600u);
  const auto entries = std::filesystem::directory_iterator(place.folder / "data");
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST_F(SqliteVolumeTest, ForeignAndNewerFilesAreRefusedUntouched) {
  put_content(path, "not a database at all");
  expect_refused_untouched();
  put_content(path, std::string(200, '\0'));
  expect_refused_untouched();
  std::filesystem::remove(path);
  run_sql("CREATE TABLE theirs(x); INSERT INTO theirs VALUES(1)");
  expect_refused_untouched();
  std::filesystem::remove(path);
  ASSERT_EQ(add(u"x"), DatabaseError::none);
  run_sql("PRAGMA user_version=2");
  expect_refused_untouched();
}

TEST_F(SqliteVolumeTest, DamagedFilesAreRefusedUntouched) {
  for (int i = 0; i < 100; ++i) ASSERT_EQ(add(Text(200, u'x')), DatabaseError::none);
  const std::string sound = content_of(path);
  ASSERT_GT(sound.size(), 8192u);
  put_content(path, sound.substr(0, sound.size() / 2));
  expect_refused_untouched();
  for (std::size_t page = 4096; page < sound.size(); page += 4096) {
    std::string torn = sound;
    torn[page + 2048] ^= 1;  // a letter, as likely as not
    put_content(path, torn);
    expect_refused_untouched();
  }
  put_content(path, "");  // its creator died before the first transaction
  EXPECT_EQ(add(u"x"), DatabaseError::none);
  EXPECT_EQ(records(), 1u);
}

TEST_F(SqliteVolumeTest, ReasonsAreTheDevices) {
  path = place.folder / "data/settings.vol";
  std::filesystem::create_directory(path);
  EXPECT_EQ(add(u"x"), DatabaseError::invalid_parameter);
  std::filesystem::remove(path);
  ASSERT_EQ(add(u"x"), DatabaseError::none);
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_EQ(add(u"y"), DatabaseError::sharing_violation);
  sqlite3_close(other);
  EXPECT_EQ(add(u"y"), DatabaseError::none);
}

TEST_F(SqliteVolumeTest, AFullDiskKeepsWhatWasThere) {
  ASSERT_EQ(add(u"kept"), DatabaseError::none);
  EXPECT_TRUE(with_room(std::filesystem::file_size(path), [&] {
    const bool refused = add(Text(100000, u'x')) == DatabaseError::disk_full;
    // A new volume does not fit either.
    std::filesystem::remove(path);
    limit_files(100);
    return refused && add(u"x") == DatabaseError::disk_full;
  }));
  EXPECT_EQ(add(u"after"), DatabaseError::none);
}

TEST_F(SqliteVolumeTest, AKilledWriterLosesNothingThatWasReportedWritten) {
  ASSERT_EQ(add(u"first"), DatabaseError::none);
  std::uint32_t reported = 1;
  for (int i = 0; i < 10; ++i) {
    ToldProcess child([&](auto tell) {
      while (add(Text(50, u'x')) == DatabaseError::none) tell();
      return 1;
    });
    // However slow the machine is: somewhere behind its first writes.
    for (int k = 0; k <= i; ++k, ++reported) ASSERT_TRUE(child.told()) << "it wrote nothing";
    ::usleep(static_cast<useconds_t>(i * 700));
    child.kill();
    while (child.told()) ++reported;
    const std::uint32_t present = records();
    ASSERT_GE(present, reported);
    ASSERT_LE(present, reported + 1) << "half a write";
    reported = present;
  }
}

}  // namespace
}  // namespace orvello
