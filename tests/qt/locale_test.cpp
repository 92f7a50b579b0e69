#include <gtest/gtest.h>

#include "hosts/qt/qt_locale.h"
#include "resources/strings.h"

namespace orvello {
namespace {

// Texts are in the locale's language if there are any, else in English.
TEST(Locale, RussianTextsForRussianAndForNoLocaleAtAll) {
  for (const char* name : {"ru_RU.UTF-8", "ru_UA", "ru", "C", "C.UTF-8", "POSIX", ""})
    EXPECT_EQ(language_of(QtLocale(name, name, {})), Language::russian) << name;
  for (const char* name : {"en_US.UTF-8", "en_GB", "tlh_XX.UTF-8"})
    EXPECT_EQ(language_of(QtLocale(name, name, {})), Language::english) << name;
  EXPECT_EQ(QtLocale("pt_BR.UTF-8@x", "C", {}).language(), u"pt_BR");
}

TEST(Locale, TheLanguageOptionDecidesAboutTextsAndNames) {
  const QtLocale russian("de_DE.UTF-8", "de_DE.UTF-8", "ru");
  EXPECT_EQ(russian.language(), u"ru");
  EXPECT_EQ(russian.data().genitive_month_names[10], u"ноября");
  const QtLocale english("ru_RU.UTF-8", "ru_RU.UTF-8", "en");
  EXPECT_EQ(english.language(), u"en");
  EXPECT_EQ(english.data().day_names[0], u"Monday");
  // The region of the wanted language still counts.
  EXPECT_EQ(QtLocale("en_GB.UTF-8", "en_GB.UTF-8", "en").data().short_date_order, u"1");
  // Of a language without a table of its own the toolkit knows the names.
  EXPECT_EQ(QtLocale("ru_RU.UTF-8", "ru_RU.UTF-8", "de").data().day_names[0], u"Montag");
  EXPECT_EQ(QtLocale("fa_IR.UTF-8", "fa_IR.UTF-8", {}).data().zero_digit, u'\u06F0');
  EXPECT_EQ(QtLocale("de_DE.UTF-8", "de_DE.UTF-8", {}).data().zero_digit, u'0');
}

// Each language has its own place for a letter; the order follows its own variable.
TEST(Locale, TextsAreInTheOrderOfTheLocale) {
  const auto before = [](const char* order, TextView a, TextView b) {
    const QtLocale locale("en_US.UTF-8", "en_US.UTF-8", {}, order);
    EXPECT_EQ(locale.compare(b, a), -locale.compare(a, b));
    return locale.compare(a, b) < 0;
  };
  EXPECT_TRUE(before("de_DE.UTF-8", u"Österreich", u"Zürich"));
  EXPECT_FALSE(before("sv_SE.UTF-8", u"Österreich", u"Zürich"));
  EXPECT_TRUE(before("ru_RU.UTF-8", u"Ёлкин", u"Жуков"));
  EXPECT_TRUE(before("", u"alpha", u"Beta"));
  EXPECT_EQ(QtLocale("C", "C", {}).compare(u"a", u"a"), 0);
}

struct Convention {
  const char* name;
  TextView long_order, short_order, separator, time_separator;
  bool half_day_clock;
};

TEST(Locale, RegionsDecideAboutOrdersSeparatorsAndClocks) {
  const Convention cases[] = {{"en_US.UTF-8", u"0", u"0", u"/", u":", true},
                              {"en_GB.UTF-8", u"1", u"1", u"/", u":", false},
                              {"ru_RU.UTF-8", u"1", u"1", u".", u":", false},
                              {"de_DE@euro", u"1", u"1", u".", u":", false},
                              {"hu_HU.UTF-8", u"2", u"2", u".", u":", false},
                              {"sv_SE.UTF-8", u"1", u"2", u"-", u":", false},
                              {"fi_FI.UTF-8", u"1", u"1", u".", u".", false}};
  for (const Convention& c : cases) {
    const LocaleData data = QtLocale(c.name, c.name, {}).data();
    EXPECT_EQ(data.long_date_order, c.long_order) << c.name;
    EXPECT_EQ(data.short_date_order, c.short_order) << c.name;
    EXPECT_EQ(data.date_separator, c.separator) << c.name;
    EXPECT_EQ(data.time_separator, c.time_separator) << c.name;
    EXPECT_EQ(data.time_format == u"0", c.half_day_clock) << c.name;
  }
}

struct Way {
  const char *messages, *dates;
  bool monday_first, right_to_left;
};

// The screen runs as its texts do, the week begins as in the country of the dates.
TEST(Locale, WeeksBeginAndScreensRunAsTheirLocaleHasIt) {
  const Way cases[] = {{"en_US", "en_US", false, false}, {"en_GB", "en_GB", true, false},
                       {"ru_RU", "ru_RU", true, false},  {"C", "C", true, false},
                       {"he_IL", "he_IL", false, true},  {"ar_EG", "ar_EG", false, true},
                       {"fa_IR", "fa_IR", false, true},  {"ur_PK", "ur_PK", false, true},
                       {"en_US", "he_IL", false, false}, {"he_IL", "de_DE", true, true},
                       {"C", "ar_MA", true, true}};
  for (const Way& c : cases) {
    const LocaleData data = QtLocale(c.messages, c.dates, {}).data();
    EXPECT_EQ(data.monday_first, c.monday_first) << c.messages << " " << c.dates;
    EXPECT_EQ(data.right_to_left, c.right_to_left) << c.messages << " " << c.dates;
    EXPECT_FALSE(QtLocale(c.messages, c.dates, "en").data().right_to_left);
  }
}

TEST(Locale, DatesAreInTheirOwnLanguageAndElseInThatOfTheTexts) {
  EXPECT_EQ(QtLocale("en_US.UTF-8", "de_DE.UTF-8", {}).data().day_names[2], u"Mittwoch");
  EXPECT_EQ(QtLocale("en_US.UTF-8", "C", {}).data().day_names[2], u"Wednesday");
  const LocaleData polish = QtLocale("pl_PL.UTF-8", "pl_PL.UTF-8", {}).data();
  EXPECT_EQ(polish.month_names[0], u"styczeń");
  EXPECT_EQ(polish.genitive_month_names[0], u"stycznia");
}

}  // namespace
}  // namespace orvello
