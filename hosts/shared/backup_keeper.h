// While the window is open, a copy of the calendar is made on each day that needs one. Another
// process of this program makes it (`orvello backup`), with the lowest priority: checking a copy
// takes as long as the calendar is large, and cannot be done in pieces between two events.
#pragma once

#include <functional>

#include "hosts/shared/program_loop.h"
#include "hosts/shared/program_system.h"
#include "hosts/shared/window_program.h"
#include "store/embedded/calendar_copies.h"

namespace orvello {

class BackupKeeper {
 public:
  // `tell` gets the first reason why a copy could not be made, and no other.
  BackupKeeper(const WindowParts& parts, ProgramLoop& loop, OwnRuns& runs,
               std::function<void(const std::string&)> tell);
  BackupKeeper(const BackupKeeper&) = delete;
  BackupKeeper& operator=(const BackupKeeper&) = delete;

  // The first look after `first` milliseconds, the others every `then`.
  void begin(int first, int then);

 private:
  void look();
  void finished(int code, std::string said);

  const Clock& clock_;
  CalendarCopies copies_;
  ProgramLoop& loop_;
  OwnRuns& runs_;
  std::vector<std::string> words_;
  std::function<void(const std::string&)> tell_;
  bool told_ = false, running_ = false;
  std::unique_ptr<LoopTimer> first_, then_;
  std::unique_ptr<OwnRun> run_;  // what it left half done nobody sees
};

}  // namespace orvello
