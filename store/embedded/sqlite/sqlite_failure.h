// Why SQLite refused something. Its many codes become the few kinds here, and nowhere else.
#pragma once

#include <string>

namespace orvello {

enum class SqliteFault {
  none,
  busy,               // another program's lock
  full,               // the disk
  write_failed,       // for another reason than a full disk: a quota, a limit on the file's size
  read_only,          // the file, the disk or the connection
  unfinished_change,  // must be taken back before anything is read, and the file is read-only
  cannot_open,
  read_failed,
  disk,               // any other input or output that the system refused
  folder_not_synced,  // of a journal that is gone already: the file has all of the change
  damaged,
  page_damaged,  // a page is not as it was written
  no_memory,
  constraint,
  misuse,  // of this program
  other
};

struct SqliteFailure {
  SqliteFault fault = SqliteFault::none;
  int system_error = 0;  // of the system's call that failed, where one did
  std::string words;     // SQLite's own; of damage that a reader found: what it is
};

// `words` are SQLite's, of `code`; so is `system_error`.
SqliteFailure failure_of(int code, int system_error, std::string words);

bool is_damage(SqliteFault fault);

// The end of a sentence, without its full stop: "the disk is full".
std::string reason_of(const SqliteFailure& failure);

// "PATH is in use by another program."
std::string sentence_of(const SqliteFailure& failure, const std::string& path);

}  // namespace orvello
