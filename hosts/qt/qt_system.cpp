#include "hosts/qt/qt_system.h"

#include <unistd.h>

#include <cmath>
#include <ctime>
#include <fstream>
#include <sstream>

#include "hosts/linux/device_path.h"
#include "hosts/linux/display.h"
#include "hosts/linux/linux_files.h"
#include "hosts/linux/outbox.h"
#include "hosts/linux/paths.h"
#include "hosts/linux/system_clock.h"
#include "hosts/qt/qt_host.h"
#include "hosts/qt/qt_locale.h"
#include "hosts/qt/start_fault.h"
#include "hosts/shared/file_registry.h"
#include "store/embedded/sqlite_record_databases.h"

namespace orvello {

Result<Paths> QtSystem::open_folders(const std::string& chosen) {
  keep_files_private();
  const auto folders =
      choose_paths(chosen.empty() ? std::nullopt : std::optional<std::string>(chosen));
  return folders ? prepare_folders(*folders) : folders;
}

std::unique_ptr<Clock> QtSystem::clock(std::optional<LocalSeconds> fixed) {
  return std::make_unique<SystemClock>(fixed);
}

std::unique_ptr<Locale> QtSystem::locale(const std::string& language) {
  return std::make_unique<QtLocale>(QtLocale::of_environment(language));
}

std::unique_ptr<StoredRegistry> QtSystem::registry(const Paths& paths) {
  return std::make_unique<FileRegistry>(paths.config + "/registry");
}

std::unique_ptr<Files> QtSystem::files(const Paths& paths) {
  return std::make_unique<LinuxFiles>(paths);
}

std::unique_ptr<RecordDatabases> QtSystem::databases(const std::string& object_store) {
  return std::make_unique<SqliteRecordDatabases>(object_store, host_path);
}

std::unique_ptr<Departures> QtSystem::departures(const std::string& folder) {
  return std::make_unique<Outbox>(folder);
}

bool QtSystem::can_show_windows() { return display_reachable(); }

std::unique_ptr<WindowHost> QtSystem::window(const WindowHostOptions& options, Registry& registry,
                                             RecordDatabases& databases, CalendarStore& store) {
  return std::make_unique<QtHost>(argc_, argv_, options, registry, databases, store);
}

void QtSystem::tell_start_fault(const std::string& sentence) {
  orvello::tell_start_fault(argc_, argv_, sentence);
}

void QtSystem::tell_start_fault(MessageBoxes& boxes, const std::string& sentence) {
  orvello::tell_start_fault(boxes, sentence);
}

// The system's own record of a process counts in clock ticks.
long QtSystem::milliseconds_since_start() {
  std::ifstream stat("/proc/self/stat");
  std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
  std::istringstream fields(text.substr(text.rfind(')') + 2));
  std::string skipped;
  for (int field = 3; field < 22; ++field) fields >> skipped;
  double ticks = 0;
  fields >> ticks;
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  const double seconds = static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
  return std::lround((seconds - ticks / static_cast<double>(sysconf(_SC_CLK_TCK))) * 1000);
}

}  // namespace orvello
