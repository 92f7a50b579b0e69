#include "base/text.h"

#include <gtest/gtest.h>

namespace orvello {
namespace {

TEST(Text, Utf8ComesBackUnchanged) {
  const std::string text = "a\u00E9\u0416\u20AC\U0001F600z";
  EXPECT_EQ(to_utf8(to_utf16(text)), text);
  EXPECT_EQ(to_utf16("\U0001F600").size(), 2u);
}

TEST(Text, IllFormedInputBecomesReplacementsAndNothingElseIsLost) {
  EXPECT_EQ(to_utf16("a\xFFz"), u"a\uFFFDz");
  EXPECT_EQ(to_utf16("\xC0\x80x"), u"\uFFFD\uFFFDx");      // an overlong form
  EXPECT_EQ(to_utf16("\xE2\x82"), u"\uFFFD\uFFFD");        // cut off
  EXPECT_EQ(to_utf16("\xE2(x"), u"\uFFFD(x");              // a lead without its rest
  EXPECT_EQ(to_utf16("\xED\xA0\x80").front(), u'\uFFFD');  // half a surrogate pair
  EXPECT_EQ(to_utf16("\xF4\x90\x80\x80").front(), u'\uFFFD');
  const Text lone{u'a', 0xD800, u'b'};
  EXPECT_EQ(to_utf8(lone),
            "a\uFFFD"
            "b");
}

TEST(Text, FormatKnowsThePicturesInUse) {
  EXPECT_EQ(format(u"%d:%.2d", 9, 5), u"9:05");
  EXPECT_EQ(format(u"%.2d%.3d", 8, 32), u"08032");
  EXPECT_EQ(format(u"[End] >= <%.0f AND", 39448.0), u"[End] >= <39448 AND");
  EXPECT_EQ(format(u"%s-%s", Text(u"\u0430"), u"b"), u"\u0430-b");
  EXPECT_EQ(format(u"longType = %ld\n", std::int64_t{-3}), u"longType = -3\n");
  EXPECT_EQ(format(u"100%%"), u"100%");
  EXPECT_EQ(format(u"%f", 1.5), u"1.500000");
}

TEST(Text, FormatSurvivesWhatDoesNotFit) {
  EXPECT_EQ(format(u"%d %d", 1), u"1 ");
  EXPECT_EQ(format(u"%s|", 7), u"|");
  EXPECT_EQ(format(u"%"), u"");
  EXPECT_EQ(format(u"%.99999d", 1).size(), 32u);
}

TEST(Text, LeadingNumberReadsWhatDigitsThereAre) {
  EXPECT_EQ(leading_number(u" 12 days"), 12);
  EXPECT_EQ(leading_number(u"-7"), -7);
  EXPECT_EQ(leading_number(u"days"), 0);
  EXPECT_GT(leading_number(u"99999999999999999999999"), INT64_C(1) << 50);
}

TEST(Text, CutNeverHalvesAPair) {
  const Text text = u"a\U0001F600b";
  EXPECT_EQ(cut(text, 2), u"a");
  EXPECT_EQ(cut(text, 3), u"a\U0001F600");
  EXPECT_EQ(cut(text, 9), text);
}

TEST(Text, SplitKeepsEmptyPieces) {
  EXPECT_EQ(split(u"a,,b,", u','), (std::vector<Text>{u"a", u"", u"b", u""}));
  EXPECT_EQ(split(u"", u','), std::vector<Text>{u""});
}

}  // namespace
}  // namespace orvello
