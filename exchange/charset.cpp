#include "exchange/charset.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace orvello {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// Length of the character at `text`, 0 when it is ill-formed, -1 when the text ends inside it.
int character_length(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned first = byte(0);
  const int length = first < 0x80   ? 1
                     : first < 0xC2 ? 0
                     : first < 0xE0 ? 2
                     : first < 0xF0 ? 3
                     : first < 0xF5 ? 4
                                    : 0;
  for (int i = 1; i < length; ++i) {
    if (static_cast<std::size_t>(i) == text.size()) return -1;
    if ((byte(i) & 0xC0) != 0x80) return 0;
    if (i > 1) continue;
    // Overlong forms, surrogates and what lies behind U+10FFFF.
    if ((first == 0xE0 && byte(1) < 0xA0) || (first == 0xED && byte(1) > 0x9F) ||
        (first == 0xF0 && byte(1) < 0x90) || (first == 0xF4 && byte(1) > 0x8F))
      return 0;
  }
  return length;
}

// Offset of the first byte that is not part of a whole character.
std::size_t valid_length(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    std::uint64_t eight = 0;
    if (i + 8 <= text.size()) {
      std::memcpy(&eight, text.data() + i, 8);
      if ((eight & 0x8080808080808080u) == 0) {
        i += 8;
        continue;
      }
    }
    const int length = character_length(text.substr(i));
    if (length <= 0) return i;
    i += static_cast<std::size_t>(length);
  }
  return i;
}

// Names as iconv has them: "cp-1251", "WIN1251", "x-sjis" and "ansi_1252" are in use as well.
std::vector<std::string> charset_names(std::string_view charset) {
  std::string name;
  for (const char c : charset.substr(0, 40)) {
    const bool known = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    if (!known && c != '-' && c != '_' && c != '.' && c != ':') continue;  // "//" has a meaning
    name += c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
  }
  std::vector<std::string> names;
  if (name.empty()) return names;
  names.push_back(name);
  if (name.starts_with("X-")) names.push_back(name.substr(2));
  std::string digits;
  for (const char c : name)
    if (c >= '0' && c <= '9') digits += c;
  if (digits.starts_with("125") && digits.size() == 4) names.push_back("CP" + digits);
  return names;
}

}  // namespace

bool is_utf8(std::string_view text) { return valid_length(text) == text.size(); }

Utf8Look utf8_look(std::string_view bytes) {
  Utf8Look look;
  for (std::size_t i = 0; i < bytes.size();) {
    const int length = character_length(bytes.substr(i));
    if (length > 1) ++look.characters;
    if (length < 1) ++look.bad_bytes;
    i += static_cast<std::size_t>(std::max(length, 1));
  }
  return look;
}

std::optional<TextDecoder> TextDecoder::of(std::string_view charset) {
  for (const std::string& name : charset_names(charset)) {
    if (name == "UTF-8" || name == "UTF8") return TextDecoder(nullptr);
    if (auto conversion = CharsetConversion::of(name)) return TextDecoder(std::move(conversion));
  }
  return std::nullopt;
}

void TextDecoder::damage(std::string& out) {
  out += kReplacement;
  ++damaged_;
}

// Both answer where an unfinished character begins.
std::size_t TextDecoder::decode_utf8(std::string_view bytes, std::string& out) {
  std::size_t i = 0;
  while (i < bytes.size()) {
    const std::size_t good = valid_length(bytes.substr(i));
    out.append(bytes.substr(i, good));
    i += good;
    if (i == bytes.size() || character_length(bytes.substr(i)) < 0) break;
    damage(out);
    ++i;
  }
  return i;
}

std::size_t TextDecoder::convert(std::string_view bytes, std::string& out) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const auto taken = conversion_->convert(bytes.substr(done), out);
    done += taken.bytes;
    if (taken.unfinished || done == bytes.size()) break;
    damage(out);
    ++done;
  }
  return done;
}

void TextDecoder::decode(std::string_view piece, std::string& out) {
  const std::string bytes = rest_.append(piece);
  const std::size_t done = conversion_ ? convert(bytes, out) : decode_utf8(bytes, out);
  rest_ = bytes.substr(done);
}

void TextDecoder::finish(std::string& out) {
  for (std::size_t i = 0; i < rest_.size(); ++i) damage(out);
  rest_.clear();
  if (conversion_) conversion_->finish();
}

std::string text_from(std::string_view bytes, std::string_view declared) {
  auto decoder = declared.empty() ? std::nullopt : TextDecoder::of(declared);
  const Utf8Look look = utf8_look(bytes);
  // Many programs declare what they do not write.
  const bool unmistakable = look.characters > 0 && look.bad_bytes == 0;
  if (!decoder || unmistakable) {
    const bool utf8 = look.bad_bytes == 0 || look.characters >= look.bad_bytes;
    decoder = TextDecoder::of(utf8 ? "UTF-8" : guess_charset(bytes));
    if (!decoder) decoder = TextDecoder::of("UTF-8");
  }
  std::string text;
  decoder->decode(bytes, text);
  decoder->finish(text);
  return text;
}

}  // namespace orvello
