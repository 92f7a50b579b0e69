// The Linux program's host: owns every port that belongs to the desktop and lends the rest.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/linux/paths.h"
#include "hosts/qt/edit_measure.h"
#include "ports/calendar_store.h"
#include "ports/clock.h"
#include "ports/host.h"
#include "ports/main_window.h"
#include "ports/record_databases.h"
#include "ports/registry.h"

namespace orvello {

class GuardedApplication;

struct QtHostOptions {
  Paths paths;                      // folders that exist
  std::optional<LocalSeconds> now;  // a clock that stands still
  std::string language;             // --language; empty: the environment's
  std::optional<Size> screen;       // --screen, device pixels
  int dpi = 0;                      // --dpi; 0: the display's
  std::vector<std::string> files;   // handed to a window that is open already
  bool new_appointment = false;     // likewise asked for there
  bool offscreen = false;           // never needs a display: for pictures
};

class QtHost {
 public:
  // `argc` and `argv` live as long as the host. Without `offscreen` a display must be there: ask
  // display_reachable() first. One at a time in a process.
  QtHost(int& argc, char** argv, QtHostOptions options, Registry& registry,
         RecordDatabases& databases, CalendarStore& store);
  ~QtHost();
  // What the toolkit needs before any window; null when it is there already.
  static std::unique_ptr<GuardedApplication> make_application(int& argc, char** argv,
                                                              bool offscreen);
  QtHost(const QtHost&) = delete;
  QtHost& operator=(const QtHost&) = delete;

  Host host();

  // Does something from outside the message loop. False when something was thrown out of it: the
  // person has been told, and the program ends.
  bool guard(const std::function<void()>& action);

  // Runs the message loop until the quit message; its code.
  int run();

  // After a start that found another instance: whether that has the files.
  bool call_answered() const;
  // Another launch asked for these files while this one runs (the window has been raised). Called
  // from the message loop; without files when only raising was asked for, with
  // kNewAppointmentCall among them when a new appointment was.
  void on_files(std::function<void(std::vector<std::string>)> callback);
  // Once, after the first paint that showed a published surface or a modeless dialog.
  void on_first_paint(std::function<void()> callback);

  // Milliseconds from a key to the next day on the screen, for each of `count` turns of the Day
  // view; fewer when it does not turn.
  std::vector<double> measure_turns(int count);
  EditTimes measure_edits(int count);

  std::string window_picture();  // the whole window, device pixels, as PNG; empty on failure

 private:
  struct Parts;
  std::unique_ptr<GuardedApplication> application_;
  std::unique_ptr<Parts> parts_;
};

}  // namespace orvello
