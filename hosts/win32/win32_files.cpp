#include "hosts/win32/win32_files.h"

#include <algorithm>

#include "files/descriptor.h"
#include "files/input_file.h"
#include "hosts/shared/bitmap_file.h"
#include "hosts/win32/device_path.h"

namespace orvello {
namespace {

constexpr std::uint64_t kLargestBitmap = 256 << 20;

}  // namespace

Text device_path(const std::string& path) {
  Text text = u"\\" + to_utf16(path);
  std::replace(text.begin(), text.end(), u'/', u'\\');
  return text;
}

// A path without a drive is one of the drive that the program was started on.
std::string host_path(TextView path) {
  const std::string inner = path.starts_with(u'\\') ? to_utf8(path.substr(1)) : std::string();
  return is_absolute_path(inner) ? inner : to_utf8(path);
}

Text Win32Files::module_file_name() const {
  return device_path(path_in(paths_.data, "orvello.exe"));
}

bool Win32Files::exists(TextView path) const { return status_of_file(host_path(path)).has_value(); }

std::optional<Image> Win32Files::load_bitmap(TextView path) const {
  const auto bytes = read_whole_file(host_path(path), kLargestBitmap);
  return bytes ? read_bitmap(*bytes) : std::nullopt;
}

bool Win32Files::append_diagnostic_line(TextView line) {
  Descriptor file(open_file_to_append(path_in(paths_.state, "diag.txt")));
  // One write, so that two processes do not mix their lines.
  return file && write_all(file.number(), to_utf8(line) + "\r\n") && file.close();
}

}  // namespace orvello
