#include "hosts/shared/own_files.h"

#include <string_view>

#include "files/system_files.h"

namespace orvello {
namespace {

bool is_own_data(std::string_view name) {
  for (const std::string_view database : {"calendar.db", "settings.vol", "device.db"}) {
    if (!name.starts_with(database)) continue;
    const std::string_view rest = name.substr(database.size());
    if (rest.empty() || rest == "-journal" || rest == "-wal" || rest == "-shm") return true;
  }
  return name.ends_with(".db") || name.ends_with(".lock") || name == "icons.bmp" ||
         name == "backups" || name == "device.uids";
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
bool holds_same(const OwnFolder& folder, const FileStatus& wanted) {
  for (const std::string& name :
       names_in_folder(folder.path).value_or(std::vector<std::string>())) {
    if (!folder.holds(folded_name(name))) continue;
    const auto status = status_of_file(path_in(folder.path, name));
    if (status && status->same_file(wanted)) return true;
  }
  return false;
}

}  // namespace

bool is_own_file(const Paths& paths, const std::string& path) {
  const OwnFolder folders[] = {{paths.data, is_own_data},
                               {paths.config, is_own_config},
                               {paths.state, is_own_state},
                               {path_in(paths.data, "backups"), is_any}};
  const auto file = status_of_file(path), parent = status_of_file(folder_of(path));
  const std::string name = folded_name(name_in_path(path));
  for (const OwnFolder& folder : folders) {
    const auto own = status_of_file(folder.path);
    if (!own) continue;
    if (parent && parent->same_file(*own) && folder.holds(name)) return true;
    if (file && file->kind == FileKind::file && holds_same(folder, *file)) return true;
  }
  return false;
}

std::string own_file_among(const Paths& paths, const std::vector<std::string>& files) {
  for (const std::string& file : files)
    if (is_own_file(paths, file)) return file;
  return {};
}

}  // namespace orvello
