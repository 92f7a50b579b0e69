// What the system knows of other encodings than UTF-8; charset_SYSTEM.cpp carries it out.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace orvello {

class CharsetConversion {
 public:
  // By a name in capitals, with what mail puts between its parts; null for an unknown one.
  static std::unique_ptr<CharsetConversion> of(const std::string& name);
  virtual ~CharsetConversion() = default;

  // Up to the first byte that begins no character of this charset, or no whole one.
  struct Taken {
    std::size_t bytes = 0;
    bool unfinished = false;  // what is left may be the beginning of a character
  };
  virtual Taken convert(std::string_view bytes, std::string& utf8) = 0;
  virtual void finish() {}  // the next text begins as the first did
};

}  // namespace orvello
