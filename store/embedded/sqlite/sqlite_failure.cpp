#include "store/embedded/sqlite/sqlite_failure.h"

#include <sqlite3.h>

#include "files/file_reasons.h"
#include "files/system_files.h"

namespace orvello {
namespace {

SqliteFault disk_fault(int code) {
  switch (code) {
    case SQLITE_IOERR_DATA:
      return SqliteFault::page_damaged;
    case SQLITE_IOERR_SHORT_READ:
    case SQLITE_IOERR_CORRUPTFS:
      return SqliteFault::damaged;
    case SQLITE_IOERR_READ:
      return SqliteFault::read_failed;
    case SQLITE_IOERR_WRITE:
      return SqliteFault::write_failed;
    case SQLITE_IOERR_DIR_FSYNC:
      return SqliteFault::folder_not_synced;
    default:
      return SqliteFault::disk;
  }
}

SqliteFault fault_of(int code) {
  switch (code & 0xFF) {
    case SQLITE_OK:
      return SqliteFault::none;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return SqliteFault::busy;
    case SQLITE_FULL:
      return SqliteFault::full;
    case SQLITE_PERM:
    case SQLITE_READONLY:
      return code == SQLITE_READONLY_ROLLBACK ? SqliteFault::unfinished_change
                                              : SqliteFault::read_only;
    case SQLITE_CANTOPEN:
      return SqliteFault::cannot_open;
    case SQLITE_IOERR:
      return disk_fault(code);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return SqliteFault::damaged;
    case SQLITE_NOMEM:
      return SqliteFault::no_memory;
    case SQLITE_CONSTRAINT:
      return SqliteFault::constraint;
    case SQLITE_MISUSE:
    case SQLITE_RANGE:
      return SqliteFault::misuse;
    default:
      return SqliteFault::other;
  }
}

}  // namespace

SqliteFailure failure_of(int code, int system_error, std::string words) {
  const SqliteFault fault = fault_of(code);
  if (fault == SqliteFault::page_damaged) words = "a page is not as it was written";
  if (fault == SqliteFault::damaged) words.clear();
  return {fault, errno_of_system(system_error), std::move(words)};
}

bool is_damage(SqliteFault fault) {
  return fault == SqliteFault::damaged || fault == SqliteFault::page_damaged;
}

std::string reason_of(const SqliteFailure& failure) {
  switch (failure.fault) {
    case SqliteFault::busy:
      return "it is in use by another program";
    case SqliteFault::full:
      return "the disk is full";
    case SqliteFault::read_only:
      return "it can only be read";
    case SqliteFault::write_failed:
    case SqliteFault::cannot_open:
    case SqliteFault::read_failed:
    case SqliteFault::disk:
    case SqliteFault::folder_not_synced:
      return failure.system_error != 0 ? reason_of(failure.system_error)
                                       : "the disk fails or is full";
    case SqliteFault::damaged:
    case SqliteFault::page_damaged:
      return "it is damaged" + (failure.words.empty() ? "" : ": " + failure.words);
    case SqliteFault::no_memory:
      return "there is not enough memory";
    default:
      return failure.words;
  }
}

std::string sentence_of(const SqliteFailure& failure, const std::string& path) {
  switch (failure.fault) {
    case SqliteFault::busy:
      return path + " is in use by another program.";
    case SqliteFault::full:
      return path + " cannot be written: the disk is full.";
    case SqliteFault::write_failed:
    case SqliteFault::read_failed:
    case SqliteFault::disk:
    case SqliteFault::folder_not_synced:
      return path + " cannot be read or written: " + reason_of(failure) + ".";
    case SqliteFault::cannot_open:
      return path + " cannot be opened: " + reason_of(failure) + ".";
    case SqliteFault::read_only:
      return path + " cannot be changed: it can only be read.";
    case SqliteFault::unfinished_change:
      return path + " holds a change that was not finished; it can be read once it can be written" +
             " to.";
    case SqliteFault::no_memory:
      return path + " cannot be read: there is not enough memory.";
    case SqliteFault::damaged:
    case SqliteFault::page_damaged:
      return path + " is damaged" + (failure.words.empty() ? "." : ": " + failure.words + ".");
    default:
      return path + ": " + failure.words + ".";
  }
}

}  // namespace orvello
