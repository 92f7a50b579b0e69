#include "exchange/import.h"

#include <filesystem>
#include <fstream>

#include "exchange/importer.h"

namespace orvello {
namespace {

ImportResult run(const std::vector<std::string>& paths, RecordStore& store, const Clock& clock,
                 bool writes) {
  ImportResult result;
  Importer importer(store, clock, writes);
  for (const std::string& path : paths) {
    std::error_code error;
    std::ifstream in(path, std::ios::binary);
    if (!in || std::filesystem::is_directory(path, error)) {
      result.failure = path + ": the file cannot be read";
      return result;
    }
    ImportedFile file{path, {}};
    ProblemList problems(path);
    const bool stored = importer.import_stream(in, file.counts, problems);
    result.problems.insert(result.problems.end(), problems.problems().begin(),
                           problems.problems().end());
    if (in.bad()) {
      result.failure = path + ": reading the file failed";
      return result;
    }
    if (!stored) {
      result.failure = store.problem();
      return result;
    }
    result.counts += file.counts;
    result.files.push_back(std::move(file));
  }
  result.done = importer.finish();
  if (!result.done) result.failure = store.problem();
  return result;
}

}  // namespace

ImportCounts& ImportCounts::operator+=(const ImportCounts& other) {
  imported += other.imported;
  updated += other.updated;
  skipped += other.skipped;
  return *this;
}

ImportResult import_files(const std::vector<std::string>& paths, RecordStore& store,
                          const Clock& clock) {
  if (!store.begin()) {
    ImportResult result;
    result.failure = store.problem();
    return result;
  }
  ImportResult result = run(paths, store, clock, true);
  if (!result.done) {
    store.rollback();
  } else if (!store.commit()) {
    result.done = false;
    result.failure = store.problem();
    store.rollback();
  }
  if (!result.done) {
    result.counts = {};
    result.files.clear();
  }
  return result;
}

ImportResult preview_files(const std::vector<std::string>& paths, RecordStore& store,
                           const Clock& clock) {
  return run(paths, store, clock, false);
}

std::string problem_line(const ImportProblem& problem) {
  return problem.file + ":" + std::to_string(problem.line) + ": " + problem.text;
}

std::string counts_line(const ImportCounts& counts) {
  return std::to_string(counts.imported) + " imported, " + std::to_string(counts.updated) +
         " updated, " + std::to_string(counts.skipped) + " skipped";
}

}  // namespace orvello
