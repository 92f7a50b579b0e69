// While the window is open, a copy of the calendar is made on each day that needs one. Another
// process of this program makes it (`orvello backup`), with the lowest priority: checking a copy
// takes as long as the calendar is large, and cannot be done in pieces between two events.
#pragma once

#include <QProcess>
#include <QTimer>
#include <functional>

#include "hosts/qt/window_program.h"
#include "store/embedded/calendar_copies.h"

namespace orvello {

class BackupKeeper {
 public:
  // `tell` gets the first reason why a copy could not be made, and no other. `program` is this one.
  BackupKeeper(const WindowParts& parts, std::function<void(const std::string&)> tell,
               std::string program = "/proc/self/exe");

  ~BackupKeeper();  // ends a process that is under way; what it left half done nobody sees
  BackupKeeper(const BackupKeeper&) = delete;
  BackupKeeper& operator=(const BackupKeeper&) = delete;

  // The first look after `first` milliseconds, the others every `then`.
  void begin(int first, int then);

 private:
  void look();
  void finished();

  const Clock& clock_;
  CalendarCopies copies_;
  QString program_;
  QStringList words_;
  std::function<void(const std::string&)> tell_;
  bool told_ = false;
  QTimer timer_;
  QProcess process_;
};

}  // namespace orvello
