#include "calendar/locale_data.h"

namespace orvello {

Text local_digits(TextView text, const LocaleData& locale) {
  Text shown(text);
  for (char16_t& c : shown)
    if (c >= u'0' && c <= u'9') c = static_cast<char16_t>(locale.zero_digit + (c - u'0'));
  return shown;
}

LocaleData english_locale() {
  LocaleData locale;
  locale.name = u"en-US";
  locale.day_names = {u"Monday", u"Tuesday",  u"Wednesday", u"Thursday",
                      u"Friday", u"Saturday", u"Sunday"};
  locale.short_day_names = {u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat", u"Sun"};
  locale.month_names = {u"January",   u"February", u"March",    u"April",
                        u"May",       u"June",     u"July",     u"August",
                        u"September", u"October",  u"November", u"December"};
  locale.genitive_month_names = locale.month_names;
  locale.short_month_names = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                              u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
  locale.genitive_short_month_names = locale.short_month_names;
  return locale;
}

LocaleData russian_locale() {
  LocaleData locale;
  locale.name = u"ru-RU";
  locale.day_names = {u"понедельник", u"вторник", u"среда",      u"четверг",
                      u"пятница",     u"суббота", u"воскресенье"};
  locale.short_day_names = {u"Пн", u"Вт", u"Ср", u"Чт", u"Пт", u"Сб", u"Вс"};
  locale.month_names = {u"Январь", u"Февраль", u"Март",     u"Апрель",  u"Май",    u"Июнь",
                        u"Июль",   u"Август",  u"Сентябрь", u"Октябрь", u"Ноябрь", u"Декабрь"};
  locale.genitive_month_names = {u"января",   u"февраля", u"марта",  u"апреля",
                                 u"мая",      u"июня",    u"июля",   u"августа",
                                 u"сентября", u"октября", u"ноября", u"декабря"};
  locale.short_month_names = {u"янв", u"фев", u"мар", u"апр", u"май", u"июн",
                              u"июл", u"авг", u"сен", u"окт", u"ноя", u"дек"};
  locale.genitive_short_month_names = locale.short_month_names;
  locale.genitive_short_month_names[4] = u"мая";
  locale.long_date_order = u"1";
  locale.short_date_order = u"1";
  locale.time_format = u"1";
  locale.date_separator = u".";
  locale.monday_first = true;
  // The designators are given although the clock has 24 hours: a 12-hour list without them would
  // hold every text twice.
  return locale;
}

}  // namespace orvello
