#include "base/terminal_text.h"

#include <gtest/gtest.h>

#include <ostream>

namespace orvello {
namespace {

TEST(TerminalText, ShowsWhatATerminalWouldObey) {
  const std::pair<std::string, std::string> cases[] = {
      {"Обед\tat noon\n\xF0\x9F\x8D\xB0", "Обед\tat noon\n\xF0\x9F\x8D\xB0"},
      {"a\x1B[2Jb\x07", "a\uFFFD[2Jb\uFFFD"},
      {"a\rb\r\nc", "a\uFFFDb\r\nc"},
      {"\x7F\xC2\x9B", "\uFFFD\uFFFD"},
      {"a\x9B", "a\uFFFD"},  // one byte of a terminal that takes eight bits
      {"\u202E\u2066\u2028x\u200F", "\uFFFD\uFFFD\uFFFDx\u200F"},
      {std::string("a\0b", 3),
       "a\uFFFD"
       "b"}};
  for (const auto& [given, shown] : cases) EXPECT_EQ(terminal_text(given), shown);
}

TEST(TerminalText, PassesThroughAStreamInWholeCharacters) {
  std::string seen;
  bool good = true;
  TerminalBuffer buffer([&](std::string_view bytes) { return seen += bytes, good; });
  std::ostream out(&buffer);
  for (const char byte : std::string("\u202EОк\x1B\r\n")) out << byte << std::flush;
  EXPECT_EQ(seen, "\uFFFDОк\uFFFD\r\n");
  good = false;
  EXPECT_FALSE(out << "x" << std::flush) << "what cannot be written is an error";
}

}  // namespace
}  // namespace orvello
