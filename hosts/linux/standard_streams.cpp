#include "hosts/linux/standard_streams.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <iostream>

#include "files/descriptor.h"
#include "files/file_reasons.h"

namespace orvello {
namespace {

bool is_terminal() { return ::isatty(STDOUT_FILENO) != 0; }

// A stream that was closed would give its number to the next file that is opened, which would then
// receive messages. What is put there instead takes no writing.
void occupy_standard_numbers() {
  int number = 0;
  do number = ::open("/dev/null", O_RDONLY);
  while (number >= 0 && number <= STDERR_FILENO);
  if (number >= 0) ::close(number);
}

}  // namespace

StandardStreams::StandardStreams()
    : out_([this](std::string_view bytes) { return write_out(bytes); }),
      err_([](std::string_view bytes) { return write_all(STDERR_FILENO, bytes); }),
      exact_([this](std::string_view bytes) { return write_out(bytes); }),
      content_(is_terminal() ? static_cast<std::streambuf*>(&out_) : &exact_),
      old_out_(std::cout.rdbuf(&out_)),
      old_err_(std::cerr.rdbuf(&err_)) {
  occupy_standard_numbers();
  ::signal(SIGPIPE, SIG_IGN);
  ::signal(SIGXFSZ, SIG_IGN);
}

StandardStreams::~StandardStreams() {
  finish();
  std::cout.rdbuf(old_out_);
  std::cerr.rdbuf(old_err_);
}

bool StandardStreams::write_out(std::string_view bytes) {
  if (error_ == 0 && !write_all(STDOUT_FILENO, bytes)) error_ = errno;
  return error_ == 0;
}

std::optional<std::string> StandardStreams::finish() {
  std::cout.flush();
  std::cerr.flush();
  if (error_ == 0) return std::nullopt;
  return cannot_be_written("standard output", error_);
}

}  // namespace orvello
