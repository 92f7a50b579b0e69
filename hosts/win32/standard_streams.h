// Standard output and standard error as this program writes to them: into the files or pipes that
// it was started with, else on the console that it was started from. While it lives, std::cout and
// std::cerr show control characters instead of passing them on, std::cin reads bytes as they are,
// and what could not be written is known at the end.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "base/terminal_text.h"
#include "hosts/shared/exact_buffer.h"

namespace orvello {

class StandardStreams {
 public:
  StandardStreams();
  ~StandardStreams();
  StandardStreams(const StandardStreams&) = delete;
  StandardStreams& operator=(const StandardStreams&) = delete;

  // Standard output for a file's content, byte for byte unless a console shows it.
  std::ostream& content() { return content_; }

  // Writes what waits. Why standard output did not take everything; nothing when it did.
  std::optional<std::string> finish();

 private:
  // One of the system's streams; the handle is the process's.
  class Output {
   public:
    explicit Output(unsigned long which);
    bool is_console() const { return is_console_; }
    bool write(std::string_view bytes);  // false with `errno`

   private:
    void* handle_ = nullptr;  // null: nobody listens
    bool is_console_ = false;
    std::string begun_;  // of a character that is not whole yet
  };
  class Input : public std::streambuf {
   public:
    Input();

   protected:
    int_type underflow() override;

   private:
    void* handle_ = nullptr;
    char bytes_[4096];
  };
  bool write_out(std::string_view bytes);

  int error_ = 0;
  bool console_;  // the one that the program was started from is ours as well
  Output system_out_, system_err_;
  Input in_;
  TerminalBuffer out_, err_;
  ExactBuffer exact_;
  std::ostream content_;
  std::streambuf* const old_out_;
  std::streambuf* const old_err_;
  std::streambuf* const old_in_;
};

}  // namespace orvello
