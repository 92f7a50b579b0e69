// Files the store must not open, and must not touch either.
#include <sqlite3.h>

#include "tests/store/embedded/store_file.h"

namespace orvello::test {
namespace {

class RefusedFile : public StoreFile {
 protected:
  void SetUp() override {
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
  // Asks for everything; why that failed, or nothing.
  static std::string fault_in(EmbeddedStore& store) {
    OccurrenceList list;
    if (!store.query({DayBounds(), true}, list)) return store.problem();
    const auto oids = store.oids({}, {});
    if (!oids) return oids.reason();
    for (const std::int32_t oid : *oids)
      if (const auto one = store.load(oid); !one)
        return one.reason();
      else if (!*one)
        return "an oid without an appointment";
    if (!store.category_use_counts()) return store.problem();
    return "";
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
  auto unchecked = sound;
  unchecked[20] = 0;  // says that pages have no checksums
  refused(unchecked, "damaged");
  refused(sound.substr(0, sound.size() / 2), "damaged");
  auto bytes = sound;
  for (std::size_t i = 100; i < 4096; ++i) bytes[i] = static_cast<char>(0xA5);
  refused(bytes, "damaged");
}

TEST_F(RefusedFile, PlacesThatCannotHoldIt) {
  path = directory / "missing/calendar.db";
  auto store = EmbeddedStore::open(path, clock);
  ASSERT_FALSE(store);
  EXPECT_NE(store.reason().find("cannot be created"), std::string::npos) << store.reason();
  path = directory.path();
  EXPECT_FALSE(EmbeddedStore::open(path, clock));
}

// Rows that no program of ours writes, on sound pages.
TEST_F(RefusedFile, ContradictionsAreDamage) {
  const std::pair<const char*, const char*> cases[] = {
      {"UPDATE items SET recurring = 1, pattern = '1 2 x' WHERE oid = 5", "appointment 5"},
      {"UPDATE items SET recurring = 1 WHERE oid = 5", "appointment 5"},
      {"UPDATE items SET start = 'soon' WHERE oid = 5", ""},
      {"UPDATE items SET subject = x'00' WHERE oid = 5", ""},
      {"UPDATE items SET busy_status = 9876543210 WHERE oid = 5", ""},
      {"UPDATE items SET oid = 9876543210 WHERE oid = 5", ""},
      {"INSERT INTO recipients VALUES (5, 1, 0, 'a', 'b')", "recipient of appointment 5"},
      {"INSERT INTO exceptions SELECT 5, 1, start, 0, start, end, zone, all_day, has_notes,"
       " reminder_set, reminder_minutes, sensitivity, busy_status, subject, location, categories,"
       " body, body_ink, residue FROM items WHERE oid = 5",
       ""},
      {"UPDATE items SET zone = 'Z', span_class = 8 WHERE oid = 5; INSERT INTO zones VALUES ('Z',"
       " 'nonsense')",
       "time zone Z"},
      {"UPDATE items SET zone = 'Z', span_class = 8 WHERE oid = 5; DROP TABLE zones", nullptr},
      {"DROP TABLE exceptions", nullptr},
      {"DROP INDEX items_days; DROP TABLE recipients", nullptr}};
  for (const auto& [sql, named] : cases) {
    write(sound);
    sqlite3* raw = open_raw();
    ASSERT_EQ(sqlite3_exec(raw, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(raw);
    sqlite3_close(raw);
    const auto store = EmbeddedStore::open(path, clock);
    const std::string reason = store ? fault_in(**store) : store.reason();
    EXPECT_NE(reason.find(path), std::string::npos) << sql;
    if (!named) continue;
    EXPECT_NE(reason.find("damaged"), std::string::npos) << sql << ": " << reason;
    EXPECT_NE(reason.find(named), std::string::npos) << sql << ": " << reason;
  }
}

}  // namespace
}  // namespace orvello::test
