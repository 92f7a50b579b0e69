// The Linux system with the toolkit's window, as the program needs it.
#pragma once

#include "hosts/qt/qt_own_runs.h"
#include "hosts/shared/program_system.h"

namespace orvello {

class QtSystem : public ProgramSystem {
 public:
  // `argc` and `argv` are the process's, and live as long as this.
  QtSystem(int& argc, char** argv) : argc_(argc), argv_(argv) {}

  Result<Paths> open_folders(const std::string& chosen) override;
  std::unique_ptr<Clock> clock(std::optional<LocalSeconds> fixed) override;
  std::unique_ptr<Locale> locale(const std::string& language) override;
  std::unique_ptr<StoredRegistry> registry(const Paths& paths) override;
  std::unique_ptr<Files> files(const Paths& paths) override;
  std::unique_ptr<RecordDatabases> databases(const std::string& object_store) override;
  std::unique_ptr<Departures> departures(const std::string& folder) override;

  bool can_show_windows() override;
  std::unique_ptr<WindowHost> window(const WindowHostOptions& options, Registry& registry,
                                     RecordDatabases& databases, CalendarStore& store) override;
  void tell_start_fault(const std::string& sentence) override;
  void tell_start_fault(MessageBoxes& boxes, const std::string& sentence) override;
  long milliseconds_since_start() override;
  std::unique_ptr<OwnRun> start(const std::vector<std::string>& words, Ended ended) override {
    return runs_.start(words, std::move(ended));
  }

 private:
  int& argc_;
  char** argv_;
  QtOwnRuns runs_;
};

}  // namespace orvello
