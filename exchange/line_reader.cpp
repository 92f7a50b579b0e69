#include "exchange/line_reader.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace orvello {
namespace {

constexpr std::size_t kPiece = 1 << 18;
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

void append_utf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    if (c < 0x10000) {
      out += static_cast<char>(0xE0 | (c >> 12));
    } else {
      out += static_cast<char>(0xF0 | (c >> 18));
      out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    }
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

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

// The 27 characters that Windows-1252 has where Latin-1 has control codes.
constexpr char16_t kWindows1252[32] = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

void append_windows1252(std::string& out, std::string_view bytes) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    append_utf8(out, byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80] : byte);
  }
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

// Where `line` ends inside a character that the fold at `next` completes: its bytes there.
std::size_t completion(std::string_view line, std::size_t valid, std::string_view next) {
  if (next.empty() || (next[0] != ' ' && next[0] != '\t')) return 0;
  const std::string_view tail = line.substr(valid);
  if (tail.empty() || tail.size() > 3 || character_length(tail) != -1) return 0;
  for (std::size_t more = 1; more <= 3 && more < next.size(); ++more) {
    const std::string joined = std::string(tail) + std::string(next.substr(1, more));
    if (character_length(joined) == static_cast<int>(joined.size())) return more;
  }
  return 0;
}

}  // namespace

bool is_utf8(std::string_view text) { return valid_length(text) == text.size(); }

int repair_encoding(std::string& text) {
  int done = 0;
  if (text.find('\0') != std::string::npos) {
    std::erase(text, '\0');
    done |= kHadNul;
  }
  if (is_utf8(text)) return done;
  std::string good;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    std::string_view line(text.data() + at, end - at);
    at = end + 1;
    const std::size_t valid = valid_length(line);
    const std::string_view next =
        at < text.size() ? std::string_view(text).substr(at, 4) : std::string_view();
    if (const std::size_t more = completion(line, valid, next)) {
      good.append(line).append(next.substr(1, more)).append("\n");
      // The moved bytes leave the next line: its fold mark goes where they end.
      text[at + more] = next[0];
      at += more;
      continue;
    }
    if (valid == line.size()) {
      good.append(line);
    } else {
      append_windows1252(good, line);
      done |= kHadForeignBytes;
    }
    if (end < text.size()) good += '\n';
  }
  text = std::move(good);
  return done;
}

void LineReader::append_utf16(std::string_view bytes) {
  odd_.append(bytes);
  const bool little = encoding_ == Encoding::utf16_little;
  const auto unit = [&](std::size_t i) {
    const auto a = static_cast<unsigned char>(odd_[i]), b = static_cast<unsigned char>(odd_[i + 1]);
    return static_cast<char32_t>(little ? a | (b << 8) : (a << 8) | b);
  };
  std::size_t i = 0;
  for (; i + 1 < odd_.size(); i += 2) {
    char32_t c = unit(i);
    if (c >= 0xD800 && c < 0xDC00) {
      if (i + 3 >= odd_.size() && !ended_) break;
      const char32_t low = i + 3 < odd_.size() ? unit(i + 2) : 0;
      if (low >= 0xDC00 && low < 0xE000) {
        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
        i += 2;
      } else {
        c = 0xFFFD;
      }
    } else if (c >= 0xDC00 && c < 0xE000) {
      c = 0xFFFD;
    }
    if (c != 0xFEFF) append_utf8(buffer_, c);
  }
  odd_.erase(0, i);
}

bool LineReader::refill() {
  if (ended_) return false;
  buffer_.erase(0, at_);
  at_ = 0;
  raw_.resize(kPiece);
  in_.read(raw_.data(), static_cast<std::streamsize>(raw_.size()));
  raw_.resize(static_cast<std::size_t>(in_.gcount()));
  ended_ = raw_.size() < kPiece;
  std::string_view bytes = raw_;
  if (encoding_ == Encoding::unknown) {
    const std::string_view two = bytes.substr(0, 2);
    // Without a mark, the first letter tells: "B" and a zero byte, or the other way round.
    if (two == "\xFF\xFE" || two == std::string_view("B\0", 2))
      encoding_ = Encoding::utf16_little;
    else if (two == "\xFE\xFF" || two == std::string_view("\0B", 2))
      encoding_ = Encoding::utf16_big;
    else
      encoding_ = Encoding::bytes;
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  }
  if (encoding_ == Encoding::bytes)
    buffer_.append(bytes);
  else
    append_utf16(bytes);
  lf_ = buffer_.find('\n');
  cr_ = buffer_.find('\r');
  return true;
}

// Both marks are searched for once and remembered, so that a file of only one kind costs no more.
std::size_t LineReader::line_end() {
  if (lf_ != kNone && lf_ < at_) lf_ = buffer_.find('\n', at_);
  if (cr_ != kNone && cr_ < at_) cr_ = buffer_.find('\r', at_);
  return std::min(lf_, cr_);
}

bool LineReader::next(std::string_view& line, std::size_t longest) {
  was_cut_ = false;
  std::string kept;
  std::size_t end = line_end();
  // A CR that is the buffer's last byte may be half of a CR LF.
  while ((end == kNone || end + 1 == buffer_.size()) && !ended_) {
    if (end == kNone && buffer_.size() - at_ > longest) {
      if (kept.empty()) kept = buffer_.substr(at_, longest);
      was_cut_ = true;
      at_ = buffer_.size();
    }
    refill();
    end = line_end();
  }
  if (end == kNone) {
    if (at_ >= buffer_.size() && !was_cut_) return false;
    end = buffer_.size();
  }
  line = std::string_view(buffer_).substr(at_, end - at_);
  at_ = std::min(end + 1, buffer_.size());
  if (end + 1 < buffer_.size() && buffer_[end] == '\r' && buffer_[end + 1] == '\n') ++at_;
  if (was_cut_) {
    raw_ = std::move(kept);
    line = raw_;
  } else if (line.size() > longest) {
    was_cut_ = true;
    line = line.substr(0, longest);
  }
  ++number_;
  return true;
}

}  // namespace orvello
