#include <gtest/gtest.h>

#include "resources/strings.h"

namespace orvello {
namespace {

TEST(Strings, EachCountHasItsFormInEveryFamilyOfLanguages) {
  // For 0, 1, 2, 4, 5, 11, 12, 21, 22, 100, 101, 103, 111, 112.
  const std::pair<Plurals, const char*> families[] = {
      {Plurals::one_form, "00000000000000"},  {Plurals::one_or_many, "10111111111111"},
      {Plurals::up_to_one, "00111111111111"}, {Plurals::east_slavic, "20112220120122"},
      {Plurals::polish, "20112222122122"},    {Plurals::czech, "20112222222222"},
      {Plurals::arabic, "01233444455344"}};
  for (const auto& [family, forms] : families) {
    std::string found;
    for (const int count : {0, 1, 2, 4, 5, 11, 12, 21, 22, 100, 101, 103, 111, 112}) {
      const int form = plural_form(family, count);
      EXPECT_TRUE(form >= 0 && form < plural_forms(family)) << count;
      found += static_cast<char>('0' + form);
    }
    EXPECT_EQ(found, forms) << static_cast<int>(family);
  }
  EXPECT_EQ(load_count(StringId::day_appointments, 22, Language::russian), u"22 встречи");
}

TEST(Strings, ALanguageIsFoundByItsCodeOrByALessSpecialOne) {
  for (const TextView code : {u"ru", u"RU", u"ru_RU", u"ru-Cyrl-RU"})
    EXPECT_EQ(find_language(code), Language::russian) << to_utf8(code);
  for (const TextView code : {u"", u"r", u"rus", u"-", u"-ru", u"tlh"})
    EXPECT_FALSE(find_language(code)) << to_utf8(code);
  for (const LanguageInfo& info : all_languages()) {
    EXPECT_EQ(find_language(info.code), info.language);
    EXPECT_FALSE(info.own_name.empty());
  }
}

}  // namespace
}  // namespace orvello
