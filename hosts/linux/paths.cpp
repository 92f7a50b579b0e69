#include "hosts/linux/paths.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace orvello {
namespace {

std::string absolute(const std::string& path) {
  if (!path.empty() && path.front() == '/') return path;
  char* current = ::getcwd(nullptr, 0);
  std::string result = current ? current : "";
  std::free(current);
  if (result.empty() || result.back() != '/') result += '/';
  return result + path;
}

std::string without_trailing_slash(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

std::string home_folder() {
  if (const char* home = std::getenv("HOME"); home && *home == '/') return home;
  const passwd* entry = ::getpwuid(::getuid());
  return entry && entry->pw_dir && *entry->pw_dir == '/' ? entry->pw_dir : "";
}

// The folder for one kind of file; empty when neither the variable nor a home is given.
std::string base_folder(const char* variable, const std::string& home, const char* below_home) {
  std::string base;
  if (const char* value = std::getenv(variable); value && *value == '/')
    base = value;
  else if (!home.empty())
    base = home + below_home;
  return base.empty() ? base : without_trailing_slash(base) + "/orvello";
}

bool create_folder(const std::string& path) {
  for (std::size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
    const std::string part = path.substr(0, slash);
    if (::mkdir(part.c_str(), 0700) != 0 && errno != EEXIST) {
      // A parent may exist without being ours to write: only what lies below it counts.
      const int error = errno;
      struct stat info {};
      if (::stat(part.c_str(), &info) != 0) return errno = error, false;
    }
    if (slash == std::string::npos) break;
  }
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) return false;
  if (!S_ISDIR(info.st_mode)) return errno = ENOTDIR, false;
  return true;
}

bool can_be_read(const std::string& path) {
  const int problem = errno;  // a caller's reason outlives the question
  const bool readable = ::access(path.c_str(), R_OK) == 0;
  errno = problem;
  return readable;
}

Result<Paths> failure(const char* what, const std::string& folder) {
  return Result<Paths>::failure(std::string(what) + " \"" + folder + "\": " + std::strerror(errno));
}

}  // namespace

Result<Paths> choose_paths(const std::optional<std::string>& data_option) {
  if (data_option) {
    if (data_option->empty()) return Result<Paths>::failure("the data folder has no name");
    const std::string folder = without_trailing_slash(absolute(*data_option));
    return Paths{folder, folder, folder};
  }
  const std::string home = home_folder();
  Paths paths{base_folder("XDG_DATA_HOME", home, "/.local/share"),
              base_folder("XDG_CONFIG_HOME", home, "/.config"),
              base_folder("XDG_STATE_HOME", home, "/.local/state")};
  if (paths.data.empty() || paths.config.empty() || paths.state.empty())
    return Result<Paths>::failure(
        "there is no home folder to keep the calendar in; name one with "
        "--data");
  return paths;
}

Result<Paths> prepare_folders(const Paths& paths) {
  for (const std::string* folder : {&paths.data, &paths.config, &paths.state}) {
    if (!create_folder(*folder)) return failure("cannot create the folder", *folder);
    if (::access(folder->c_str(), R_OK | X_OK) != 0)
      return failure("cannot read the folder", *folder);
    if (::access(folder->c_str(), W_OK) != 0 && !can_be_read(paths.data + "/calendar.db"))
      return failure("cannot write to the folder", *folder);
  }
  return paths;
}

void keep_files_private() { ::umask(0077); }

}  // namespace orvello
