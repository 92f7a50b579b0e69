// Import of iCalendar 2.0 and vCalendar 1.0 files. User-interface thread, like the store it fills.
#pragma once

#include <string>
#include <vector>

#include "base/input_stream.h"
#include "ports/clock.h"
#include "store/record_store.h"

namespace orvello {

// Appointments, not events: a series with its changed occurrences counts once.
struct ImportCounts {
  int imported = 0;  // new in the store
  int updated = 0;   // the store had this UID, even with the same content
  int skipped = 0;   // broken events
  ImportCounts& operator+=(const ImportCounts& other);
  friend bool operator==(const ImportCounts&, const ImportCounts&) = default;
};

struct ImportProblem {
  std::string file;
  int line = 0;  // 0: the file as a whole
  std::string text;
};

// A calendar of a file: all that has one name there, or none, as contacts have.
struct ImportSource {
  std::size_t file = 0;  // its place among the paths
  std::string name;
  friend auto operator<=>(const ImportSource&, const ImportSource&) = default;
};

struct ImportedCalendar {
  ImportSource source;
  ImportCounts counts;  // none of one that was left out
};

struct ImportResult {
  bool done = false;  // all files were looked at and, unless this is a preview, the store has them
  std::string failure;  // why not: a file that cannot be read, or the store's problem
  ImportCounts counts;
  std::vector<ImportedCalendar> calendars;  // by file and name
  std::vector<ImportProblem> problems;
};

// All files' changes are one transaction: after a failure, or a process that dies at any moment,
// the store is as it was. Broken events and files that hold no calendar are problems, not failures.
// Each file is opened when its turn comes.
ImportResult import_files(const std::vector<std::string>& paths, const OpenInput& open,
                          RecordStore& store, const Clock& clock);

// What import_files would count and complain of; the store is only read.
ImportResult preview_files(const std::vector<std::string>& paths, const OpenInput& open,
                           RecordStore& store, const Clock& clock);

// "FILE:LINE: text"
std::string problem_line(const ImportProblem& problem);

// "N imported, M updated, K skipped"
std::string counts_line(const ImportCounts& counts);

}  // namespace orvello
