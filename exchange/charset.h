// Texts in other encodings than UTF-8.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "exchange/charset_conversion.h"

namespace orvello {

bool is_utf8(std::string_view text);

// How UTF-8 the bytes look: whole characters beyond ASCII, and bytes that are part of none.
struct Utf8Look {
  int characters = 0;
  int bad_bytes = 0;
};
Utf8Look utf8_look(std::string_view bytes);

// Turns pieces of one text into UTF-8. A byte that is no text in its charset becomes U+FFFD; a
// character that a piece breaks off goes to the next one.
class TextDecoder {
 public:
  // By the names that mail uses ("windows-1251", "CP1251", "Shift_JIS"); nothing for unknown ones.
  static std::optional<TextDecoder> of(std::string_view charset);

  void decode(std::string_view piece, std::string& out);
  void finish(std::string& out);            // the text ends here; another one may follow
  int damaged() const { return damaged_; }  // bytes so far

 private:
  explicit TextDecoder(std::unique_ptr<CharsetConversion> conversion)
      : conversion_(std::move(conversion)) {}
  std::size_t decode_utf8(std::string_view bytes, std::string& out);
  std::size_t convert(std::string_view bytes, std::string& out);
  void damage(std::string& out);

  std::unique_ptr<CharsetConversion> conversion_;  // null: from UTF-8
  std::string rest_;
  int damaged_ = 0;
};

// The likeliest charset of bytes that are not UTF-8 and say nothing of themselves: Windows-1252,
// Windows-1250, Windows-1251 or KOI8-R.
std::string_view guess_charset(std::string_view bytes);

// A value's bytes as UTF-8. `declared` may be empty, unknown or wrong.
std::string text_from(std::string_view bytes, std::string_view declared);

}  // namespace orvello
