#include "exchange/import.h"

#include "exchange/import_run.h"

namespace orvello {
ImportCounts& ImportCounts::operator+=(const ImportCounts& other) {
  imported += other.imported;
  updated += other.updated;
  skipped += other.skipped;
  return *this;
}

ImportResult import_files(const std::vector<std::string>& paths, const OpenInput& open,
                          RecordStore& store, const Clock& clock) {
  return ImportRun({paths, open}, store, clock, true).finish();
}

ImportResult preview_files(const std::vector<std::string>& paths, const OpenInput& open,
                           RecordStore& store, const Clock& clock) {
  return ImportRun({paths, open}, store, clock, false).finish();
}

std::string problem_line(const ImportProblem& problem) {
  return problem.file + ":" + std::to_string(problem.line) + ": " + problem.text;
}

std::string counts_line(const ImportCounts& counts) {
  return std::to_string(counts.imported) + " imported, " + std::to_string(counts.updated) +
         " updated, " + std::to_string(counts.skipped) + " skipped";
}

}  // namespace orvello
