#include "exchange/import.h"

#include "exchange/importer.h"
#include "files/input_file.h"

namespace orvello {
namespace {

constexpr std::uint64_t kLargestFile = std::uint64_t{1} << 30;

ImportResult run(const std::vector<std::string>& paths, RecordStore& store, const Clock& clock,
                 bool writes) {
  ImportResult result;
  Importer importer(store, clock, writes);
  for (const std::string& path : paths) {
    InputFile in(path, kLargestFile);
    if (!in) {
      result.failure = in.problem();
      return result;
    }
    ImportedFile file{path, {}};
    ProblemList problems(path);
    const bool stored = importer.import_stream(in, file.counts, problems);
    result.problems.insert(result.problems.end(), problems.problems().begin(),
                           problems.problems().end());
    if (!in.problem().empty()) {
      result.failure = in.problem();
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
