// Pages that come back from the disk otherwise than they were written.
#include "store/embedded/sqlite/checked_pages.h"

#include <sqlite3.h>

#include <random>

#include "tests/store/embedded/store_file.h"

namespace orvello::test {
namespace {

constexpr int kPage = 512;
constexpr int kRows = 300;

class CheckedPages : public StoreFile {
 protected:
  struct Closer {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
  };
  using Handle = std::unique_ptr<sqlite3, Closer>;

  Handle connect(const char* layer) const {
    sqlite3* db = nullptr;
    sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, layer);
    sqlite3_extended_result_codes(db, 1);
    return Handle(db);
  }
  static int run(const Handle& db, const std::string& sql) {
    return sqlite3_exec(db.get(), sql.c_str(), nullptr, nullptr, nullptr);
  }
  void fill(const Handle& db) const {
    ASSERT_EQ(run(db, "PRAGMA page_size = 512; CREATE TABLE t (a INTEGER PRIMARY KEY, b);"), 0);
    ASSERT_EQ(run(db,
                  "WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 300)"
                  " INSERT INTO t SELECT i, zeroblob(i * 7 % 900) || i FROM n"),
              0);
  }
  void make_checked() const {
    const Handle db = connect(checked_pages());
    ASSERT_TRUE(reserve_checked_bytes(db.get()));
    fill(db);
  }
  // All rows, or what went wrong.
  int read_all(const char* layer) const {
    const Handle db = connect(layer);
    int rows = 0;
    const auto take = [](void* count, int, char**, char**) {
      return ++*static_cast<int*>(count), 0;
    };
    const int result = sqlite3_exec(db.get(), "SELECT a, length(b) FROM t WHERE b IS NOT NULL",
                                    take, &rows, nullptr);
    EXPECT_EQ(result == SQLITE_OK, rows == kRows);
    return result;
  }
};

TEST_F(CheckedPages, AnyBitAndAnyPageOutOfItsPlaceIsNoticed) {
  make_checked();
  const std::string sound = contents();
  ASSERT_EQ(read_all(checked_pages()), SQLITE_OK);
  ASSERT_EQ(read_all(nullptr), SQLITE_OK);  // any SQLite reads it
  std::mt19937 random(1);
  const auto pages = sound.size() / kPage;
  for (int round = 0; round < 300; ++round) {
    auto bytes = sound;
    const std::size_t page = 1 + random() % (pages - 1), other = 1 + random() % (pages - 1);
    const auto at = static_cast<std::ptrdiff_t>(page * kPage);
    switch (round % 3) {
      case 0:
        bytes[page * kPage + random() % kPage] ^= static_cast<char>(1 << random() % 8);
        break;
      case 1:
        std::fill_n(bytes.begin() + at, kPage, '\0');
        break;
      default:
        bytes.replace(page * kPage, kPage, sound, other * kPage, kPage);
    }
    if (bytes == sound) continue;
    write(bytes);
    EXPECT_EQ(read_all(checked_pages()), SQLITE_IOERR_DATA) << "round " << round;
  }
}

TEST_F(CheckedPages, WhatAnInterruptedTransactionLeftIsRestoredWithItsChecksums) {
  make_checked();
  const std::string sound = contents();
  std::string half, journal;
  {
    const Handle db = connect(checked_pages());
    // A small cache, so that pages reach the file before the end.
    ASSERT_EQ(run(db, "PRAGMA cache_size = 5; BEGIN; UPDATE t SET b = 'other' || a"), 0);
    half = contents();
    std::ifstream in(path + "-journal", std::ios::binary);
    journal.assign(std::istreambuf_iterator<char>(in), {});
    ASSERT_EQ(run(db, "ROLLBACK"), 0);
  }
  EXPECT_EQ(contents(), sound);
  ASSERT_NE(half, sound);
  write(half);
  std::ofstream(path + "-journal", std::ios::binary) << journal;
  EXPECT_EQ(read_all(checked_pages()), SQLITE_OK);
  EXPECT_EQ(contents(), sound);

  // A bit of a page's copy: beside the bytes that SQLite samples, and beside its header's sector.
  journal[512 + 4 + 57] ^= 1;
  write(half);
  std::ofstream(path + "-journal", std::ios::binary) << journal;
  EXPECT_EQ(read_all(checked_pages()), SQLITE_IOERR_DATA);
}

TEST_F(CheckedPages, AFileWithoutThemStaysAsItIs) {
  {
    const Handle db = connect(nullptr);
    fill(db);
  }
  EXPECT_EQ(read_all(checked_pages()), SQLITE_OK);
  {
    const Handle db = connect(checked_pages());
    ASSERT_EQ(run(db, "UPDATE t SET b = b || 'x'"), 0);
  }
  EXPECT_EQ(read_all(nullptr), SQLITE_OK);
  // A checksum at the end of a full page would show here.
  const Handle db = connect(nullptr);
  std::string answer;
  const auto take = [](void* text, int, char** values, char**) {
    return *static_cast<std::string*>(text) += values[0], 0;
  };
  sqlite3_exec(db.get(), "PRAGMA integrity_check", take, &answer, nullptr);
  EXPECT_EQ(answer, "ok");
}

}  // namespace
}  // namespace orvello::test
