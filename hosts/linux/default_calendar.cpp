#include "hosts/linux/default_calendar.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "files/input_file.h"
#include "files/replace_file.h"
#include "hosts/linux/mime_apps.h"

namespace orvello {
namespace {

constexpr std::string_view kCalendarType = "text/calendar";
constexpr std::string_view kEntryName = "orvello.desktop";
constexpr std::string_view kOwnMark = "X-Orvello-Own=true";  // of an entry that was written here
constexpr std::uint64_t kLargestList = 1 << 20;

std::vector<std::string> split_list(const char* variable, const char* otherwise) {
  const char* value = std::getenv(variable);
  std::string_view rest = value && *value ? value : otherwise;
  std::vector<std::string> parts;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find(':'), rest.size());
    if (end > 0) parts.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return parts;
}

std::string own_folder(const char* variable, const char* below_home) {
  if (const char* value = std::getenv(variable); value && *value == '/') return value;
  const char* home = std::getenv("HOME");
  return home && *home == '/' ? std::string(home) + below_home : "";
}

bool is_there(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0;
}

// A file that is not there is empty; nothing for one that cannot be read.
std::optional<std::string> read_if_there(const std::string& path) {
  errno = 0;
  auto content = read_whole_file(path, kLargestList);
  if (content) return *content;
  if (errno == ENOENT || errno == ENOTDIR) return std::string();
  return std::nullopt;
}

bool create_folders(const std::string& path) {
  std::error_code fault;
  std::filesystem::create_directories(path, fault);
  return !fault;
}

// As the rules for entries want an argument: quoted, and then escaped once more as a string.
std::string quoted_argument(const std::string& path) {
  std::string quoted = "\"";
  for (const char c : path) {
    if (c == '"' || c == '`' || c == '$') quoted += "\\\\";
    if (c == '\\') quoted += "\\\\\\";
    if (c == '%') quoted += '%';
    quoted += c;
  }
  return quoted + '"';
}

}  // namespace

DesktopFolders desktop_folders() {
  DesktopFolders folders;
  folders.config = own_folder("XDG_CONFIG_HOME", "/.config");
  folders.data = own_folder("XDG_DATA_HOME", "/.local/share");
  folders.other_configs = split_list("XDG_CONFIG_DIRS", "/etc/xdg");
  folders.other_data = split_list("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
  folders.desktops = split_list("XDG_CURRENT_DESKTOP", "");
  for (std::string& name : folders.desktops)
    for (char& c : name)
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return folders;
}

std::string program_file() {
  std::error_code fault;
  const auto path = std::filesystem::read_symlink("/proc/self/exe", fault);
  return fault ? "" : path.string();
}

std::vector<std::string> DefaultCalendar::lists() const {
  std::vector<std::string> all;
  const auto add = [&](const std::string& folder, const std::string& below) {
    if (folder.empty()) return;
    for (const std::string& desktop : folders_.desktops)
      all.push_back(folder + below + "/" + desktop + "-mimeapps.list");
    all.push_back(folder + below + "/mimeapps.list");
  };
  add(folders_.config, "");
  for (const std::string& folder : folders_.other_configs) add(folder, "");
  add(folders_.data, "/applications");
  for (const std::string& folder : folders_.other_data) add(folder, "/applications");
  return all;
}

std::vector<std::string> DefaultCalendar::own_lists() const {
  DefaultCalendar own(folders_, program_);
  own.folders_.other_configs.clear();
  own.folders_.other_data.clear();
  return own.lists();
}

bool DefaultCalendar::is_installed(const std::string& application) const {
  std::vector<std::string> folders = folders_.other_data;
  if (!folders_.data.empty()) folders.insert(folders.begin(), folders_.data);
  for (const std::string& folder : folders) {
    // A name may stand for folders: a-b.desktop is also a/b.desktop.
    std::string path = folder + "/applications/" + application;
    std::size_t dash = folder.size() + std::string_view("/applications/").size();
    while (!is_there(path)) {
      dash = path.find('-', dash);
      if (dash == std::string::npos) break;
      path[dash] = '/';
    }
    if (dash != std::string::npos) return true;
  }
  return false;
}

std::optional<bool> DefaultCalendar::starts_this_program() const {
  for (const std::string& path : lists()) {
    const auto list = read_if_there(path);
    if (!list) return std::nullopt;
    for (const auto& application : applications_for(*list, kDefaultApplications, kCalendarType))
      if (is_installed(application)) return application == kEntryName;
  }
  return false;
}

std::string DefaultCalendar::own_entry() const {
  return folders_.data + "/applications/" + std::string(kEntryName);
}

bool DefaultCalendar::write_entry() const {
  if (program_.empty() || !create_folders(folder_of(own_entry()))) return false;
  const std::string entry =
      "[Desktop Entry]\nType=Application\nVersion=1.1\nName=Orvello\nGenericName=Calendar\n"
      "GenericName[ru]=Календарь\nExec=" +
      quoted_argument(program_) +
      " %F\nIcon=orvello\nTerminal=false\nNoDisplay=true\nMimeType=text/calendar;\n" +
      std::string(kOwnMark) + "\n";
  return static_cast<bool>(replace_file(own_entry(), entry));
}

bool DefaultCalendar::remove_entry() const {
  const auto entry = read_if_there(own_entry());
  if (!entry) return false;
  if (entry->find(kOwnMark) == std::string::npos) return true;  // it was installed by somebody
  return ::unlink(own_entry().c_str()) == 0;
}

bool DefaultCalendar::change_list(const std::string& path, Change change) const {
  const auto list = read_if_there(path);
  if (!list) return false;
  std::string changed = *list;
  if (change == Change::remove) {
    changed = without_application(changed, kAddedAssociations, kCalendarType, kEntryName);
    changed = without_application(changed, kDefaultApplications, kCalendarType, kEntryName);
  } else {
    changed = without_application(changed, kRemovedAssociations, kCalendarType, kEntryName);
    changed = with_first_application(changed, kDefaultApplications, kCalendarType, kEntryName);
  }
  // What an entry says it opens is known to the desktop only after a while.
  if (change == Change::prefer_and_add)
    changed = with_first_application(changed, kAddedAssociations, kCalendarType, kEntryName);
  return changed == *list || static_cast<bool>(replace_file(path, changed));
}

bool DefaultCalendar::start_this_program(bool wanted) {
  if (folders_.config.empty() || folders_.data.empty()) return false;
  if (!wanted) {
    bool gone = true;
    for (const std::string& path : own_lists()) gone = change_list(path, Change::remove) && gone;
    return gone && remove_entry();
  }
  const auto entry = read_if_there(own_entry());
  // One of our own is written anew: the program may have moved.
  const bool own = (entry && entry->find(kOwnMark) != std::string::npos) ||
                   !is_installed(std::string(kEntryName));
  if (own && !write_entry()) return false;
  if (!create_folders(folders_.config)) return false;
  const Change change = own ? Change::prefer_and_add : Change::prefer;
  if (!change_list(folders_.config + "/mimeapps.list", change)) return false;
  // A list of the desktop's own that says something about calendars counts more.
  for (const std::string& path : own_lists()) {
    const auto list = read_if_there(path);
    if (!list) return false;
    if (applications_for(*list, kDefaultApplications, kCalendarType).empty()) continue;
    if (!change_list(path, Change::prefer)) return false;
  }
  return starts_this_program() == true;
}

}  // namespace orvello
