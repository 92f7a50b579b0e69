#include "base/quoted_text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace orvello {
namespace {

bool is_surrogate(char16_t c) { return c >= 0xD800 && c < 0xE000; }

bool starts_pair(TextView text, std::size_t i) {
  return text[i] < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
}

std::optional<char16_t> hexadecimal_unit(std::string_view digits) {
  std::uint16_t value = 0;
  const auto [end, fault] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (digits.size() != 4 || fault != std::errc{} || end != digits.data() + 4) return std::nullopt;
  return static_cast<char16_t>(value);
}

}  // namespace

std::string quoted(TextView text) {
  std::string out = "\"";
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c == u'"' || c == u'\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c == u'\n') {
      out += "\\n";
    } else if (is_surrogate(c) && starts_pair(text, i)) {
      out += to_utf8(text.substr(i++, 2));
    } else if (c < 0x20 || c == 0x7F || is_surrogate(c)) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
      out += escape;
    } else {
      out += to_utf8(text.substr(i, 1));
    }
  }
  return out + '"';
}

std::optional<Text> take_quoted(std::string_view& rest) {
  if (rest.empty() || rest.front() != '"') return std::nullopt;
  Text out;
  std::size_t i = 1;
  while (i < rest.size() && rest[i] != '"') {
    if (rest[i] != '\\') {
      const std::size_t plain = std::min(rest.find_first_of("\\\"", i), rest.size());
      out += to_utf16(rest.substr(i, plain - i));
      i = plain;
    } else if (i + 1 < rest.size() && rest[i + 1] == 'u') {
      const auto unit = hexadecimal_unit(rest.substr(i + 2, 4));
      if (!unit) return std::nullopt;
      out += *unit;
      i += 6;
    } else if (i + 1 < rest.size() &&
               std::string_view("\\\"n").find(rest[i + 1]) != std::string_view::npos) {
      out += rest[i + 1] == 'n' ? u'\n' : static_cast<char16_t>(rest[i + 1]);
      i += 2;
    } else {
      return std::nullopt;
    }
  }
  if (i >= rest.size()) return std::nullopt;
  rest.remove_prefix(i + 1);
  return out;
}

}  // namespace orvello
