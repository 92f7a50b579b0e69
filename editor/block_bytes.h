// Bytes of the editor's own formats: numbers in as few bytes as they need, and a checksum. What is
// read may come from anywhere: nothing is read beyond the end, nothing is allotted in advance.
#pragma once

#include <bit>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"

namespace orvello {

// As Ethernet, ZIP and PNG have it.
std::uint32_t crc32(std::string_view bytes);

class BlockWriter {
 public:
  // Four bytes that tell the format and its version.
  explicit BlockWriter(std::string_view mark) : bytes_(mark) {}
  void byte(unsigned value) { bytes_ += static_cast<char>(value & 0xFF); }
  // Seven bits a byte, the lowest first; the top bit says that another byte follows.
  void number(std::uint64_t value);
  // 0, -1, 1, -2 .. as 0, 1, 2, 3 ..
  void signed_number(std::int64_t value);
  void fixed(std::uint64_t value, int size);  // the lowest byte first
  void bytes(std::string_view value);         // their number first
  void units(TextView text);                  // likewise, each as it is
  std::string sealed() &&;                    // with the checksum of all before it

 private:
  std::string bytes_;
};

// Answers zeros and empty texts from the first fault on.
class BlockReader {
 public:
  // Nothing for a block without this mark, or whose checksum is another.
  static std::optional<BlockReader> opened(std::string_view block, std::string_view mark);

  bool good() const { return good_; }
  bool at_end() const { return good_ && rest_.empty(); }
  void fail() { good_ = false; }
  std::size_t left() const { return good_ ? rest_.size() : 0; }

  unsigned byte();
  std::uint64_t number();
  std::int64_t signed_number();
  std::uint64_t fixed(int size);
  std::string_view bytes();
  Text units();

 private:
  explicit BlockReader(std::string_view rest) : rest_(rest) {}
  std::string_view take(std::uint64_t size);

  std::string_view rest_;
  bool good_ = true;
};

}  // namespace orvello
