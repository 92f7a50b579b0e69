#include "hosts/win32/standard_streams.h"

#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <iostream>

#include "base/text.h"
#include "files/file_reasons.h"
#include "files/system_files.h"

namespace orvello {
namespace {

bool is_usable(HANDLE handle) { return handle && handle != INVALID_HANDLE_VALUE; }

// A program with windows has no console of its own. Where somebody has given it a file or a pipe,
// that is what it writes to.
bool join_console() {
  const bool given = is_usable(GetStdHandle(STD_OUTPUT_HANDLE)) &&
                     GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) != FILE_TYPE_UNKNOWN;
  return !given && AttachConsole(ATTACH_PARENT_PROCESS) != 0;
}

// How many bytes at the end of UTF-8 belong to a character that goes on.
std::size_t unfinished(std::string_view bytes) {
  for (std::size_t back = 1; back <= std::min<std::size_t>(3, bytes.size()); ++back) {
    const auto byte = static_cast<unsigned char>(bytes[bytes.size() - back]);
    if (byte < 0x80) return 0;
    if (byte < 0xC0) continue;
    const std::size_t length = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    return length > back ? back : 0;
  }
  return 0;
}

bool write_to_console(HANDLE console, std::string_view utf8) {
  const Text text = to_utf16(utf8);
  const auto* at = reinterpret_cast<const wchar_t*>(text.data());
  for (std::size_t left = text.size(); left > 0;) {
    DWORD done = 0;
    if (!WriteConsoleW(console, at, static_cast<DWORD>(std::min<std::size_t>(left, 8192)), &done,
                       nullptr) ||
        done == 0)
      return false;
    at += done, left -= done;
  }
  return true;
}

}  // namespace

StandardStreams::Output::Output(unsigned long which) {
  handle_ = GetStdHandle(which);
  DWORD mode = 0;
  if (!is_usable(handle_)) handle_ = nullptr;
  is_console_ = handle_ && GetConsoleMode(handle_, &mode);
}

bool StandardStreams::Output::write(std::string_view bytes) {
  if (!handle_) return true;
  if (is_console_) {
    begun_.append(bytes);
    const std::size_t whole = begun_.size() - unfinished(begun_);
    const bool written = write_to_console(handle_, std::string_view(begun_).substr(0, whole));
    begun_.erase(0, whole);
    if (!written) errno = EIO;
    return written;
  }
  while (!bytes.empty()) {
    DWORD done = 0;
    const auto piece = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1 << 20));
    if (!WriteFile(handle_, bytes.data(), piece, &done, nullptr)) {
      errno = errno_of_system(static_cast<int>(GetLastError()));
      return false;
    }
    bytes.remove_prefix(done);
  }
  return true;
}

StandardStreams::Input::Input() : handle_(GetStdHandle(STD_INPUT_HANDLE)) {}

StandardStreams::Input::int_type StandardStreams::Input::underflow() {
  DWORD count = 0;
  if (!is_usable(handle_) || !ReadFile(handle_, bytes_, sizeof bytes_, &count, nullptr) ||
      count == 0)
    return traits_type::eof();
  setg(bytes_, bytes_, bytes_ + count);
  return traits_type::to_int_type(*gptr());
}

StandardStreams::StandardStreams()
    : console_(join_console()),
      system_out_(STD_OUTPUT_HANDLE),
      system_err_(STD_ERROR_HANDLE),
      out_([this](std::string_view bytes) { return write_out(bytes); }),
      err_([this](std::string_view bytes) { return system_err_.write(bytes); }),
      exact_([this](std::string_view bytes) { return write_out(bytes); }),
      content_(system_out_.is_console() ? static_cast<std::streambuf*>(&out_) : &exact_),
      old_out_(std::cout.rdbuf(&out_)),
      old_err_(std::cerr.rdbuf(&err_)),
      old_in_(std::cin.rdbuf(&in_)) {}

StandardStreams::~StandardStreams() {
  finish();
  std::cout.rdbuf(old_out_);
  std::cerr.rdbuf(old_err_);
  std::cin.rdbuf(old_in_);
  if (console_) FreeConsole();
}

bool StandardStreams::write_out(std::string_view bytes) {
  if (error_ == 0 && !system_out_.write(bytes)) error_ = errno;
  return error_ == 0;
}

std::optional<std::string> StandardStreams::finish() {
  std::cout.flush();
  std::cerr.flush();
  if (error_ == 0) return std::nullopt;
  return cannot_be_written("standard output", error_);
}

}  // namespace orvello
