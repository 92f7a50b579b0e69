// Standard output and standard error as this program writes to them. While it lives, std::cout and
// std::cerr show control characters instead of passing them on, and what could not be written is
// known at the end.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "base/terminal_text.h"
#include "hosts/shared/exact_buffer.h"

namespace orvello {

class StandardStreams {
 public:
  // Also sees to it that a closed pipe or a limit on a file's size is an error like any other
  // instead of a signal, and that no file is opened under a standard stream's number.
  StandardStreams();
  ~StandardStreams();
  StandardStreams(const StandardStreams&) = delete;
  StandardStreams& operator=(const StandardStreams&) = delete;

  // Standard output for a file's content, byte for byte unless a terminal shows it.
  std::ostream& content() { return content_; }

  // Writes what waits. Why standard output did not take everything; nothing when it did.
  std::optional<std::string> finish();

 private:
  bool write_out(std::string_view bytes);

  int error_ = 0;
  TerminalBuffer out_, err_;
  ExactBuffer exact_;
  std::ostream content_;
  std::streambuf* const old_out_;
  std::streambuf* const old_err_;
};

}  // namespace orvello
