// A stream whose bytes are written as they are, at once, and that knows when they were not.
#pragma once

#include <functional>
#include <streambuf>
#include <string_view>
#include <utility>

namespace orvello {

class ExactBuffer : public std::streambuf {
 public:
  using Write = std::function<bool(std::string_view)>;  // false: it could not be written
  explicit ExactBuffer(Write write) : write_(std::move(write)) {}

 protected:
  int_type overflow(int_type c) override {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    const char byte = traits_type::to_char_type(c);
    return xsputn(&byte, 1) == 1 ? c : traits_type::eof();
  }
  std::streamsize xsputn(const char* bytes, std::streamsize count) override {
    return write_({bytes, static_cast<std::size_t>(count)}) ? count : 0;
  }

 private:
  Write write_;
};

}  // namespace orvello
