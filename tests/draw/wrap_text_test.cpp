#include "draw/wrap_text.h"

#include <gtest/gtest.h>

#include "draw/text_direction.h"
#include "hosts/headless/recording_canvas.h"

namespace orvello {
namespace {

struct WrapTest : testing::Test {
  int width(TextView text) { return canvas.measure(text, font).width; }
  RecordingCanvas canvas{{1, 1}};
  FontSpec font{16, 400, false};
};

TEST_F(WrapTest, TheMostThatFitsIsTakenAtEveryWidth) {
  const Text text = u"iiiiiiiiiiWWWWWWWWWW i.i.i.i. mixed Words";
  for (int room = 1; room <= width(text) + 2; ++room) {
    const std::size_t units = fitting_units(canvas, text, font, room);
    ASSERT_GE(units, 1u);
    if (units > 1) {
      EXPECT_LE(width(TextView(text).substr(0, units)), room);
    }
    if (units < text.size()) {
      EXPECT_GT(width(TextView(text).substr(0, units + 1)), room);
    }
  }
  EXPECT_EQ(fitting_units(canvas, u"", font, 10), 0u);
}

TEST_F(WrapTest, PairsStayTogether) {
  const Text text = u"\U0001F382\U0001F382\U0001F382";
  for (int room = 1; room <= width(text); ++room)
    EXPECT_EQ(fitting_units(canvas, text, font, room) % 2, 0u) << room;
}

TEST_F(WrapTest, LinesBreakAtBlanksAndLineEnds) {
  const int room = width(u"a few words");
  EXPECT_EQ(word_wrapped(canvas, u"a few words more\r\nand\n\nthen", font, room),
            (std::vector<Text>{u"a few words", u"more", u"and", u"", u"then"}));
  for (const Text& line : word_wrapped(canvas, u"one-word-without-any-blank at all", font, room))
    EXPECT_LE(width(line), room);
}

// "What fits|the line": a word is broken behind a hyphen or the like, and else only when it is
// wider than a line.
TEST_F(WrapTest, WordsBreakWhereAPersonWouldBreakThem) {
  const struct {
    TextView text, line, expected;
  } cases[] = {{u"with Anna-Maria", u"with Anna-Ma", u"with Anna-"},
               {u"Anna/bird", u"Anna/b", u"Anna/"},
               {u"read e-mail", u"read e-ma", u"read"},
               {u"at 10:00-11:00 sharp", u"at 10:00-11", u"at"},
               {u"go Donaudampfschiff", u"go Donau", u"go"},
               {u"Donaudampfschiff", u"Donau", u"Donau"},
               {u"\u4F1A\u8BAE \u4F1A\u8BAE\u5BA4", u"\u4F1A\u8BAE \u4F1A\u8BAE",
                u"\u4F1A\u8BAE \u4F1A\u8BAE"},
               {u" leading", u" lea", u" lea"}};
  for (const auto& c : cases)
    EXPECT_EQ(to_utf8(c.text.substr(0, line_units(c.text, c.line.size()))), to_utf8(c.expected));
}

// A line reads as its paragraph does, whatever letter it begins with.
TEST_F(WrapTest, ALineThatBeginsInAnotherDirectionIsMarked) {
  const Text hebrew = u"טיסה London ועוד 9:30", english = u"see חיפה now";
  EXPECT_EQ(word_wrapped(canvas, hebrew, font, width(u"London")),
            (std::vector<Text>{u"טיסה", u"\u200FLondon", u"ועוד", u"\u200F9:30"}));
  EXPECT_EQ(word_wrapped(canvas, english, font, width(u"חיפה")),
            (std::vector<Text>{u"see", u"\u200Eחיפה", u"now"}));
  EXPECT_EQ(line_of(u"9:30 - 10:00", u"10:00"), u"10:00");
}

TEST_F(WrapTest, WhatSurelyFitsFits) {
  CharacterWidths characters(canvas, font);
  for (const TextView text : {u"short", u"WWWWWWWWWWWW", u"a somewhat longer line of text"}) {
    for (int room = 1; room < width(text); ++room) EXPECT_FALSE(characters.surely_fits(text, room));
    EXPECT_TRUE(characters.surely_fits(text, width(text) + 40));
  }
  EXPECT_FALSE(characters.surely_fits(u"\U0001F382", 1000));
}

}  // namespace
}  // namespace orvello
