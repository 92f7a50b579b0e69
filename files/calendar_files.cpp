#include "files/calendar_files.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

#include "files/file_reasons.h"
#include "files/system_files.h"

namespace orvello {
namespace {

constexpr int kDeepestFolder = 8;

bool is_folder(const std::string& path) {
  const auto status = status_of_file(path);
  return status && status->kind == FileKind::folder;
}

// Links may lead in circles.
bool may_be_entered(const std::string& path) {
  const auto status = status_of_file(path, FileLinks::look_at);
  return status && !status->is_link && !status->is_hidden;
}

bool is_calendar_name(std::string_view name) {
  std::string end(name.substr(std::min(name.size(), name.rfind('.'))));
  for (char& c : end)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  return end == ".ics" || end == ".ical" || end == ".vcs" || end == ".vcf";
}

// 0, or why not. What is hidden stays so.
int list_folder(const std::string& folder, int depth, std::vector<std::string>& files) {
  auto names = names_in_folder(folder);
  if (!names) return errno;
  std::erase_if(*names, [](const std::string& name) { return name.starts_with('.'); });
  std::sort(names->begin(), names->end());
  for (const std::string& name : *names) {
    const std::string path = path_in(folder, name);
    if (!is_folder(path)) {
      if (is_calendar_name(name)) files.push_back(path);
    } else if (depth < kDeepestFolder && may_be_entered(path)) {
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
