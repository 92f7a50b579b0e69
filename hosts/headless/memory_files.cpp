#include "hosts/headless/memory_files.h"

namespace orvello {

bool MemoryFiles::exists(TextView path) const {
  return present.count(Text(path)) != 0 || bitmaps.count(Text(path)) != 0;
}

std::optional<Image> MemoryFiles::load_bitmap(TextView path) const {
  const auto found = bitmaps.find(Text(path));
  if (found == bitmaps.end()) return std::nullopt;
  return found->second;
}

bool MemoryFiles::append_diagnostic_line(TextView line) {
  if (disk_full) return false;
  diagnostics.emplace_back(line);
  return true;
}

}  // namespace orvello
