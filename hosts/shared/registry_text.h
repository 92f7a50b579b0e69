// The registry file's content: sections with values, one a line. Lines that say nothing (comments,
// damaged ones) are kept where they are.
//
//   [HKEY_CLASSES_ROOT\Brindlewick\Orvello]
//   startmode=dword:00000001
//   activeprofilename="All"
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ports/registry.h"

namespace orvello {

class RegistryText {
 public:
  static RegistryText parse(const std::string& content);
  std::string content() const;

  bool has_key(RegistryRoot root, TextView path) const;
  std::optional<RegistryValue> query(RegistryRoot root, TextView path, TextView name) const;
  void add_key(RegistryRoot root, TextView path);
  // Adds the key too where it is missing.
  void set(RegistryRoot root, TextView path, TextView name, const RegistryValue& value);

 private:
  struct Line {
    enum class Kind { other, key, value } kind = Kind::other;
    std::string raw;
    Text key;   // upper-case "HKEY_CLASSES_ROOT\..." that this line starts or belongs to
    Text name;  // upper-case
    RegistryValue value;
  };
  static Line parse_line(std::string raw, const Text& key);
  std::vector<Line> lines_;
};

}  // namespace orvello
