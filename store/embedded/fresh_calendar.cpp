#include "store/embedded/fresh_calendar.h"

#include <sqlite3.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "files/replace_file.h"
#include "store/embedded/checked_pages.h"
#include "store/embedded/embedded_schema.h"

namespace orvello {
namespace {

struct CloseDatabase {
  void operator()(sqlite3* db) const { sqlite3_close(db); }
};
struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using DatabaseHandle = std::unique_ptr<sqlite3, CloseDatabase>;
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

constexpr int kPatienceMilliseconds = 500;

DatabaseHandle connect(const std::string& path, const char* layer) {
  sqlite3* db = nullptr;
  sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, layer);
  sqlite3_busy_timeout(db, kPatienceMilliseconds);
  return DatabaseHandle(db);
}

bool run(sqlite3* db, const std::string& sql) {
  return sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

StatementHandle prepare(sqlite3* db, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(db, sql.c_str(), -1, &statement, nullptr);
  return StatementHandle(statement);
}

// The first column of a query's only row; -1 on a failure.
std::int64_t number(sqlite3* db, const std::string& sql) {
  const auto row = prepare(db, sql);
  return row && sqlite3_step(row.get()) == SQLITE_ROW ? sqlite3_column_int64(row.get(), 0) : -1;
}

// Every row of a table, by the names of the old one's columns.
bool copy_table(sqlite3* from, sqlite3* to, const std::string& table) {
  const auto read = prepare(from, "SELECT * FROM " + table);
  if (!read) return false;
  const int columns = sqlite3_column_count(read.get());
  std::string names, places;
  for (int i = 0; i < columns; ++i) {
    names += std::string(i ? ", " : "") + sqlite3_column_name(read.get(), i);
    places += i ? ", ?" : "?";
  }
  const auto write =
      prepare(to, "INSERT INTO " + table + " (" + names + ") VALUES (" + places + ")");
  if (!write) return false;
  int step;
  while ((step = sqlite3_step(read.get())) == SQLITE_ROW) {
    for (int i = 0; i < columns; ++i)
      if (sqlite3_bind_value(write.get(), i + 1, sqlite3_column_value(read.get(), i)) != SQLITE_OK)
        return false;
    if (sqlite3_step(write.get()) != SQLITE_DONE) return false;
    sqlite3_reset(write.get());
  }
  return step == SQLITE_DONE;
}

// Tables without rows, in a file without content. It has no name of its own yet and goes to the
// disk as a whole before it gets one, so that nothing before that need wait for the disk.
bool make_tables(sqlite3* db) {
  return reserve_checked_bytes(db) &&
         run(db, "PRAGMA synchronous = OFF; PRAGMA secure_delete = ON") && run(db, "BEGIN") &&
         run(db, kSchema) && run(db, format_mark()) && run(db, "COMMIT");
}

// Into tables without rows. The counters of given-out numbers come along: a number is never given
// to another appointment.
bool copy_everything(sqlite3* from, sqlite3* to) {
  const auto tables = prepare(
      to, "SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name = 'sqlite_sequence'");
  if (!tables || !run(to, "BEGIN")) return false;
  int step;
  while ((step = sqlite3_step(tables.get())) == SQLITE_ROW) {
    const std::string table = reinterpret_cast<const char*>(sqlite3_column_text(tables.get(), 0));
    // The copied rows have counted already.
    if (table == "sqlite_sequence" && !run(to, "DELETE FROM sqlite_sequence")) return false;
    const std::string count = "SELECT count(*) FROM " + table;
    if (!copy_table(from, to, table) || number(from, count) != number(to, count)) return false;
  }
  return step == SQLITE_DONE && run(to, "COMMIT");
}

std::string reason_of(const std::string& path, const char* what, sqlite3* db) {
  return path + what + sqlite3_errmsg(db) + ".";
}

std::string reason_of(const std::string& path, const char* what, int error) {
  return path + what + std::strerror(error) + ".";
}

}  // namespace

std::string create_calendar_file(const std::string& path) {
  constexpr const char* kNot = " cannot be created: ";
  FileInTheMaking fresh(path);
  if (!fresh.exists()) return reason_of(path, kNot, errno);
  {
    const DatabaseHandle db = connect(fresh.path(), checked_pages());
    // A file that is copied from an older one gets its indexes with its first change, as what they
    // stand on is corrected then.
    if (!make_tables(db.get()) || !run(db.get(), kSeriesIndexes))
      return reason_of(path, kNot, db.get());
  }
  // Another process may have been quicker.
  if (!fresh.put_in_place(FileInTheMaking::Taken::keep))
    return errno == EEXIST ? "" : reason_of(path, kNot, errno);
  return sync_folder(folder_of(path)) ? "" : reason_of(path, kNot, errno);
}

std::string upgrade_calendar_file(const std::string& name) {
  constexpr const char* kNot = " cannot be brought to this version: ";
  // The file itself, where the name is a link: the link stays.
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(name.c_str(), nullptr),
                                                         std::free);
  const std::string path = real ? real.get() : name;
  const DatabaseHandle old = connect(path, nullptr);
  if (!run(old.get(), "BEGIN EXCLUSIVE"))
    return (sqlite3_errcode(old.get()) & 0xFF) == SQLITE_BUSY
               ? path + " is in use by another program."
               : reason_of(path, kNot, old.get());
  // Another process may have been quicker: then this is the file that it has put aside.
  int moved = 0;
  sqlite3_file_control(old.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  if (moved) return "";
  const auto check = prepare(old.get(), "PRAGMA quick_check(1)");
  if (!check || sqlite3_step(check.get()) != SQLITE_ROW ||
      std::string_view(reinterpret_cast<const char*>(sqlite3_column_text(check.get(), 0))) != "ok")
    return path + " is damaged.";

  FileInTheMaking fresh(path);
  if (!fresh.exists()) return reason_of(path, kNot, errno);
  {
    const DatabaseHandle db = connect(fresh.path(), checked_pages());
    if (!make_tables(db.get()) || !copy_everything(old.get(), db.get()))
      return reason_of(path, kNot, db.get());
  }
  if (!fresh.put_in_place(FileInTheMaking::Taken::replace) || !sync_folder(folder_of(path)))
    return reason_of(path, kNot, errno);
  return "";
}

}  // namespace orvello
