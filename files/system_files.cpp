#include "files/system_files.h"

#include <cerrno>

namespace orvello {

// A folder above may exist without being ours to write in: only what lies below it counts.
bool make_folders(const std::string& path) {
  const auto status = status_of_file(path);
  if (status && status->kind == FileKind::folder) return true;
  if (status) return errno = ENOTDIR, false;
  if (errno != ENOENT) return false;
  const std::string above = folder_of(path);
  if (above != path && !make_folders(above)) return false;
  return make_folder(path) || errno == EEXIST;
}

}  // namespace orvello
