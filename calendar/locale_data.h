// What a locale says about dates and times: a plain value, so that any locale can be run anywhere.
#pragma once

#include <array>

#include "base/text.h"

namespace orvello {

struct LocaleData {
  Text name;                                  // "ru-RU"
  std::array<Text, 7> day_names;              // Monday first, in full
  std::array<Text, 7> short_day_names;        // Monday first, for "ddd"
  std::array<Text, 7> narrow_day_names;       // Monday first, the shortest: may be alike, or empty
  std::array<Text, 12> month_names;           // nominative
  std::array<Text, 12> genitive_month_names;  // after a day number, as in "21 ноября"; may equal
  std::array<Text, 12> short_month_names;
  std::array<Text, 12> genitive_short_month_names;  // an empty one: as short_month_names
  Text long_date_order = u"0";   // "0" month day year, "1" day month year, "2" year month day
  Text short_date_order = u"0";  // likewise, of the short date
  Text time_format = u"0";       // "0": 12-hour clock; anything else: 24-hour
  Text date_separator = u"/";
  Text time_separator = u":";
  Text morning = u"AM";  // may be empty
  Text afternoon = u"PM";
  bool monday_first = false;   // else weeks start on Sunday, or on a day that no setting knows
  bool right_to_left = false;  // screens are laid out mirrored
  char16_t zero_digit = u'0';  // the first of ten that follow each other
};

// What is shown of a number, or of a text with numbers in it: with the locale's own digits.
Text local_digits(TextView text, const LocaleData& locale);

// Built-in locales for tests, for hosts without a locale, and for --language.
LocaleData english_locale();  // United States: month first, 12-hour clock, Sunday names in English
LocaleData russian_locale();  // day first, 24-hour clock, "." as date separator, genitive months

}  // namespace orvello
