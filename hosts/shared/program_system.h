// What the program needs of the system that it runs on, besides the ports: each system's program
// brings one. User-interface thread; it lives as long as all that it gives.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/result.h"
#include "calendar/seconds.h"
#include "hosts/shared/departures.h"
#include "hosts/shared/paths.h"
#include "hosts/shared/stored_registry.h"
#include "hosts/shared/window_host.h"
#include "ports/clock.h"
#include "ports/files.h"
#include "ports/locale.h"
#include "ports/message_box.h"
#include "ports/record_databases.h"
#include "store/record_calendar_store.h"

namespace orvello {

// Another run of this program, of the lowest priority; it is ended when this goes.
class OwnRun {
 public:
  virtual ~OwnRun() = default;
};

class OwnRuns {
 public:
  virtual ~OwnRuns() = default;
  // Starts the program with these words. `ended`, from the message loop and never before this has
  // returned: the exit code, other than 0 also for a run that was cut short, and what it wrote to
  // standard error. Null when it could not be started.
  using Ended = std::function<void(int code, const std::string& said)>;
  virtual std::unique_ptr<OwnRun> start(const std::vector<std::string>& words, Ended ended) = 0;
};

class ProgramSystem : public OwnRuns {
 public:
  // Folders that exist and that nobody but the person can look into: everything below `chosen`, or
  // the system's own where that is empty. The reason names the folder.
  virtual Result<Paths> open_folders(const std::string& chosen) = 0;
  virtual std::unique_ptr<Clock> clock(std::optional<LocalSeconds> fixed) = 0;
  virtual std::unique_ptr<Locale> locale(const std::string& language) = 0;
  virtual std::unique_ptr<StoredRegistry> registry(const Paths& paths) = 0;
  virtual std::unique_ptr<Files> files(const Paths& paths) = 0;
  // The device's volumes with records; the object store is kept at `object_store`.
  virtual std::unique_ptr<RecordDatabases> databases(const std::string& object_store) = 0;
  // Whether this system's devices have a store of their own, to be asked for; whether this is such
  // a device, which takes it unasked; and that store, with what it has no place for in `uids`.
  virtual bool has_device_store() const { return false; }
  virtual bool is_device() const { return false; }
  virtual std::unique_ptr<RecordCalendarStore> device_store(const Clock&,
                                                            const std::string& /*uids*/) {
    return nullptr;
  }
  // `--data`'s folder, or empty: what leaves goes there then, and nobody's mail program is started.
  virtual std::unique_ptr<Departures> departures(const std::string& folder) = 0;

  virtual bool can_show_windows() = 0;
  // One at a time in a process.
  virtual std::unique_ptr<WindowHost> window(const WindowHostOptions& options, Registry& registry,
                                             RecordDatabases& databases, CalendarStore& store) = 0;
  // What keeps the program from starting, on standard error and, where nobody looks at that, in a
  // box: before there is a host, and with one's boxes.
  virtual void tell_start_fault(const std::string& sentence) = 0;
  virtual void tell_start_fault(MessageBoxes& boxes, const std::string& sentence) = 0;
  virtual long milliseconds_since_start() = 0;  // of this process, as the system knows
};

}  // namespace orvello
