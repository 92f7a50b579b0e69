// The Linux program's host: owns every port that belongs to the desktop and lends the rest.
#pragma once

#include <memory>

#include "hosts/shared/window_host.h"

namespace orvello {

class GuardedApplication;

class QtHost : public WindowHost {
 public:
  // `argc` and `argv` live as long as the host. Without `offscreen` a display must be there: ask
  // display_reachable() first. One at a time in a process.
  QtHost(int& argc, char** argv, WindowHostOptions options, Registry& registry,
         RecordDatabases& databases, CalendarStore& store);
  ~QtHost() override;
  // What the toolkit needs before any window; null when it is there already.
  static std::unique_ptr<GuardedApplication> make_application(int& argc, char** argv,
                                                              bool offscreen);
  QtHost(const QtHost&) = delete;
  QtHost& operator=(const QtHost&) = delete;

  Host host() override;
  bool guard(const std::function<void()>& action) override;
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
  std::unique_ptr<GuardedApplication> application_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace orvello
