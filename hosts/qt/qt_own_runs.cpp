#include "hosts/qt/qt_own_runs.h"

#include <unistd.h>

#include <QProcess>

#include "hosts/qt/callbacks.h"

namespace orvello {
namespace {

constexpr int kLowestPriority = 19;
constexpr int kCutShort = -1;

class RunningProcess : public OwnRun {
 public:
  RunningProcess(const QString& program, const QStringList& words, OwnRuns::Ended ended)
      : ended_(std::move(ended)) {
    process_.setStandardOutputFile(QProcess::nullDevice());
    process_.setChildProcessModifier([] { (void)!::nice(kLowestPriority); });
    on_signal(&process_, &QProcess::finished, &process_, [this] { finished(); });
    process_.start(program, words, QIODevice::ReadOnly);
  }
  ~RunningProcess() override {
    process_.disconnect();
    if (process_.state() == QProcess::NotRunning) return;
    process_.kill();
    process_.waitForFinished();
  }
  RunningProcess(const RunningProcess&) = delete;
  RunningProcess& operator=(const RunningProcess&) = delete;
  bool running() const { return process_.state() != QProcess::NotRunning; }

 private:
  void finished() {
    const bool whole = process_.exitStatus() == QProcess::NormalExit;
    ended_(whole ? process_.exitCode() : kCutShort, process_.readAllStandardError().toStdString());
  }

  OwnRuns::Ended ended_;
  QProcess process_;
};

}  // namespace

std::unique_ptr<OwnRun> QtOwnRuns::start(const std::vector<std::string>& words, Ended ended) {
  QStringList all;
  for (const std::string& word : words) all << QString::fromStdString(word);
  auto run =
      std::make_unique<RunningProcess>(QString::fromStdString(program_), all, std::move(ended));
  if (!run->running()) return nullptr;
  return run;
}

}  // namespace orvello
