#include "store/restriction.h"

#include <gtest/gtest.h>

namespace orvello {
namespace {

TEST(Restriction, ReadsTheTextsTheViewsSend) {
  DayBounds bounds;
  bounds.end_from = Day(39448);
  bounds.start_to = Day(39448);
  EXPECT_EQ(parse_restriction(u"[End] >= <39448 AND [Start] <= <39448"), bounds);
  bounds.start_to = Day(39447);
  EXPECT_EQ(parse_restriction(u"[End] >= <39448 AND [Start] <  <39448"), bounds);
  bounds.end_from = Day(39449);
  EXPECT_EQ(parse_restriction(u"[End] >  <39448 AND [Start] <  <39448"), bounds);
}

TEST(Restriction, SpacingCaseAndOrderDoNotMatter) {
  const auto usual = parse_restriction(u"[End] >= <39448 AND [Start] <= <39450");
  for (const Text& text : {Text(u"[START]<=39450 and [end]>=39448"),
                           Text(u"  [Start]  <=  < 39450.75 AND\t[End]>=<39448 "),
                           Text(u"[Start] <= <39460 AND [End] >= <39448 AND [Start] < <39451")})
    EXPECT_EQ(parse_restriction(text), usual) << to_utf8(text);
  EXPECT_EQ(parse_restriction(u"[Start] = <-5")->start_from, Day(-5));
}

TEST(Restriction, RefusesWhatItCannotRead) {
  for (const Text& text :
       {Text(u"[Start]"), Text(u"[Start] <="), Text(u"[Start] <= <x"), Text(u"[Due] <= <1"),
        Text(u"[Start] <= <1 OR [End] >= <1"), Text(u"[Start] <= <1 AND"), Text(u"[Start] <= <1 2"),
        Text(u"[Start] <= <1.2.3"), Text(u"[Start] <= <-"), Text(u"[Стart] <= <1")})
    EXPECT_FALSE(parse_restriction(text)) << to_utf8(text);
  EXPECT_EQ(parse_restriction(u" "), DayBounds());
  // Far beyond any date, and still in order.
  const auto far = parse_restriction(u"[Start] >  <99999999999999999999");
  ASSERT_TRUE(far);
  EXPECT_GT(far->start_from, Day(949998));
}

}  // namespace
}  // namespace orvello
