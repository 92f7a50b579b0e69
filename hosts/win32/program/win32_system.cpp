#include "hosts/win32/program/win32_system.h"

#include <windows.h>

#include <iostream>

#include "app/application_state.h"
#include "files/system_files.h"
#include "hosts/shared/file_registry.h"
#include "hosts/win32/device_path.h"
#include "hosts/win32/program/pim_notify_window.h"
#include "hosts/win32/program/win32_host.h"
#include "hosts/win32/wide_text.h"
#include "hosts/win32/win32_clock.h"
#include "hosts/win32/win32_departures.h"
#include "hosts/win32/win32_files.h"
#include "hosts/win32/win32_folders.h"
#include "hosts/win32/win32_locale.h"
#include "hosts/win32/win32_registry.h"
#include "store/cedb/cedb_record_databases.h"
#include "store/embedded/sqlite_record_databases.h"

namespace orvello {
namespace {

// Whether what is written to standard error goes nowhere: no console, no file, no pipe.
bool nobody_reads_errors() {
  const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
  const bool goes_somewhere =
      error && error != INVALID_HANDLE_VALUE && GetFileType(error) != FILE_TYPE_UNKNOWN;
  return !goes_somewhere && !GetConsoleWindow();
}

// Of a handheld's system; 0 on a desktop.
int platform_generation_here() {
  constexpr DWORD kHandheld = 3;  // the platform's number for them
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  // Deprecated for telling desktops apart, which is not asked here.
  using GetVersionEx = BOOL(WINAPI*)(OSVERSIONINFOW*);
  const auto ask = reinterpret_cast<GetVersionEx>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "GetVersionExW")));
  if (!ask || !ask(&version) || version.dwPlatformId != kHandheld) return 0;
  return platform_generation(static_cast<int>(version.dwMajorVersion),
                             static_cast<int>(version.dwMinorVersion));
}

long milliseconds_between(const FILETIME& from, const FILETIME& to) {
  const auto count = [](const FILETIME& time) {
    return static_cast<std::int64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
  };
  constexpr std::int64_t kTicks = 10000;  // of a tenth of a microsecond
  return static_cast<long>((count(to) - count(from)) / kTicks);
}

}  // namespace

Result<Paths> Win32System::open_folders(const std::string& chosen) {
  return open_win32_folders(chosen);
}

std::unique_ptr<Clock> Win32System::clock(std::optional<LocalSeconds> fixed) {
  return std::make_unique<Win32Clock>(fixed);
}

std::unique_ptr<Locale> Win32System::locale(const std::string& language) {
  return std::make_unique<Win32Locale>(Win32Locale::of_person(language));
}

std::unique_ptr<StoredRegistry> Win32System::registry(const Paths& paths) {
  // Everything under the folder that was named means the settings, too.
  if (all_in_one_folder(paths))
    return std::make_unique<FileRegistry>(path_in(paths.config, "registry"));
  return std::make_unique<Win32Registry>();
}

std::unique_ptr<Files> Win32System::files(const Paths& paths) {
  return std::make_unique<Win32Files>(paths);
}

std::unique_ptr<RecordDatabases> Win32System::databases(const std::string& object_store) {
  if (auto calls = device_cedb_calls())
    return std::make_unique<CedbRecordDatabases>(std::move(*calls));
  return std::make_unique<SqliteRecordDatabases>(object_store, host_path);
}

bool Win32System::is_device() const { return platform_generation_here() > 0; }

std::unique_ptr<RecordCalendarStore> Win32System::device_store(const Clock& clock,
                                                               const std::string& uids) {
  return std::make_unique<PimStore>(clock,
                                    PimPlatform{platform_generation_here(), make_pim_window, uids});
}

std::unique_ptr<Departures> Win32System::departures(const std::string& folder) {
  return std::make_unique<Win32Departures>(folder);
}

// A process of the machine's own, or over a network, has no desktop to put a window on.
bool Win32System::can_show_windows() {
  const HWND trial = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                     GetModuleHandleW(nullptr), nullptr);
  if (trial) DestroyWindow(trial);
  return trial != nullptr;
}

std::unique_ptr<WindowHost> Win32System::window(const WindowHostOptions& options,
                                                Registry& registry, RecordDatabases& databases,
                                                CalendarStore& store) {
  return std::make_unique<Win32Host>(options, registry, databases, store, runs_);
}

void Win32System::tell_start_fault(const std::string& sentence) {
  std::cerr << "orvello: " << sentence << std::endl;
  if (nobody_reads_errors() && can_show_windows())
    MessageBoxW(nullptr, wide(to_utf16(sentence)), L"Orvello", MB_OK | MB_ICONERROR);
}

void Win32System::tell_start_fault(MessageBoxes& boxes, const std::string& sentence) {
  std::cerr << "orvello: " << sentence << std::endl;
  if (nobody_reads_errors())
    boxes.show(to_utf16(sentence), u"Orvello", BoxIcon::error, BoxButtons::ok, false);
}

long Win32System::milliseconds_since_start() {
  FILETIME created{}, ended{}, kernel{}, user{}, now{};
  GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
  GetSystemTimeAsFileTime(&now);
  return milliseconds_between(created, now);
}

}  // namespace orvello
