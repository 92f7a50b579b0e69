// An import, or its preview, that goes on in small steps and can be given up between any two.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "exchange/import.h"
#include "exchange/importer.h"

namespace orvello {

struct ImportRequest {
  std::vector<std::string> paths;
  OpenInput open;
  std::set<ImportSource> left_out{};
};

// Events and contacts.
struct ImportProgress {
  int done = 0;
  int total = 0;       // as many as were found, and as the rest of the files may hold
  bool exact = false;  // all was found
  double part = 0;     // of all the work, from 0 to 1
};

class ImportRun {
 public:
  // With `writes` the whole run is one transaction, which other processes wait for: nobody is asked
  // anything between steps. A run that is not gone through to its end leaves the store as it was.
  ImportRun(ImportRequest request, RecordStore& store, const Clock& clock, bool writes,
            ImportWatcher* watcher = nullptr);

  // Some milliseconds at most, but for the end, which makes the transaction durable. False: it has
  // ended, by itself or by a failure.
  bool step();
  // Steps until it is enough, or until it has ended, which is false. A preview reads one state of
  // the store meanwhile.
  bool go_on(const std::function<bool()>& enough);
  ImportResult finish();  // all that is left
  ImportProgress progress();

 private:
  bool begin();
  bool open_next();
  bool end_file();
  bool end();
  bool fail(std::string reason);
  ImportCounts* counts_of(const std::string& name);
  void measure_files();

  ImportRequest request_;
  RecordStore& store_;
  const Clock& clock_;
  bool writes_;
  ImportWatcher* watcher_;
  std::optional<StoreWriting> changes_;
  std::optional<Importer> importer_;
  std::unique_ptr<InputStream> in_;  // of the file at hand
  ProblemList problems_{""};
  std::size_t file_ = 0;
  bool ended_ = false;
  std::map<ImportSource, ImportCounts> counts_;
  Importer::Progress before_;               // of the files before this one
  std::optional<std::uint64_t> all_bytes_;  // of all files
  ImportResult result_;
};

}  // namespace orvello
