// A directory of its own for the files a test makes.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "store/embedded/embedded_store.h"
#include "store/embedded/sqlite/checked_pages.h"

namespace orvello::test {

class StillClock : public Clock {
 public:
  SystemTime local_time() const override { return civil_from_day_number(46200); }
  UtcSeconds utc_now() const override { return UtcSeconds(46200 * kSecondsPerDay); }
  std::string zone_name() const override { return "UTC"; }
  LocalSeconds to_local(UtcSeconds utc) const override { return local_at_offset(utc, 0); }
  UtcSeconds to_utc(LocalSeconds local) const override { return utc_at_offset(local, 0); }
};

class StoreFile : public testing::Test {
 protected:
  void SetUp() override {
    directory =
        std::filesystem::temp_directory_path() / ("orvello-store-" + std::to_string(getpid()));
    std::filesystem::remove_all(directory);
    std::filesystem::create_directories(directory);
    path = (directory / "calendar.db").string();
  }
  void TearDown() override { std::filesystem::remove_all(directory); }

  std::unique_ptr<EmbeddedStore> open() {
    auto store = EmbeddedStore::open(path, clock);
    EXPECT_TRUE(store) << store.reason();
    return store ? std::move(*store) : nullptr;
  }
  // The file as SQLite has it, with its checked pages.
  sqlite3* open_raw() const {
    sqlite3* db = nullptr;
    EXPECT_EQ(sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE, checked_pages()),
              SQLITE_OK);
    return db;
  }
  static AppointmentRecord record(std::string uid) {
    AppointmentRecord record;
    record.uid = std::move(uid);
    record.start = midnight_of(46200);
    record.end = record.start + 1800;
    record.fields.subject = u"subject";
    record.fields.categories = u"Work";
    record.fields.body = Text(500, u'n');
    return record;
  }
  std::string contents() const {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  void write(const std::string& bytes) const {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
  }
  std::size_t files() const {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(directory), {}));
  }

  StillClock clock;
  std::filesystem::path directory;
  std::string path;
};

}  // namespace orvello::test
