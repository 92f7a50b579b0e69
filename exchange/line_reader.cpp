#include "exchange/line_reader.h"

#include <algorithm>

#include "base/text.h"

namespace orvello {
namespace {

constexpr std::size_t kPiece = 1 << 18;
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

}  // namespace

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
  bytes_read_ += raw_.size();
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
