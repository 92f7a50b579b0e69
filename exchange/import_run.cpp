#include "exchange/import_run.h"

#include <algorithm>
#include <utility>

namespace orvello {

ImportRun::ImportRun(ImportRequest request, RecordStore& store, const Clock& clock, bool writes,
                     ImportWatcher* watcher)
    : request_(std::move(request)),
      store_(store),
      clock_(clock),
      writes_(writes),
      watcher_(watcher) {}

bool ImportRun::step() {
  if (ended_) return false;
  if (!importer_) return begin();
  if (!in_) return file_ < request_.paths.size() ? open_next() : end();
  return importer_->step() || end_file();
}

bool ImportRun::go_on(const std::function<bool()>& enough) {
  if (ended_) return false;
  std::optional<StoreReading> reading;
  if (!writes_ && !reading.emplace(store_)) return fail(store_.problem());
  while (step())
    if (enough()) return true;
  return false;
}

ImportResult ImportRun::finish() {
  (void)go_on([] { return false; });
  return std::move(result_);
}

bool ImportRun::begin() {
  if (writes_ && !changes_.emplace(store_)) return fail(store_.problem());
  importer_.emplace(store_, clock_, writes_, watcher_);
  return true;
}

bool ImportRun::open_next() {
  const std::string& path = request_.paths[file_];
  in_ = request_.open(path);
  if (!*in_) return fail(in_->problem());
  problems_ = ProblemList(path);
  importer_->start(
      *in_, [this](const std::string& name) { return counts_of(name); }, problems_);
  return true;
}

// Null for what is left out; its row stays.
ImportCounts* ImportRun::counts_of(const std::string& name) {
  const ImportSource source{file_, name};
  ImportCounts& counts = counts_[source];
  return request_.left_out.contains(source) ? nullptr : &counts;
}

bool ImportRun::end_file() {
  const auto& problems = problems_.problems();
  result_.problems.insert(result_.problems.end(), problems.begin(), problems.end());
  if (!in_->problem().empty()) return fail(in_->problem());
  if (importer_->fault()) return fail(importer_->fault().reason());
  const Importer::Progress now = importer_->progress();
  before_ = {before_.bytes + now.bytes, before_.found + now.found, before_.named + now.named,
             before_.done + now.done};
  in_.reset();
  ++file_;
  return true;
}

bool ImportRun::end() {
  if (!importer_->finish()) return fail(importer_->fault().reason());
  if (changes_ && !changes_->commit()) return fail(store_.problem());
  for (const auto& [source, counts] : counts_) {
    result_.calendars.push_back({source, counts});
    result_.counts += counts;
  }
  result_.done = ended_ = true;
  return false;
}

bool ImportRun::fail(std::string reason) {
  ended_ = true;
  result_.failure = std::move(reason);
  changes_.reset();
  return false;
}

void ImportRun::measure_files() {
  all_bytes_ = 0;
  for (const std::string& path : request_.paths) *all_bytes_ += request_.open(path)->size();
}

ImportProgress ImportRun::progress() {
  if (!all_bytes_) measure_files();
  const Importer::Progress now = in_ ? importer_->progress() : Importer::Progress();
  const double bytes = static_cast<double>(before_.bytes + now.bytes);
  const double all = std::max(static_cast<double>(*all_bytes_), bytes);
  ImportProgress progress;
  progress.done = before_.done + now.done;
  const int found = before_.found + now.found;
  progress.exact = ended_ || bytes >= all;
  progress.total = progress.exact || bytes == 0 ? found : static_cast<int>(found * (all / bytes));
  const double total = std::max(1, progress.total);
  const int named = before_.named + now.named;
  if (all > 0) progress.part = (bytes / all + named / total + progress.done / total) / 3;
  progress.part = ended_ ? 1 : std::min(progress.part, 1.0);
  return progress;
}

}  // namespace orvello
