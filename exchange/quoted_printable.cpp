#include "exchange/quoted_printable.h"

#include "exchange/charset.h"

namespace orvello {
namespace {

int hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

}  // namespace

std::string from_quoted_printable(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool coded = text[i] == '=' && i + 2 < text.size() && hex_digit(text[i + 1]) >= 0 &&
                       hex_digit(text[i + 2]) >= 0;
    if (coded) {
      bytes += static_cast<char>(hex_digit(text[i + 1]) * 16 + hex_digit(text[i + 2]));
      i += 2;
    } else {
      bytes += text[i];
    }
  }
  return bytes;
}

bool is_quoted_printable(const Property& property) {
  return equal_ignoring_case(parameter(property, "ENCODING").value_or(""), "QUOTED-PRINTABLE") ||
         parameter(property, "QUOTED-PRINTABLE").has_value();
}

std::string plain_text(const Property& property) {
  std::string text(property.value);
  if (is_quoted_printable(property))
    text = text_from(from_quoted_printable(text), parameter(property, "CHARSET").value_or(""));
  std::erase(text, '\0');
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escaped = text[i] == '\\' && i + 1 < text.size();
    if (escaped && (text[i + 1] == ';' || text[i + 1] == ',' || text[i + 1] == '\\')) ++i;
    if (escaped && (text[i + 1] == 'n' || text[i + 1] == 'N')) {
      plain += '\n';
      ++i;
      continue;
    }
    plain += text[i];
  }
  return plain;
}

}  // namespace orvello
