// What the words on a command line mean, and which of them are refused with what hint.
#include "cli/command_line.h"

#include <gtest/gtest.h>

namespace orvello {
namespace {

using Command = CommandLine::Command;

std::string fault(const std::vector<std::string>& words) {
  const auto line = parse_command_line(words);
  return line ? "accepted" : line.reason();
}

TEST(CommandLine, NothingOpensTheWindow) {
  const auto line = parse_command_line({});
  ASSERT_TRUE(line);
  EXPECT_EQ(line->command, Command::window);
  EXPECT_TRUE(line->files.empty());
  EXPECT_EQ(line->view, -1);
  EXPECT_FALSE(line->now || line->date || line->screen);
  EXPECT_EQ(line->measure, CommandLine::Measure::nothing);
}

TEST(CommandLine, OptionsStandAnywhereAndTakeAnEqualsSign) {
  const auto line = parse_command_line({"--view=year", "a.ics", "--screen", "480x640", "--dpi=192",
                                        "--now", "2026-11-06T21:10", "b.ics", "--date=2024-02-29",
                                        "--language", "ru", "--data=/tmp/x=y"});
  ASSERT_TRUE(line) << line.reason();
  EXPECT_EQ(line->command, Command::window);
  EXPECT_EQ(line->files, (std::vector<std::string>{"a.ics", "b.ics"}));
  EXPECT_EQ(line->view, 2);
  EXPECT_EQ(line->screen, (Size{480, 640}));
  EXPECT_EQ(line->dpi, 192);
  EXPECT_EQ(line->date, (MonthDayYear{2, 29, 2024}));
  EXPECT_EQ(line->language, "ru");
  EXPECT_EQ(line->data_folder, "/tmp/x=y");
  ASSERT_TRUE(line->now);
  EXPECT_EQ(line->now->hour, 21);
  EXPECT_EQ(line->now->minute, 10);
  EXPECT_EQ(line->now->day_of_week, 5);
  const auto turn = parse_command_line({"--measure", "turn"});
  ASSERT_TRUE(turn) << turn.reason();
  EXPECT_EQ(turn->measure, CommandLine::Measure::turn);
}

// A file may be called like a command, or like an option.
TEST(CommandLine, ACommandIsOnlyTheFirstPlainWord) {
  auto line = parse_command_line({"calendar.ics", "import"});
  ASSERT_TRUE(line);
  EXPECT_EQ(line->command, Command::window);
  EXPECT_EQ(line->files, (std::vector<std::string>{"calendar.ics", "import"}));
  line = parse_command_line({"--", "agenda", "--json"});
  ASSERT_TRUE(line);
  EXPECT_EQ(line->command, Command::window);
  EXPECT_EQ(line->files, (std::vector<std::string>{"agenda", "--json"}));
  line = parse_command_line({"search", "agenda", "--json", "--", "--new"});
  ASSERT_TRUE(line);
  EXPECT_EQ(line->command, Command::search);
  EXPECT_TRUE(line->json);
  EXPECT_EQ(line->search_text, "agenda --new");
  line = parse_command_line({"import", "--", "-odd.ics"});
  ASSERT_TRUE(line);
  EXPECT_EQ(line->command, Command::import_files);
  EXPECT_EQ(line->files, std::vector<std::string>{"-odd.ics"});
  line = parse_command_line({"export", "-"});
  ASSERT_TRUE(line) << "a lone dash is standard output";
  EXPECT_EQ(line->files, std::vector<std::string>{"-"});
}

TEST(CommandLine, CommandsTakeTheirWords) {
  auto line = parse_command_line({"agenda", "2026-11-01", "2026-11-30", "--json"});
  ASSERT_TRUE(line);
  EXPECT_EQ(line->from, (MonthDayYear{11, 1, 2026}));
  EXPECT_EQ(line->to, (MonthDayYear{11, 30, 2026}));
  EXPECT_TRUE(line->json);
  line = parse_command_line({"agenda", "2026-11-01"});
  ASSERT_TRUE(line);
  EXPECT_EQ(line->to, line->from) << "one word is one day";
  line = parse_command_line({"export", "all.ics", "--from", "2026-01-01"});
  ASSERT_TRUE(line);
  EXPECT_FALSE(line->to) << "an export may be open at one end";
  line = parse_command_line({"render", "day", "day"});
  ASSERT_TRUE(line);
  EXPECT_EQ(line->view, 0);
  EXPECT_EQ(line->files, std::vector<std::string>{"day"});
}

TEST(CommandLine, HelpAndVersionWinOverMissingWords) {
  EXPECT_EQ(parse_command_line({"import", "--help"})->command, Command::help);
  EXPECT_EQ(parse_command_line({"-h", "render"})->command, Command::help);
  EXPECT_EQ(parse_command_line({"--version"})->command, Command::version);
}

TEST(CommandLine, WrongWordsAreNamed) {
  const struct {
    std::vector<std::string> words;
    const char* part_of_reason;
  } cases[] = {
      {{"--colour"}, "--colour"},
      {{"-x"}, "-x"},
      {{"--data"}, "--data needs a value"},
      {{"--data="}, "--data needs a folder"},
      {{"--now", "2026-11-06"}, "--now needs a moment"},
      {{"--now", "2026-11-06T24:00"}, "--now needs a moment"},
      {{"--now", "2026-11-06T21:60"}, "--now needs a moment"},
      {{"--date", "2026-02-29"}, "--date needs a date"},
      {{"--date", "2026-1-1"}, "--date needs a date"},
      {{"--view", "week"}, "--view is"},
      {{"--screen", "480"}, "--screen needs a size"},
      {{"--screen", "480x640x2"}, "--screen needs a size"},
      {{"--screen", "10x640"}, "--screen needs a size"},
      {{"--screen", "480x99999"}, "--screen needs a size"},
      {{"--dpi", "12"}, "--dpi needs a number"},
      {{"--dpi", "96x"}, "--dpi needs a number"},
      {{"--language", "fr"}, "--language"},
      {{"--measure", "stop"}, "--measure"},
      {{"import"}, "import needs a file"},
      {{"export"}, "export needs"},
      {{"export", "a", "b"}, "export needs"},
      {{"export", "a", "--from", "2026-02-02", "--to", "2026-02-01"}, "before the first"},
      {{"agenda", "tomorrow"}, "agenda needs dates"},
      {{"agenda", "2026-02-02", "2026-02-01"}, "before the first"},
      {{"agenda", "2026-02-01", "2026-02-02", "2026-02-03"}, "two dates at most"},
      {{"render", "week", "x.png"}, "not week"},
      {{"render", "month"}, "render needs"},
      {{"render", "month", "a.png", "b.png"}, "render needs"},
      {{"search"}, "search needs"},
      {{"search", " ", "\"\""}, "search needs"},
      {{"--json"}, "--json belongs to agenda"},
      {{"import", "a.ics", "--json"}, "--json belongs to agenda"},
  };
  for (const auto& one : cases) {
    std::string shown;
    for (const std::string& word : one.words) shown += word + " ";
    EXPECT_NE(fault(one.words).find(one.part_of_reason), std::string::npos)
        << shown << ": " << fault(one.words);
  }
}

// Whoever adds a command or an option tells about it.
TEST(CommandLine, TheHelpNamesEveryWord) {
  const std::string help = usage_text();
  for (const char* word : {"import", "export", "agenda", "search", "render", "--data", "--view",
                           "--date", "--now", "--screen", "--dpi", "--language", "--measure",
                           "--from", "--to", "--json", "--help", "--version"})
    EXPECT_NE(help.find(word), std::string::npos) << word;
}

}  // namespace
}  // namespace orvello
