#include "hosts/qt/backup_keeper.h"

#include <unistd.h>

#include "hosts/qt/callbacks.h"
#include "hosts/qt/way_back.h"

namespace orvello {
namespace {

constexpr int kLowestPriority = 19;

QStringList words_of(const CommandLine& line) {
  QStringList words{QStringLiteral("backup")};
  if (!line.data_folder.empty())
    words << QStringLiteral("--data") << QString::fromStdString(line.data_folder);
  if (line.now)
    words << QStringLiteral("--now")
          << QString::asprintf("%04d-%02d-%02dT%02d:%02d", line.now->year, line.now->month,
                               line.now->day, line.now->hour, line.now->minute);
  return words;
}

}  // namespace

BackupKeeper::BackupKeeper(const WindowParts& parts, std::function<void(const std::string&)> tell,
                           std::string program)
    : clock_(parts.clock),
      copies_(calendar_file(parts.paths)),
      program_(QString::fromStdString(program)),
      words_(words_of(parts.line)),
      tell_(std::move(tell)) {
  process_.setStandardOutputFile(QProcess::nullDevice());
  process_.setChildProcessModifier([] { (void)!::nice(kLowestPriority); });
  on_signal(&process_, &QProcess::finished, &timer_, [this] { finished(); });
  on_signal(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
}

BackupKeeper::~BackupKeeper() {
  process_.disconnect();
  if (process_.state() == QProcess::NotRunning) return;
  process_.kill();
  process_.waitForFinished();
}

void BackupKeeper::begin(int first, int then) {
  timer_.start(then);
  after(first, &timer_, [this] { look(); });
}

void BackupKeeper::look() {
  if (process_.state() != QProcess::NotRunning || !copies_.is_due(TodayTriple(clock_.local_time())))
    return;
  process_.start(program_, words_, QIODevice::ReadOnly);
}

void BackupKeeper::finished() {
  const std::string said = process_.readAllStandardError().trimmed().toStdString();
  if (process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0) return;
  if (told_ || said.empty()) return;
  told_ = true;
  const std::string begin = "orvello: ";
  tell_(said.substr(said.starts_with(begin) ? begin.size() : 0));
}

}  // namespace orvello
