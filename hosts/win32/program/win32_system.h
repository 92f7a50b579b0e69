// Windows with the platform's own window, as the program needs it.
#pragma once

#include "hosts/shared/program_system.h"
#include "hosts/win32/program/own_process.h"

namespace orvello {

class Win32System : public ProgramSystem {
 public:
  Result<Paths> open_folders(const std::string& chosen) override;
  std::unique_ptr<Clock> clock(std::optional<LocalSeconds> fixed) override;
  std::unique_ptr<Locale> locale(const std::string& language) override;
  std::unique_ptr<StoredRegistry> registry(const Paths& paths) override;
  std::unique_ptr<Files> files(const Paths& paths) override;
  std::unique_ptr<RecordDatabases> databases(const std::string& object_store) override;
  bool has_device_store() const override { return true; }
  bool is_device() const override;
  std::unique_ptr<RecordCalendarStore> device_store(const Clock& clock,
                                                    const std::string& uids) override;
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
  OwnProcesses runs_;
};

}  // namespace orvello
