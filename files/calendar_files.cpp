#include "files/calendar_files.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <string_view>

#include "files/file_reasons.h"

namespace orvello {
namespace {

constexpr int kDeepestFolder = 8;

bool is_folder(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

// Links may lead in circles.
bool is_link(const std::string& path) {
  struct stat info {};
  return ::lstat(path.c_str(), &info) == 0 && S_ISLNK(info.st_mode);
}

bool is_calendar_name(std::string_view name) {
  std::string end(name.substr(std::min(name.size(), name.rfind('.'))));
  for (char& c : end)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  return end == ".ics" || end == ".ical" || end == ".vcs" || end == ".vcf";
}

// 0, or why not. What is hidden stays so.
int list_folder(const std::string& folder, int depth, std::vector<std::string>& files) {
  DIR* listing = ::opendir(folder.c_str());
  if (!listing) return errno;
  std::vector<std::string> names;
  const auto next = [listing] {
    errno = 0;
    return ::readdir(listing);
  };
  while (const dirent* entry = next())
    if (entry->d_name[0] != '.') names.push_back(entry->d_name);
  const int broken = errno;  // of the last one
  ::closedir(listing);
  if (broken != 0) return broken;
  std::sort(names.begin(), names.end());
  const std::string before = folder.ends_with('/') ? folder : folder + "/";
  for (const std::string& name : names) {
    const std::string path = before + name;
    if (!is_folder(path)) {
      if (is_calendar_name(name)) files.push_back(path);
    } else if (depth < kDeepestFolder && !is_link(path)) {
      if (const int fault = list_folder(path, depth + 1, files)) return fault;
    }
  }
  return 0;
}

}  // namespace

Result<std::vector<std::string>> calendar_files(const std::vector<std::string>& paths) {
  using Files = Result<std::vector<std::string>>;
  std::vector<std::string> files;
  for (const std::string& path : paths) {
    if (!is_folder(path)) {
      files.push_back(path);
      continue;
    }
    const std::size_t before = files.size();
    if (const int fault = list_folder(path, 0, files))
      return Files::failure(cannot_be_read(path, fault));
    if (files.size() == before)
      return Files::failure(path + " holds no calendar and no contact files.");
  }
  return files;
}

}  // namespace orvello
