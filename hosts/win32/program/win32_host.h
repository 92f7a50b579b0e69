// The Windows program's host: owns every port that belongs to the window and lends the rest.
#pragma once

#include "hosts/shared/fault_teller.h"
#include "hosts/shared/window_host.h"
#include "hosts/win32/program/own_process.h"

namespace orvello {

class Win32Host : public WindowHost {
 public:
  // One at a time in a process: what the platform's callbacks throw comes to it. `runs` tells of
  // processes from its message loop.
  Win32Host(const WindowHostOptions& options, Registry& registry, RecordDatabases& databases,
            CalendarStore& store, OwnProcesses& runs);
  ~Win32Host() override;
  Win32Host(const Win32Host&) = delete;
  Win32Host& operator=(const Win32Host&) = delete;

  Host host() override;
  bool guard(const std::function<void()>& action) override { return faults_.guard(action); }
  int run() override;
  bool call_answered() const override;
  void on_files(std::function<void(std::vector<std::string>)> callback) override;
  void on_first_paint(std::function<void()> callback) override;
  std::vector<double> measure_turns(int count) override;
  EditTimes measure_edits(int count) override;
  std::string window_picture() override;

  std::unique_ptr<LoopTimer> once(int milliseconds, std::function<void()> action) override;
  std::unique_ptr<LoopTimer> every(int milliseconds, std::function<void()> action) override;
  void draw_meanwhile() override;

 private:
  struct Parts;
  FaultTeller faults_;
  OwnProcesses& runs_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace orvello
