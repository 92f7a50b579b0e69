// Files of the format before pages had checksums.
#include "store/embedded/fresh_calendar.h"

#include <sqlite3.h>

#include "store/embedded/embedded_schema.h"
#include "store/embedded/sqlite/checked_pages.h"
#include "tests/store/embedded/store_file.h"

namespace orvello::test {
namespace {

class OlderFormat : public StoreFile {
 protected:
  // What a store has written, in a file as the older format has it.
  void SetUp() override {
    {
      auto store = open();
      store->begin();
      for (int i = 1; i <= 50; ++i) store->put(series(i));
      ASSERT_TRUE(store->commit());
      store->erase(50);
      kept = *store->load(7);
    }
    const std::string newer = path + ".newer";
    std::filesystem::rename(path, newer);
    sqlite3* db = nullptr;
    sqlite3_open(path.c_str(), &db);
    std::string sql = "PRAGMA application_id = " + std::to_string(kApplicationId) +
                      "; PRAGMA user_version = 1;" + kSchema + "ATTACH '" + newer + "' AS newer;";
    for (const char* table : {"items", "exceptions", "recipients", "category_uses", "changes"})
      sql += std::string("INSERT INTO ") + table + " SELECT * FROM newer." + table + ";";
    sql +=
        "DELETE FROM sqlite_sequence; INSERT INTO sqlite_sequence SELECT * FROM"
        " newer.sqlite_sequence; DETACH newer;";
    ASSERT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(db);
    sqlite3_close(db);
    std::filesystem::remove(newer);
    ASSERT_EQ(contents()[20], 0);
  }
  static AppointmentRecord series(int i) {
    AppointmentRecord one = record("uid-" + std::to_string(i));
    one.rules = "RRULE:FREQ=DAILY;COUNT=9";
    one.recipients = {{u"Ann", u"ann@example.org"}};
    AppointmentException moved;
    moved.original_start = one.start + kSecondsPerDay;
    moved.start = moved.original_start + 3600;
    moved.end = moved.start + 60;
    moved.fields.subject = u"moved";
    one.exceptions.push_back(moved);
    return one;
  }
  Result<std::optional<AppointmentRecord>> kept = std::nullopt;
};

TEST_F(OlderFormat, ComesToThisOneWithEverythingAndTheNumbersGivenOut) {
  auto store = open();
  ASSERT_TRUE(store);
  EXPECT_EQ(contents()[20], kCheckedBytes);
  EXPECT_EQ(contents()[63], kFormat);
  EXPECT_EQ(files(), 1u);
  EXPECT_EQ(store->oids(std::nullopt, std::nullopt)->size(), 49u);
  const auto now = store->load(7);
  ASSERT_TRUE(now && *now && kept && *kept);
  EXPECT_EQ((*now)->uid, (*kept)->uid);
  EXPECT_EQ((*now)->rules, (*kept)->rules);
  EXPECT_EQ((*now)->recipients, (*kept)->recipients);
  ASSERT_EQ((*now)->exceptions.size(), 1u);
  EXPECT_EQ((*now)->exceptions[0].fields, (*kept)->exceptions[0].fields);
  EXPECT_EQ(store->put(record("new")), 51);  // 50 was given out, and is gone
}

TEST_F(OlderFormat, IsReadAsItIsWhereNothingMayBeWritten) {
  const std::string before = contents();
  const auto store = EmbeddedStore::open_to_read(path, clock);
  ASSERT_TRUE(store) << store.reason();
  EXPECT_TRUE(*(*store)->load(7));
  EXPECT_EQ(contents(), before);
}

TEST_F(OlderFormat, IsNotTakenOverInPart) {
  std::string bytes = contents();
  const std::size_t row = bytes.find("uid-7");
  ASSERT_NE(row, std::string::npos);
  bytes.replace(row / 4096 * 4096, 4096, 4096, '\0');
  write(bytes);
  const auto refused = EmbeddedStore::open(path, clock);
  ASSERT_FALSE(refused);
  EXPECT_NE(refused.reason().find(path + " is damaged"), std::string::npos) << refused.reason();
  EXPECT_EQ(contents(), bytes);
}

TEST_F(OlderFormat, WaitsForWhoeverUsesIt) {
  sqlite3* other = nullptr;
  sqlite3_open(path.c_str(), &other);
  sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
  const std::string before = contents();
  const auto refused = EmbeddedStore::open(path, clock);
  ASSERT_FALSE(refused);
  EXPECT_NE(refused.reason().find("in use"), std::string::npos) << refused.reason();
  EXPECT_EQ(contents(), before);
  sqlite3_close(other);
  EXPECT_TRUE(open());
}

}  // namespace
}  // namespace orvello::test
