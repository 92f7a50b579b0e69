#include "base/text.h"

#include <cmath>
#include <cstdio>

namespace orvello {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void append_code_point(Text& out, char32_t c) {
  if (c >= 0x10000) {
    c -= 0x10000;
    out.push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
    out.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
  } else {
    out.push_back(static_cast<char16_t>(c));
  }
}

// Decodes one code point at `i` and moves past it; a bad lead or a cut sequence is one unit.
char32_t decode_utf8(std::string_view s, std::size_t& i) {
  const auto lead = static_cast<unsigned char>(s[i++]);
  if (lead < 0x80) return lead;
  const int more = lead >= 0xF0 && lead < 0xF5   ? 3
                   : lead >= 0xE0 && lead < 0xF0 ? 2
                   : lead >= 0xC2 && lead < 0xE0 ? 1
                                                 : 0;
  if (more == 0) return kReplacement;
  char32_t c = lead & (0x3F >> more);
  std::size_t at = i;
  for (int k = 0; k < more; ++k, ++at) {
    if (at >= s.size() || (static_cast<unsigned char>(s[at]) & 0xC0) != 0x80) return kReplacement;
    c = (c << 6) | (static_cast<unsigned char>(s[at]) & 0x3F);
  }
  static constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
  if (c < kLeast[more] || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) return kReplacement;
  i = at;
  return c;
}

std::string number_digits(std::int64_t value, int precision) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.*lld", std::min(precision, 32),
                static_cast<long long>(value));
  return buffer;
}

std::string real_digits(double value, int precision) {
  std::string buffer(400, '\0');
  const int n = std::snprintf(buffer.data(), buffer.size(), "%.*f", std::min(precision, 32), value);
  buffer.resize(static_cast<std::size_t>(n));
  return buffer;
}

void expand(Text& out, char16_t kind, int precision, const FormatArgument& argument) {
  if (kind == u's') {
    if (const auto* text = std::get_if<Text>(&argument)) out += *text;
  } else if (kind == u'd') {
    if (const auto* number = std::get_if<std::int64_t>(&argument))
      out += to_utf16(number_digits(*number, precision < 0 ? 1 : precision));
  } else if (kind == u'f') {
    if (const auto* real = std::get_if<double>(&argument))
      out += to_utf16(real_digits(*real, precision < 0 ? 6 : precision));
  }
}

}  // namespace

Text to_utf16(std::string_view utf8) {
  Text out;
  out.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if (byte < 0x80) {
      out.push_back(byte);
      ++i;
    } else {
      append_code_point(out, decode_utf8(utf8, i));
    }
  }
  return out;
}

void append_utf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (c >> 6)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (c >> 12)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (c >> 18)));
    out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

std::string to_utf8(TextView text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (c < 0x80) {  // nearly all of it
      out.push_back(static_cast<char>(c));
      continue;
    }
    if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
        text[i + 1] < 0xE000) {
      c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
    } else if (c >= 0xD800 && c < 0xE000) {
      c = kReplacement;
    }
    append_utf8(out, c);
  }
  return out;
}

Text format_text(TextView picture, const std::vector<FormatArgument>& arguments) {
  Text out;
  std::size_t next = 0;
  for (std::size_t i = 0; i < picture.size(); ++i) {
    if (picture[i] != u'%') {
      out.push_back(picture[i]);
      continue;
    }
    if (++i >= picture.size()) break;
    int precision = -1;
    if (picture[i] == u'.') {
      precision = 0;
      while (++i < picture.size() && picture[i] >= u'0' && picture[i] <= u'9')
        precision = std::min(precision * 10 + (picture[i] - u'0'), 1000);
    }
    while (i < picture.size() && picture[i] == u'l') ++i;
    if (i >= picture.size()) break;
    if (picture[i] == u'%') {
      out.push_back(u'%');
    } else if (next < arguments.size()) {
      expand(out, picture[i], precision, arguments[next++]);
    }
  }
  return out;
}

std::int64_t leading_number(TextView text) {
  std::size_t i = 0;
  while (i < text.size() && (text[i] == u' ' || (text[i] >= 9 && text[i] <= 13))) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) negative = text[i++] == u'-';
  std::int64_t value = 0;
  for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i)
    value = std::min<std::int64_t>(value * 10 + (text[i] - u'0'), INT64_C(1) << 52);
  return negative ? -value : value;
}

Text cut(TextView text, std::size_t units) {
  if (text.size() <= units) return Text(text);
  if (units > 0 && text[units - 1] >= 0xD800 && text[units - 1] < 0xDC00) --units;
  return Text(text.substr(0, units));
}

std::vector<Text> split(TextView text, char16_t separator) {
  std::vector<Text> pieces;
  std::size_t from = 0;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    if (i == text.size() || text[i] == separator) {
      pieces.emplace_back(text.substr(from, i - from));
      from = i + 1;
    }
  }
  return pieces;
}

TextView trimmed(TextView text) {
  while (!text.empty() && text.front() == u' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == u' ') text.remove_suffix(1);
  return text;
}

std::string_view trimmed(std::string_view bytes) {
  while (!bytes.empty() && static_cast<unsigned char>(bytes.front()) <= ' ') bytes.remove_prefix(1);
  while (!bytes.empty() && static_cast<unsigned char>(bytes.back()) <= ' ') bytes.remove_suffix(1);
  return bytes;
}

Text upper_ascii(TextView text) {
  Text out(text);
  for (char16_t& c : out)
    if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - u'a' + u'A');
  return out;
}

bool starts_with(TextView text, TextView prefix) { return text.substr(0, prefix.size()) == prefix; }

}  // namespace orvello
