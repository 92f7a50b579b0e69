#include "calendar/short_names.h"

#include <gtest/gtest.h>

#include "tests/hebrew_locale.h"

namespace orvello {
namespace {

TEST(ShortNames, CutNamesThatDifferAreTheOnlyChoiceOfDays) {
  for (const LocaleData& locale : {english_locale(), russian_locale()}) {
    const auto from_sunday = short_day_names(0, locale), from_monday = short_day_names(1, locale);
    ASSERT_EQ(from_monday.size(), 1u);
    for (std::size_t day = 0; day < 7; ++day) {
      EXPECT_EQ(from_monday[0][day], cut(locale.day_names[day], 3));
      EXPECT_EQ(from_sunday[0][(day + 1) % 7], from_monday[0][day]);
    }
    EXPECT_EQ(short_month_names(locale).front(), locale.short_month_names);
  }
}

// Six days of one word: abbreviations first, then less and less.
TEST(ShortNames, NamesThatWouldBeCutToTheSameAreAbbreviated) {
  LocaleData locale = hebrew_locale();
  EXPECT_EQ(short_day_names(1, locale),
            (std::vector<WeekNames>{locale.short_day_names,
                                    locale.narrow_day_names,
                                    {u"שני", u"שלי", u"רבי", u"חמי", u"שיש", u"שבת", u"ראש"}}));
  locale.short_day_names = locale.day_names = {u"Jumatatu", u"Jumanne",  u"Jumatano", u"Alhamisi",
                                               u"Ijumaa",   u"Jumamosi", u"Jumapili"};
  locale.narrow_day_names.fill(u"J");
  const auto swahili = short_day_names(1, locale);
  ASSERT_EQ(swahili.size(), 2u) << "letters that are alike are no choice";
  EXPECT_EQ(swahili[1], (WeekNames{u"Jtat", u"Jnne", u"Jtan", u"Alha", u"Ijum", u"Jmos", u"Jpil"}));
  locale.day_names.fill(u"day");
  locale.short_day_names.fill(u"");
  EXPECT_EQ(short_day_names(1, locale),
            (std::vector<WeekNames>{{u"1", u"2", u"3", u"4", u"5", u"6", u"7"}}));
}

}  // namespace
}  // namespace orvello
