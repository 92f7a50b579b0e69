// A directory of its own for the files a test makes.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

#include "hosts/headless/headless_ports.h"
#include "store/embedded/embedded_store.h"
#include "store/embedded/sqlite/checked_pages.h"
#include "tests/scratch.h"

namespace orvello::test {

class StoreFile : public testing::Test {
 public:
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
    record.start = midnight_of(Day(46200));
    record.end = record.start + 1800;
    record.fields.subject = u"subject";
    record.fields.categories = u"Work";
    record.fields.body = Text(500, u'n');
    return record;
  }
  std::string contents() const { return content_of(path); }
  void write(const std::string& bytes) const { put_content(path, bytes); }
  std::size_t files() const { return directory.files(); }

  HeadlessClock clock;
  ScratchFolder directory;
  std::string path = directory / "calendar.db";
};

}  // namespace orvello::test
