// Makes lines of any encoding valid UTF-8, each by what it says of itself and what it looks like.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvello {

// Whether lines need it: bytes that are not UTF-8, NUL bytes, or the escapes of a seven-bit
// charset.
bool needs_repair(std::string_view lines);

// Appends what stands in no declared encoding and is not UTF-8: what to guess one from.
void collect_foreign(std::string_view lines, std::string& sample);

// Lines are counted from 0.
struct LineRepair {
  std::string text;
  bool had_nul = false;
  int first_foreign = -1;    // line that was read by the guess
  std::vector<int> damaged;  // UTF-8 lines with bytes that are none, now U+FFFD
};

// Line breaks and folds stay where they are, but for a character that a fold had cut in two. A
// CHARSET parameter is left out where its charset was decoded.
LineRepair repair_lines(std::string_view lines, std::string_view guessed_charset);

}  // namespace orvello
