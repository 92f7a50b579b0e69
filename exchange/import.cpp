#include "exchange/import.h"

#include "exchange/importer.h"

namespace orvello {
namespace {

ImportResult run(const std::vector<std::string>& paths, const OpenInput& open, RecordStore& store,
                 const Clock& clock, bool writes) {
  ImportResult result;
  Importer importer(store, clock, writes);
  for (const std::string& path : paths) {
    const auto in = open(path);
    if (!*in) {
      result.failure = in->problem();
      return result;
    }
    ImportedFile file{path, {}};
    ProblemList problems(path);
    const bool stored = importer.import_stream(*in, file.counts, problems);
    result.problems.insert(result.problems.end(), problems.problems().begin(),
                           problems.problems().end());
    if (!in->problem().empty()) {
      result.failure = in->problem();
      return result;
    }
    if (!stored) {
      result.failure = importer.fault().reason();
      return result;
    }
    result.counts += file.counts;
    result.files.push_back(std::move(file));
  }
  result.done = importer.finish();
  if (!result.done) result.failure = importer.fault().reason();
  return result;
}

}  // namespace

ImportCounts& ImportCounts::operator+=(const ImportCounts& other) {
  imported += other.imported;
  updated += other.updated;
  skipped += other.skipped;
  return *this;
}

ImportResult import_files(const std::vector<std::string>& paths, const OpenInput& open,
                          RecordStore& store, const Clock& clock) {
  ImportResult result;
  StoreWriting changes(store);
  if (changes) {
    result = run(paths, open, store, clock, true);
    if (result.done && changes.commit()) return result;
    if (result.done) result.failure = store.problem();
  } else {
    result.failure = store.problem();
  }
  result.done = false;
  result.counts = {};
  result.files.clear();
  return result;
}

ImportResult preview_files(const std::vector<std::string>& paths, const OpenInput& open,
                           RecordStore& store, const Clock& clock) {
  return run(paths, open, store, clock, false);
}

std::string problem_line(const ImportProblem& problem) {
  return problem.file + ":" + std::to_string(problem.line) + ": " + problem.text;
}

std::string counts_line(const ImportCounts& counts) {
  return std::to_string(counts.imported) + " imported, " + std::to_string(counts.updated) +
         " updated, " + std::to_string(counts.skipped) + " skipped";
}

}  // namespace orvello
