// The toolkit's or platform's host of the window: it owns every port that belongs to the desktop
// and lends the rest. User-interface thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "calendar/seconds.h"
#include "hosts/shared/paths.h"
#include "hosts/shared/program_loop.h"
#include "ports/host.h"

namespace orvello {

// Stands among the files that another launch asks for: a new appointment. No file's absolute path.
inline constexpr const char* kNewAppointmentCall = "--new";

struct WindowHostOptions {
  Paths paths;                      // folders that exist
  std::optional<LocalSeconds> now;  // a clock that stands still
  std::string language;             // --language; empty: the environment's
  std::optional<Size> screen;       // --screen, device pixels
  int dpi = 0;                      // --dpi; 0: the display's
  std::vector<std::string> files;   // handed to a window that is open already
  bool new_appointment = false;     // likewise asked for there
  bool offscreen = false;           // never seen by anybody: for pictures
};

struct EditTimes {
  std::vector<double> opened;  // milliseconds from the key to the painted form
  std::vector<double> saved;   // from the tap on OK to the painted list, durable by then
};

class WindowHost : public ProgramLoop {
 public:
  virtual Host host() = 0;
  // Does something from outside the message loop. False when something was thrown out of it: the
  // person has been told, and the program ends.
  virtual bool guard(const std::function<void()>& action) = 0;
  // Runs the message loop until the quit message; its code.
  virtual int run() = 0;

  // After a start that found another instance: whether that has the files.
  virtual bool call_answered() const = 0;
  // Another launch asked for these files while this one runs (the window has been raised). Called
  // from the message loop; without files when only raising was asked for, with
  // kNewAppointmentCall among them when a new appointment was.
  virtual void on_files(std::function<void(std::vector<std::string>)> callback) = 0;
  // Once, after the first paint that showed a published surface or a modeless dialog.
  virtual void on_first_paint(std::function<void()> callback) = 0;

  // Milliseconds from a key to the next day on the screen, for each of `count` turns of the Day
  // view; fewer when it does not turn.
  virtual std::vector<double> measure_turns(int count) = 0;
  // In the Day view: asks for a new appointment, gives it a subject and saves it, `count` times.
  // Fewer times when something was not there, or not painted in good time.
  virtual EditTimes measure_edits(int count) = 0;

  virtual std::string window_picture() = 0;  // the whole window, device pixels, as PNG; or empty
};

}  // namespace orvello
