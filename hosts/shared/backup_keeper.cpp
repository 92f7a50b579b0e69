#include "hosts/shared/backup_keeper.h"

#include <cstdio>

#include "hosts/shared/way_back.h"

namespace orvello {
namespace {

std::vector<std::string> words_of(const CommandLine& line) {
  std::vector<std::string> words{"backup"};
  if (!line.data_folder.empty()) words.insert(words.end(), {"--data", line.data_folder});
  if (line.now) {
    char moment[64];
    std::snprintf(moment, sizeof moment, "%04d-%02d-%02dT%02d:%02d", line.now->year,
                  line.now->month, line.now->day, line.now->hour, line.now->minute);
    words.insert(words.end(), {"--now", moment});
  }
  return words;
}

std::string trimmed(const std::string& text) {
  const auto blank = " \t\r\n";
  const auto from = text.find_first_not_of(blank);
  return from == std::string::npos ? std::string()
                                   : text.substr(from, text.find_last_not_of(blank) - from + 1);
}

}  // namespace

BackupKeeper::BackupKeeper(const WindowParts& parts, ProgramLoop& loop, OwnRuns& runs,
                           std::function<void(const std::string&)> tell)
    : clock_(parts.clock),
      copies_(calendar_file(parts.paths)),
      loop_(loop),
      runs_(runs),
      words_(words_of(parts.line)),
      tell_(std::move(tell)) {}

void BackupKeeper::begin(int first, int then) {
  then_ = loop_.every(then, [this] { look(); });
  first_ = loop_.once(first, [this] { look(); });
}

void BackupKeeper::look() {
  if (running_ || !copies_.is_due(TodayTriple(clock_.local_time()))) return;
  run_ = runs_.start(words_,
                     [this](int code, const std::string& said) { finished(code, trimmed(said)); });
  running_ = run_ != nullptr;
}

void BackupKeeper::finished(int code, std::string said) {
  running_ = false;
  if (code == 0 || told_ || said.empty()) return;
  told_ = true;
  const std::string begin = "orvello: ";
  tell_(said.substr(said.starts_with(begin) ? begin.size() : 0));
}

}  // namespace orvello
