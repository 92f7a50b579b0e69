#include <windows.h>

#include <array>
#include <cstdlib>
#include <utility>

#include "base/text.h"
#include "exchange/charset_conversion.h"

namespace orvello {
namespace {

using Taken = CharsetConversion::Taken;

constexpr UINT kAscii = 20127, kShiftJis = 932, kSimplified = 936, kAllChinese = 54936;
constexpr UINT kIso = 28590;  // and the part's number
constexpr char16_t kNoCharacter = 0xFFFF;

unsigned byte_at(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

bool is_iso(UINT page) { return page > kIso && page < kIso + 20; }

// The UTF-16 of one character; empty where the page has none. The system invents characters for
// bytes that a page leaves free: controls, or private ones.
Text character_of(UINT page, std::string_view bytes) {
  wchar_t units[4] = {};
  const int count = MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(),
                                        static_cast<int>(bytes.size()), units, 4);
  if (count <= 0) return {};
  const Text text(units, units + count);
  const char16_t first = text.front();
  const bool invented = (first >= 0x80 && first < 0xA0 && !is_iso(page)) ||
                        (first >= 0xE000 && first < 0xF900 && page != kAllChinese);
  return invented || (bytes.size() > 1 && count == 2 && (first < 0xD800 || first >= 0xDC00))
             ? Text()
             : text;
}

class SingleByteCharset : public CharsetConversion {
 public:
  explicit SingleByteCharset(UINT page) {
    for (std::size_t i = 0; i < units_.size(); ++i) {
      const char byte = static_cast<char>(i);
      const Text unit = i < 0x80 || page != kAscii ? character_of(page, {&byte, 1}) : Text();
      units_[i] = i == 0 ? u'\0' : unit.empty() ? kNoCharacter : unit.front();
    }
  }
  Taken convert(std::string_view bytes, std::string& utf8) override {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const char16_t unit = units_[byte_at(bytes, i)];
      if (unit == kNoCharacter) return {i, false};
      append_utf8(utf8, unit);
    }
    return {bytes.size(), false};
  }

 private:
  std::array<char16_t, 256> units_{};
};

// Characters of one to four bytes, whose first ones tell how many.
class MultiByteCharset : public CharsetConversion {
 public:
  explicit MultiByteCharset(UINT page) : page_(page) {}
  Taken convert(std::string_view bytes, std::string& utf8) override {
    std::size_t i = 0;
    while (i < bytes.size()) {
      const std::size_t length = length_at(bytes.substr(i));
      if (length > bytes.size() - i) return {i, true};
      const Text text = byte_at(bytes, i) < 0x80 ? Text(1, static_cast<char16_t>(bytes[i]))
                                                 : character_of(page_, bytes.substr(i, length));
      if (text.empty()) break;
      utf8 += to_utf8(text);
      i += length;
    }
    return {i, false};
  }

 private:
  std::size_t length_at(std::string_view bytes) const {
    const unsigned first = byte_at(bytes, 0);
    if (page_ != kAllChinese) return IsDBCSLeadByteEx(page_, static_cast<BYTE>(first)) ? 2 : 1;
    if (first <= 0x80 || first == 0xFF) return 1;
    return bytes.size() > 1 && byte_at(bytes, 1) >= 0x30 && byte_at(bytes, 1) <= 0x39 ? 4 : 2;
  }
  UINT page_;
};

// A character of JIS X 0208 by its row and cell, both from 0x21.
Text japanese_character(unsigned row, unsigned cell) {
  if (row < 0x21 || row > 0x7E || cell < 0x21 || cell > 0x7E) return {};
  unsigned lead = (row - 0x21) / 2 + 0x81;
  if (lead > 0x9F) lead += 0x40;
  const unsigned trail = row % 2 == 0 ? cell + 0x7E : cell + 0x1F + (cell >= 0x60 ? 1 : 0);
  const char bytes[] = {static_cast<char>(lead), static_cast<char>(trail)};
  return character_of(kShiftJis, {bytes, 2});
}

class EucJapanese : public CharsetConversion {
 public:
  Taken convert(std::string_view bytes, std::string& utf8) override {
    constexpr unsigned kKana = 0x8E;
    std::size_t i = 0;
    while (i < bytes.size()) {
      const unsigned first = byte_at(bytes, i);
      const std::size_t length = first < 0x80 ? 1 : 2;
      if (length > bytes.size() - i) return {i, true};
      const Text text = length == 1 ? Text(1, static_cast<char16_t>(first))
                        : first == kKana
                            ? character_of(kShiftJis, bytes.substr(i + 1, 1))
                            : japanese_character(first & 0x7F, byte_at(bytes, i + 1) & 0x7F);
      if (text.empty() || (length == 2 && byte_at(bytes, i + 1) < 0x80)) break;
      utf8 += to_utf8(text);
      i += length;
    }
    return {i, false};
  }
};

// ISO-2022-JP: seven bits, with marks that turn from ASCII to Japanese and back.
class TurnedJapanese : public CharsetConversion {
 public:
  void finish() override { wide_ = false; }
  Taken convert(std::string_view bytes, std::string& utf8) override {
    constexpr std::string_view kNarrow[] = {"\x1B(B", "\x1B(J"}, kWide[] = {"\x1B$@", "\x1B$B"};
    constexpr std::size_t kMark = 3;
    std::size_t i = 0;
    while (i < bytes.size()) {
      const unsigned first = byte_at(bytes, i);
      const std::string_view mark = bytes.substr(i, kMark);
      if (first == 0x1B) {
        if (mark.size() < kMark) return {i, true};
        const bool narrow = mark == kNarrow[0] || mark == kNarrow[1];
        if (!narrow && mark != kWide[0] && mark != kWide[1]) break;
        wide_ = !narrow;
        i += kMark;
      } else if (!wide_ || first < 0x20) {
        if (first >= 0x80) break;
        utf8 += bytes[i++];
      } else {
        if (bytes.size() - i < 2) return {i, true};
        const Text text = japanese_character(first, byte_at(bytes, i + 1));
        if (text.empty()) break;
        utf8 += to_utf8(text);
        i += 2;
      }
    }
    return {i, false};
  }

 private:
  bool wide_ = false;
};

// Units of two or four bytes; a mark at the beginning tells their order where the name does not.
class WideCharset : public CharsetConversion {
 public:
  enum class Order { told, little, big };
  WideCharset(std::size_t unit, Order order) : unit_(unit), order_(order) { finish(); }
  void finish() override {
    begun_ = order_ != Order::told;
    big_ = order_ == Order::big;
  }
  Taken convert(std::string_view bytes, std::string& utf8) override {
    std::size_t i = 0;
    while (i < bytes.size()) {
      if (bytes.size() - i < unit_) return {i, true};
      char32_t point = unit_at(bytes, i);
      std::size_t length = unit_;
      if (!std::exchange(begun_, true)) {
        const bool turned = point == 0xFFFE || point == 0xFFFE0000;
        big_ ^= turned;
        i += turned || point == 0xFEFF ? unit_ : 0;
        continue;
      }
      if (unit_ == 2 && point >= 0xD800 && point < 0xDC00) {
        if (bytes.size() - i < 4) return {i, true};
        const char32_t low = unit_at(bytes, i + 2);
        if (low < 0xDC00 || low > 0xDFFF) break;
        point = 0x10000 + ((point - 0xD800) << 10) + (low - 0xDC00);
        length = 4;
      }
      if (point > 0x10FFFF || (point >= 0xD800 && point < 0xE000)) break;
      append_utf8(utf8, point);
      i += length;
    }
    return {i, false};
  }

 private:
  char32_t unit_at(std::string_view bytes, std::size_t at) const {
    char32_t value = 0;
    for (std::size_t k = 0; k < unit_; ++k)
      value = value << 8 | byte_at(bytes, at + (big_ ? k : unit_ - 1 - k));
    return value;
  }
  std::size_t unit_;
  Order order_;
  bool big_ = false, begun_ = false;
};

// Only letters and digits; "CSISO..." and "X-..." mean what stands behind.
std::string plain_name(const std::string& name) {
  std::string plain;
  for (const char c : name)
    if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) plain += c;
  return plain;
}

std::unique_ptr<CharsetConversion> wide_charset(const std::string& name) {
  using Order = WideCharset::Order;
  constexpr std::pair<std::string_view, std::size_t> kWide[] = {
      {"UTF16", 2}, {"UCS2", 2}, {"UTF32", 4}, {"UCS4", 4}};
  for (const auto& [begin, unit] : kWide) {
    if (!name.starts_with(begin)) continue;
    const std::string order = name.substr(begin.size());
    if (order.empty()) return std::make_unique<WideCharset>(unit, Order::told);
    if (order == "LE") return std::make_unique<WideCharset>(unit, Order::little);
    if (order == "BE") return std::make_unique<WideCharset>(unit, Order::big);
  }
  return nullptr;
}

// The system's number for a charset; 0 for one that it does not know.
UINT code_page(const std::string& name) {
  constexpr std::pair<std::string_view, UINT> kNamed[] = {{"ASCII", kAscii},
                                                          {"USASCII", kAscii},
                                                          {"ANSIX341968", kAscii},
                                                          {"KOI8R", 20866},
                                                          {"KOI8U", 21866},
                                                          {"KOI8", 20866},
                                                          {"SHIFTJIS", kShiftJis},
                                                          {"SJIS", kShiftJis},
                                                          {"MSKANJI", kShiftJis},
                                                          {"WINDOWS31J", kShiftJis},
                                                          {"GB2312", kSimplified},
                                                          {"GBK", kSimplified},
                                                          {"EUCCN", kSimplified},
                                                          {"GB18030", kAllChinese},
                                                          {"BIG5", 950},
                                                          {"BIG5HKSCS", 950},
                                                          {"EUCTW", 0},
                                                          {"EUCKR", 949},
                                                          {"KSC56011987", 949},
                                                          {"UHC", 949},
                                                          {"TIS620", 874},
                                                          {"ISO885911", 874},
                                                          {"MACINTOSH", 10000},
                                                          {"MACCYRILLIC", 10007},
                                                          {"LATIN1", kIso + 1},
                                                          {"L1", kIso + 1},
                                                          {"LATIN2", kIso + 2},
                                                          {"L2", kIso + 2},
                                                          {"CYRILLIC", kIso + 5},
                                                          {"GREEK", kIso + 7},
                                                          {"HEBREW", kIso + 8},
                                                          {"ISO88598I", kIso + 8},
                                                          {"LATIN5", kIso + 9},
                                                          {"LATIN9", kIso + 15}};
  for (const auto& [known, page] : kNamed)
    if (name == known) return page;
  constexpr std::pair<std::string_view, UINT> kNumbered[] = {
      {"ISO8859", kIso}, {"WINDOWS", 0}, {"WIN", 0}, {"CP", 0}, {"IBM", 0}, {"MS", 0}};
  for (const auto& [begin, first] : kNumbered) {
    if (!name.starts_with(begin)) continue;
    const std::string digits = name.substr(begin.size());
    if (digits.empty() || digits.size() > 5 ||
        digits.find_first_not_of("0123456789") != std::string::npos)
      continue;
    return first + static_cast<UINT>(std::atoi(digits.c_str()));
  }
  return 0;
}

}  // namespace

std::unique_ptr<CharsetConversion> CharsetConversion::of(const std::string& name) {
  const std::string plain = plain_name(name);
  if (auto wide = wide_charset(plain)) return wide;
  if (plain == "EUCJP") return std::make_unique<EucJapanese>();
  if (plain == "ISO2022JP") return std::make_unique<TurnedJapanese>();
  UINT page = code_page(plain);
  // An older system has the greater part of it.
  if (page == kAllChinese && !IsValidCodePage(page)) page = kSimplified;
  if (page == kAllChinese) return std::make_unique<MultiByteCharset>(page);
  CPINFO info{};
  if (page == 0 || page >= 65000 || !IsValidCodePage(page) || !GetCPInfo(page, &info))
    return nullptr;
  if (info.MaxCharSize > 1) return std::make_unique<MultiByteCharset>(page);
  return std::make_unique<SingleByteCharset>(page);
}

}  // namespace orvello
