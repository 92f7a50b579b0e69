// Text that a terminal shows and does not obey: what comes from files may hold control characters,
// which could move the cursor, rename the window or turn a line around.
#pragma once

#include <functional>
#include <streambuf>
#include <string>
#include <string_view>

namespace orvello {

// C0, DEL, C1, the separators of lines and paragraphs, and what embeds, overrides or isolates a
// writing direction. The plain marks U+200E and U+200F turn nothing around and are left alone.
bool is_terminal_control(char32_t c);

// Each control character and each ill-formed byte becomes U+FFFD. Line ends (also CR LF) and tabs
// stay: rows and columns are made of them.
std::string terminal_text(std::string_view utf8);

// Behind a stream to a terminal, so that no caller can forget: all that is written passes through
// `terminal_text`, whole characters at a time.
class TerminalBuffer : public std::streambuf {
 public:
  using Sink = std::function<bool(std::string_view)>;  // false: it could not be written
  explicit TerminalBuffer(Sink sink) : sink_(std::move(sink)) {}
  ~TerminalBuffer() override;
  TerminalBuffer(const TerminalBuffer&) = delete;
  TerminalBuffer& operator=(const TerminalBuffer&) = delete;

 protected:
  int_type overflow(int_type c) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;
  int sync() override;

 private:
  Sink sink_;
  std::string pending_;
};

}  // namespace orvello
