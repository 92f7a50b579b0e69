// A hash that stays the same from run to run and from version to version, for names that are made
// from content and kept. Not for secrets.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvello {

class StableHash {
 public:
  StableHash& add(std::string_view bytes) {  // FNV-1a
    for (const char c : bytes)
      value_ = (value_ ^ static_cast<unsigned char>(c)) * std::uint64_t{0x100000001B3};
    return *this;
  }
  // The last `digits` of 16 hexadecimal ones.
  std::string text(int digits = 16) const {
    std::string text;
    for (int shift = 4 * digits - 4; shift >= 0; shift -= 4)
      text += "0123456789abcdef"[value_ >> shift & 15];
    return text;
  }

 private:
  std::uint64_t value_ = 0xCBF29CE484222325;
};

}  // namespace orvello
