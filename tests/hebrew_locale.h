// A right-to-left locale for tests without a toolkit. Six of its days begin with the same word.
#pragma once

#include "calendar/locale_data.h"

namespace orvello {

inline LocaleData hebrew_locale() {
  LocaleData locale = english_locale();
  locale.name = u"he-IL";
  locale.day_names = {u"יום שני",  u"יום שלישי", u"יום רביעי", u"יום חמישי",
                      u"יום שישי", u"יום שבת",   u"יום ראשון"};
  locale.short_day_names = {u"יום ב׳", u"יום ג׳", u"יום ד׳", u"יום ה׳",
                            u"יום ו׳", u"שבת",    u"יום א׳"};
  locale.narrow_day_names = {u"ב׳", u"ג׳", u"ד׳", u"ה׳", u"ו׳", u"ש׳", u"א׳"};
  locale.long_date_order = locale.short_date_order = u"1";
  locale.time_format = u"1";
  locale.right_to_left = true;
  return locale;
}

}  // namespace orvello
