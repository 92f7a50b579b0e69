// Files the store must not open, and must not touch either.
#include <sqlite3.h>

#include "tests/store/embedded/store_file.h"

namespace orvello::test {
namespace {

class RefusedFile : public StoreFile {
 protected:
  void SetUp() override {
    StoreFile::SetUp();
    auto store = open();
    store->begin();
    for (int i = 0; i < 200; ++i) store->put(record(std::to_string(i)));
    ASSERT_TRUE(store->commit());
    store.reset();
    sound = contents();
  }
  // The file is refused for that reason, and is byte for byte what it was, with nothing beside it.
  void refused(const std::string& bytes, const std::string& reason) {
    write(bytes);
    const auto store = EmbeddedStore::open(path, clock);
    ASSERT_FALSE(store);
    EXPECT_NE(store.reason().find(reason), std::string::npos) << store.reason();
    EXPECT_NE(store.reason().find(path), std::string::npos) << store.reason();
    EXPECT_EQ(contents(), bytes);
    EXPECT_EQ(files(), 1u);
  }
  std::string sound;
};

TEST_F(RefusedFile, ForeignOnes) {
  refused("BEGIN:VCALENDAR\r\n" + std::string(200, ' '), "not an Orvello calendar");
  refused("x", "not an Orvello calendar");
  std::filesystem::remove(path);
  sqlite3* db = nullptr;
  sqlite3_open(path.c_str(), &db);
  sqlite3_exec(db, "PRAGMA journal_mode = WAL; CREATE TABLE t (a);", nullptr, nullptr, nullptr);
  sqlite3_close(db);
  refused(contents(), "not an Orvello calendar");
}

TEST_F(RefusedFile, ANewerFormat) {
  auto bytes = sound;
  bytes[63] = 9;
  refused(bytes, "newer version of Orvello (format 9");
}

TEST_F(RefusedFile, DamagedOnes) {
  refused("", "damaged");  // what a power cut leaves of a file that was never synced
  refused(sound.substr(0, 60), "damaged");
  refused(sound.substr(0, sound.size() / 2), "damaged");
  auto bytes = sound;
  for (std::size_t i = 100; i < 4096; ++i) bytes[i] = static_cast<char>(0xA5);
  refused(bytes, "damaged");
}

TEST_F(RefusedFile, PlacesThatCannotHoldIt) {
  path = (directory / "missing" / "calendar.db").string();
  auto store = EmbeddedStore::open(path, clock);
  ASSERT_FALSE(store);
  EXPECT_NE(store.reason().find("cannot be created"), std::string::npos) << store.reason();
  path = directory.string();
  EXPECT_FALSE(EmbeddedStore::open(path, clock));
}

TEST_F(RefusedFile, DamageFoundLaterIsAFailureWithAReason) {
  auto bytes = sound;
  for (std::size_t i = 3 * 4096; i < bytes.size(); ++i) bytes[i] = static_cast<char>(0xA5);
  write(bytes);
  auto store = EmbeddedStore::open(path, clock);
  if (!store) return;  // refused at once is as good
  OccurrenceList list;
  bool failed = !(*store)->query(DayBounds(), true, list);
  failed = (*store)->put(record("new")) == 0 || failed;
  EXPECT_TRUE(failed);
  EXPECT_NE((*store)->problem().find("damaged"), std::string::npos) << (*store)->problem();
}

}  // namespace
}  // namespace orvello::test
