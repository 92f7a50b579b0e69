// What every locale must do.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>

#include "ports/locale.h"

namespace orvello {

using LocaleCase = std::pair<const char*, std::function<std::unique_ptr<Locale>()>>;
inline void PrintTo(const LocaleCase& one, std::ostream* out) { *out << one.first; }

class LocaleContract : public ::testing::TestWithParam<LocaleCase> {};

TEST_P(LocaleContract, NamesEveryDayAndMonthOnceAndKnowsItsConventions) {
  const auto locale = GetParam().second();
  const LocaleData data = locale->data();
  const auto check = [](const auto& names) {
    for (auto name = names.begin(); name != names.end(); ++name) {
      EXPECT_FALSE(name->empty());
      EXPECT_EQ(std::find(names.begin(), name, *name), name) << to_utf8(*name);
    }
  };
  check(data.day_names);
  check(data.short_day_names);
  check(data.month_names);
  check(data.genitive_month_names);
  check(data.short_month_names);
  for (const Text& order : {data.long_date_order, data.short_date_order})
    EXPECT_TRUE(order == u"0" || order == u"1" || order == u"2") << to_utf8(order);
  EXPECT_FALSE(data.time_format.empty() || data.date_separator.empty() ||
               data.time_separator.empty());
  // The answer stays.
  EXPECT_EQ(locale->data().day_names, data.day_names);
  EXPECT_EQ(locale->language(), locale->language());
}

// As in a phone book: letters before their case, and whatever the letters, an order.
TEST_P(LocaleContract, SortsAsAPhoneBookDoes) {
  const auto locale = GetParam().second();
  const Text rising[] = {u"", u"Aaron", u"adam", u"Beta", u"beth"};
  for (const Text& a : rising)
    for (const Text& b : rising) {
      EXPECT_EQ(locale->compare(a, b) < 0, &a < &b) << to_utf8(a + u"|" + b);
      EXPECT_EQ(locale->compare(a, b) > 0, &a > &b) << to_utf8(a + u"|" + b);
    }
}

}  // namespace orvello
