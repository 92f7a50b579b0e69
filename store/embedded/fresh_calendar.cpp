#include "store/embedded/fresh_calendar.h"

#include <cerrno>
#include <memory>
#include <optional>
#include <vector>

#include "files/file_reasons.h"
#include "files/replace_file.h"
#include "store/embedded/embedded_schema.h"
#include "store/embedded/sqlite/transaction.h"

namespace orvello {
namespace {

using Access = SqliteConnection::Access;
using PageChecks = SqliteConnection::PageChecks;

constexpr std::chrono::milliseconds kPatience{500};

// Every row of a table, by the names of the old one's columns.
bool copy_table(SqliteConnection& from, SqliteConnection& to, const std::string& table) {
  Statement read(from, "SELECT * FROM " + table);
  std::string names, places;
  for (const std::string& column : read.columns()) {
    names += (names.empty() ? "" : ", ") + column;
    places += places.empty() ? "?" : ", ?";
  }
  Statement write(to, "INSERT INTO " + table + " (" + names + ") VALUES (" + places + ")");
  if (!read.each([&](Statement& row) { return write.bind_row(row).run(); })) return false;
  const std::string count = "SELECT count(*) FROM " + table;
  const auto had = from.number(count.c_str()), has = to.number(count.c_str());
  if (had && has && *had != *has) to.note_damage("rows of " + table + " are missing");
  return had && had == has;
}

// Tables without rows, in a file without content. It has no name of its own yet and goes to the
// disk as a whole before it gets one, so that nothing before that need wait for the disk.
bool make_tables(SqliteConnection& db) {
  if (!db.good() || !db.reserve_checks() ||
      !db.run("PRAGMA synchronous = OFF; PRAGMA secure_delete = ON"))
    return false;
  SqliteTransaction change(db, SqliteTransaction::Kind::write);
  return change && db.run(kSchema) && db.run(format_mark()) && change.commit();
}

// Into tables without rows. The counters of given-out numbers come along: a number is never given
// to another appointment.
bool copy_everything(SqliteConnection& from, SqliteConnection& to) {
  std::vector<std::string> names;
  Statement tables(
      to, "SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name = 'sqlite_sequence'");
  if (!tables.each([&](Statement& row) { names.push_back(row.string(0)); })) return false;
  SqliteTransaction change(to, SqliteTransaction::Kind::write);
  if (!change) return false;
  for (const std::string& table : names) {
    // The copied rows have counted already.
    if (table == "sqlite_sequence" && !to.run("DELETE FROM sqlite_sequence")) return false;
    if (!copy_table(from, to, table)) return false;
  }
  return change.commit();
}

std::string sentence(const std::string& path, const char* what, const std::string& reason) {
  return path + what + reason + ".";
}

}  // namespace

std::string create_calendar_file(const std::string& path) {
  constexpr const char* kNot = " cannot be created: ";
  FileInTheMaking fresh(path);
  if (!fresh.exists()) return sentence(path, kNot, reason_of(errno));
  {
    SqliteConnection db(fresh.path(), Access::read_write, PageChecks::on, kPatience);
    // A file that is copied from an older one gets its indexes with its first change, as what they
    // stand on is corrected then.
    if (!make_tables(db) || !db.run(kSeriesIndexes))
      return sentence(path, kNot, reason_of(db.failure()));
  }
  // Another process may have been quicker.
  if (!fresh.put_in_place(TakenName::keep))
    return errno == EEXIST ? "" : sentence(path, kNot, reason_of(errno));
  return sync_folder(folder_of(path)) ? "" : sentence(path, kNot, reason_of(errno));
}

std::string upgrade_calendar_file(const std::string& name) {
  constexpr const char* kNot = " cannot be brought to this version: ";
  // The file itself, where the name is a link: the link stays.
  const std::string real = real_path(name), path = real.empty() ? name : real;
  std::optional<SqliteConnection> before;
  SqliteConnection& old = before.emplace(path, Access::read_write, PageChecks::off, kPatience);
  const auto failed = [&](const SqliteFailure& why) {
    return why.fault == SqliteFault::busy || is_damage(why.fault)
               ? sentence_of(why, path)
               : sentence(path, kNot, reason_of(why));
  };
  if (!old.good()) return failed(old.failure());
  std::optional<SqliteTransaction> alone;
  if (!alone.emplace(old, SqliteTransaction::Kind::alone)) return failed(old.failure());
  // Another process may have been quicker: then this is the file that it has put aside.
  if (old.has_moved()) return "";
  if (old.finds_sound("PRAGMA quick_check(1)") != true) return path + " is damaged.";

  FileInTheMaking fresh(path);
  if (!fresh.exists()) return sentence(path, kNot, reason_of(errno));
  {
    SqliteConnection db(fresh.path(), Access::read_write, PageChecks::on, kPatience);
    if (!make_tables(db) || !copy_everything(old, db))
      return failed(db.failure().fault == SqliteFault::none ? old.failure() : db.failure());
  }
  if (!open_files_can_move()) {
    // Then who has it open keeps it from being replaced; who had it for this moment has left a
    // mark.
    const auto held = status_of_file(path);
    alone.reset(), before.reset();
    const auto now = status_of_file(path);
    if (!held || !now || held->changed != now->changed || held->size != now->size)
      return sentence(path, kNot, reason_of(EWOULDBLOCK));
  }
  if (!fresh.put_in_place(TakenName::replace) || !sync_folder(folder_of(path)))
    return sentence(path, kNot, reason_of(errno));
  return "";
}

}  // namespace orvello
