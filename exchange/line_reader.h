// Physical lines of a file of any size and encoding: read in pieces, UTF-16 turned into UTF-8,
// lines ended by LF, CR LF or a lone CR.
#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <string_view>

namespace orvello {

class LineReader {
 public:
  explicit LineReader(std::istream& in) : in_(in) {}

  // The next line without its ending, cut at `longest` bytes; valid until the next call.
  bool next(std::string_view& line, std::size_t longest);
  int number() const { return number_; }     // of the line read last, from 1
  bool was_cut() const { return was_cut_; }  // that line was longer than allowed
  bool failed() const { return in_.bad(); }
  std::uint64_t bytes_read() const { return bytes_read_; }  // of the file, as far as it was needed

 private:
  enum class Encoding { unknown, bytes, utf16_little, utf16_big };
  bool refill();
  void append_utf16(std::string_view bytes);
  std::size_t line_end();

  std::istream& in_;
  Encoding encoding_ = Encoding::unknown;
  std::string buffer_;
  std::string raw_;
  std::string odd_;     // bytes of an unfinished UTF-16 unit or pair
  std::size_t at_ = 0;  // first unread byte
  // The next of each mark at or behind `at_`.
  std::size_t lf_ = std::string::npos, cr_ = std::string::npos;
  bool ended_ = false;
  bool was_cut_ = false;
  int number_ = 0;
  std::uint64_t bytes_read_ = 0;
};

}  // namespace orvello
