#include "hosts/win32/win32_locale.h"

#include <windows.h>

#include <algorithm>
#include <vector>

#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

const wchar_t* name_for_system(const Text& locale) {
  return locale.empty() ? LOCALE_NAME_USER_DEFAULT : wide(locale);
}

Text locale_text(const Text& locale, LCTYPE what) {
  const int size = GetLocaleInfoEx(name_for_system(locale), what, nullptr, 0);
  if (size <= 0) return {};
  std::vector<wchar_t> text(static_cast<std::size_t>(size));
  if (GetLocaleInfoEx(name_for_system(locale), what, text.data(), size) == 0) return {};
  return from_wide(text.data());
}

std::int64_t locale_number(const Text& locale, LCTYPE what) {
  return leading_number(locale_text(locale, what));
}

Text language_part(const Text& locale) { return locale.substr(0, locale.find_first_of(u"-_")); }

// The language that the system speaks to the person, "ru-RU".
Text language_of_system() {
  wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
  const LCID language = MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT);
  return LCIDToLocaleName(language, name, LOCALE_NAME_MAX_LENGTH, 0) > 0 ? from_wide(name) : Text();
}

// Which of day, month and year comes first in a picture, as the platform numbers the orders. A
// weekday ("dddd") is not the day of the month, and what stands between quotes is no part.
Text order_of_picture(const Text& picture) {
  Text parts;
  bool quoted = false;
  for (std::size_t i = 0; i < picture.size();) {
    const std::size_t end = std::min(picture.find_first_not_of(picture[i], i), picture.size());
    if (picture[i] == u'\'') quoted ^= (end - i) % 2 == 1;
    if (!quoted && (picture[i] != u'd' || end - i < 3)) parts += picture[i];
    i = end;
  }
  const std::size_t day = parts.find(u'd'), month = parts.find(u'M'), year = parts.find(u'y');
  if (year < day && year < month) return Text(u"2");
  return Text(day < month ? u"1" : u"0");
}

void set_conventions(LocaleData& data, const Text& locale) {
  data.name = locale_text(locale, LOCALE_SNAME);
  data.long_date_order = order_of_picture(locale_text(locale, LOCALE_SLONGDATE));
  data.short_date_order = order_of_picture(locale_text(locale, LOCALE_SSHORTDATE));
  data.time_format =
      Text(locale_text(locale, LOCALE_STIMEFORMAT).find(u'H') == Text::npos ? u"0" : u"1");
  if (const Text mark = locale_text(locale, LOCALE_SDATE); !mark.empty())
    data.date_separator = Text(trimmed(mark));
  if (const Text mark = locale_text(locale, LOCALE_STIME); !mark.empty())
    data.time_separator = mark;
  data.monday_first = locale_number(locale, LOCALE_IFIRSTDAYOFWEEK) == 0;
  constexpr int kNativeDigits = 2;
  const Text digits = locale_text(locale, LOCALE_SNATIVEDIGITS);
  if (locale_number(locale, LOCALE_IDIGITSUBSTITUTION) == kNativeDigits && digits.size() == 10)
    data.zero_digit = digits.front();
}

LocaleData from_system(const Text& locale) {
  LocaleData data;
  // The names of days, and of months, are numbered one behind another.
  for (LCTYPE day = 0; day < 7; ++day) {
    data.day_names[day] = locale_text(locale, LOCALE_SDAYNAME1 + day);
    data.short_day_names[day] = locale_text(locale, LOCALE_SABBREVDAYNAME1 + day);
    data.narrow_day_names[day] = locale_text(locale, LOCALE_SSHORTESTDAYNAME1 + day);
  }
  for (LCTYPE month = 0; month < 12; ++month) {
    const LCTYPE name = LOCALE_SMONTHNAME1 + month, brief = LOCALE_SABBREVMONTHNAME1 + month;
    data.month_names[month] = locale_text(locale, name);
    data.genitive_month_names[month] = locale_text(locale, name | LOCALE_RETURN_GENITIVE_NAMES);
    if (data.genitive_month_names[month].empty())
      data.genitive_month_names[month] = data.month_names[month];
    data.short_month_names[month] = locale_text(locale, brief);
    data.genitive_short_month_names[month] =
        locale_text(locale, brief | LOCALE_RETURN_GENITIVE_NAMES);
  }
  data.morning = locale_text(locale, LOCALE_S1159);
  data.afternoon = locale_text(locale, LOCALE_S2359);
  return data;
}

// Russian and English names come from our own tables, which are written as this program shows them
// (months with a capital, two-letter days); their regions decide about orders and clocks.
LocaleData data_of_locale(const Text& locale) {
  const Text language = language_part(locale_text(locale, LOCALE_SNAME));
  LocaleData data = language == u"ru"   ? russian_locale()
                    : language == u"en" ? english_locale()
                                        : from_system(locale);
  if (!language.empty()) set_conventions(data, locale);
  return data;
}

}  // namespace

Win32Locale::Win32Locale(const std::string& formats, const std::string& texts,
                         const std::string& language)
    : order_(to_utf16(formats)) {
  const Text wanted = to_utf16(language);
  language_ = !wanted.empty() ? wanted : !texts.empty() ? to_utf16(texts) : language_of_system();
  const Text dates = locale_text(order_, LOCALE_SNAME);
  if (wanted.empty() || language_part(wanted) == language_part(dates))
    data_ = data_of_locale(order_);
  else
    data_ = language_part(wanted) == u"ru"   ? russian_locale()
            : language_part(wanted) == u"en" ? english_locale()
                                             : data_of_locale(wanted);
  constexpr int kRightToLeft = 1;
  data_.right_to_left = locale_number(language_, LOCALE_IREADINGLAYOUT) == kRightToLeft;
}

int Win32Locale::compare(TextView a, TextView b) const {
  const auto text = [](TextView view) { return reinterpret_cast<const wchar_t*>(view.data()); };
  const int order = CompareStringEx(name_for_system(order_), 0, text(a), static_cast<int>(a.size()),
                                    text(b), static_cast<int>(b.size()), nullptr, nullptr, 0);
  return order == 0 ? a.compare(b) : order - CSTR_EQUAL;
}

}  // namespace orvello
