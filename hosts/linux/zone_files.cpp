#include "hosts/linux/zone_files.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "calendar/zone_file.h"

namespace orvello {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLargestFile = 1 << 20;

std::optional<Zone> zone_of_file(const std::string& folder, const std::string& name) {
  std::error_code error;
  const fs::path path = fs::path(folder) / name;
  if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > kLargestFile)
    return std::nullopt;
  std::ifstream in(path, std::ios::binary);
  std::stringstream bytes;
  bytes << in.rdbuf();
  return in ? zone_from_file(name, bytes.str()) : std::nullopt;
}

}  // namespace

std::vector<std::string> zone_folders(const char* tzdir_variable) {
  std::vector<std::string> folders;
  if (tzdir_variable && *tzdir_variable) folders.emplace_back(tzdir_variable);
  for (const char* usual : {"/usr/share/zoneinfo", "/usr/lib/zoneinfo", "/etc/zoneinfo"})
    folders.emplace_back(usual);
  return folders;
}

std::optional<Zone> read_zone(const std::vector<std::string>& folders, std::string_view name) {
  if (!is_zone_name(name)) return std::nullopt;
  for (const std::string& folder : folders)
    if (auto zone = zone_of_file(folder, std::string(name))) return zone;
  return std::nullopt;
}

}  // namespace orvello
