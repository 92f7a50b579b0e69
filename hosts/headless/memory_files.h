// Files as a test lays them out.
#pragma once

#include <map>
#include <set>
#include <vector>

#include "ports/files.h"

namespace orvello {

class MemoryFiles : public Files {
 public:
  explicit MemoryFiles(Text file_name = u"\\Program Files\\Orvello\\Orvello.exe")
      : module(std::move(file_name)) {}
  Text module_file_name() const override { return module; }
  bool exists(TextView path) const override;
  std::optional<Image> load_bitmap(TextView path) const override;
  bool append_diagnostic_line(TextView line) override;

  Text module;
  std::set<Text> present;  // files of no interest beyond being there
  std::map<Text, Image> bitmaps;
  std::vector<Text> diagnostics;
  bool disk_full = false;  // nothing can be appended
};

}  // namespace orvello
