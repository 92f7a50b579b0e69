// Rows read from a database file's pages as they lie on the disk, without the tree that leads to
// them: what is left of a file whose tree is broken.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace orvello {

struct RowValue {
  enum class Type { null, integer, text, blob } type = Type::null;
  std::int64_t number = 0;
  std::string bytes;
};

struct PageRow {
  bool has_rowid = false;
  std::int64_t rowid = 0;
  std::vector<RowValue> values;
  bool doubtful = false;  // a page that it lies on does not agree with its checksum
};

// Every row that can be decoded on any page; what cannot is left out. Nothing in `file` is trusted.
void for_each_row(std::string_view file, const std::function<void(PageRow&&)>& take);

}  // namespace orvello
