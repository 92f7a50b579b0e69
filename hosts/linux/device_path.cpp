#include "hosts/linux/device_path.h"

#include <algorithm>

namespace orvello {
namespace {

// Stands for a backslash that is part of a folder's name here.
constexpr char16_t kLiteralBackslash = 0xF05C;

}  // namespace

Text device_path(const std::string& path) {
  Text text = to_utf16(path);
  std::replace(text.begin(), text.end(), u'\\', kLiteralBackslash);
  std::replace(text.begin(), text.end(), u'/', u'\\');
  return text;
}

std::string host_path(TextView path) {
  Text text(path);
  std::replace(text.begin(), text.end(), u'\\', u'/');
  std::replace(text.begin(), text.end(), kLiteralBackslash, u'\\');
  return to_utf8(text);
}

}  // namespace orvello
