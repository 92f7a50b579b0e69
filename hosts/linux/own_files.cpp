#include "hosts/linux/own_files.h"

#include <dirent.h>
#include <sys/stat.h>

#include <cstdlib>
#include <functional>
#include <string_view>

#include "files/replace_file.h"

namespace orvello {
namespace {

bool same_file(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool is_own_data(std::string_view name) {
  for (const std::string_view database : {"calendar.db", "settings.vol", "device.db"}) {
    if (!name.starts_with(database)) continue;
    const std::string_view rest = name.substr(database.size());
    if (rest.empty() || rest == "-journal" || rest == "-wal" || rest == "-shm") return true;
  }
  return name.ends_with(".db") || name.ends_with(".lock") || name == "icons.bmp" ||
         name == "backups";
}

bool is_own_config(std::string_view name) {
  return name == "registry" || name == "registry.lock" || name == "window";
}

bool is_own_state(std::string_view name) { return name == "diag.txt"; }

bool is_any(std::string_view) { return true; }

struct OwnFolder {
  std::string path;
  bool (*holds)(std::string_view name);
};

// Whether a file that this folder holds is the one: another name may lead to it.
bool holds_same(const OwnFolder& folder, const struct stat& wanted) {
  DIR* listing = ::opendir(folder.path.c_str());
  if (!listing) return false;
  bool found = false;
  while (const dirent* entry = found ? nullptr : ::readdir(listing)) {
    struct stat info {};
    found = folder.holds(entry->d_name) && std::string_view(entry->d_name) != "." &&
            std::string_view(entry->d_name) != ".." &&
            ::stat((folder.path + "/" + entry->d_name).c_str(), &info) == 0 &&
            same_file(info, wanted);
  }
  ::closedir(listing);
  return found;
}

}  // namespace

bool is_own_file(const Paths& paths, const std::string& path) {
  const OwnFolder folders[] = {{paths.data, is_own_data},
                               {paths.config, is_own_config},
                               {paths.state, is_own_state},
                               {paths.data + "/backups", is_any}};
  struct stat file {
  }, parent{}, own{};
  const bool exists = ::stat(path.c_str(), &file) == 0;
  const bool has_parent = ::stat(folder_of(path).c_str(), &parent) == 0;
  const std::string name = path.substr(path.rfind('/') + 1);  // the whole text without a slash
  for (const OwnFolder& folder : folders) {
    if (::stat(folder.path.c_str(), &own) != 0) continue;
    if (has_parent && same_file(parent, own) && folder.holds(name)) return true;
    if (exists && S_ISREG(file.st_mode) && holds_same(folder, file)) return true;
  }
  return false;
}

std::string own_file_among(const Paths& paths, const std::vector<std::string>& files) {
  for (const std::string& file : files)
    if (is_own_file(paths, file)) return file;
  return {};
}

}  // namespace orvello
