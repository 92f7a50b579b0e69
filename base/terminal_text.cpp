#include "base/terminal_text.h"

#include <algorithm>

#include "base/text.h"

namespace orvello {
namespace {

constexpr std::size_t kPieceSize = 1 << 16;

// Where the last character of `text` begins, when more bytes may belong to it; else its length.
std::size_t whole_characters(std::string_view text) {
  if (!text.empty() && text.back() == '\r') return text.size() - 1;
  for (std::size_t back = 1; back <= 3 && back <= text.size(); ++back) {
    const auto byte = static_cast<unsigned char>(text[text.size() - back]);
    if (byte < 0x80) break;
    if (byte < 0xC0) continue;  // inside a character
    const std::size_t length = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    if (length > back) return text.size() - back;
    break;
  }
  return text.size();
}

}  // namespace

bool is_terminal_control(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0x2028 && c <= 0x202E) ||
         (c >= 0x2066 && c <= 0x2069);
}

std::string terminal_text(std::string_view utf8) {
  const auto harmless = [](unsigned char byte) {
    return (byte >= 0x20 && byte < 0x7F) || byte == '\n' || byte == '\t';
  };
  if (std::all_of(utf8.begin(), utf8.end(), harmless)) return std::string(utf8);
  Text text = to_utf16(utf8);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool line_end = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
    if (text[i] == u'\n' || text[i] == u'\t' || line_end) continue;
    if (is_terminal_control(text[i])) text[i] = u'\xFFFD';
  }
  return to_utf8(text);
}

TerminalBuffer::~TerminalBuffer() {
  if (!pending_.empty()) sink_(terminal_text(pending_));
}

TerminalBuffer::int_type TerminalBuffer::overflow(int_type c) {
  if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
  const char byte = traits_type::to_char_type(c);
  return xsputn(&byte, 1) == 1 ? c : traits_type::eof();
}

std::streamsize TerminalBuffer::xsputn(const char* bytes, std::streamsize count) {
  pending_.append(bytes, static_cast<std::size_t>(count));
  return pending_.size() < kPieceSize || sync() == 0 ? count : 0;
}

int TerminalBuffer::sync() {
  const std::size_t whole = whole_characters(pending_);
  const bool written = whole == 0 || sink_(terminal_text({pending_.data(), whole}));
  pending_.erase(0, whole);
  return written ? 0 : -1;
}

}  // namespace orvello
