#include "hosts/qt/qt_locale.h"

#include <QLocale>
#include <cstdlib>

#include "hosts/qt/qt_text.h"

namespace orvello {
namespace {

// The first of the variables with a value decides.
std::string environment_locale(const char* category) {
  for (const char* name : {"LC_ALL", category, "LANG"})
    if (const char* value = std::getenv(name); value && *value) return value;
  return {};
}

std::string language_of(const std::string& locale) {
  const std::string language = locale.substr(0, locale.find_first_of("_-.@"));
  return language == "POSIX" || language.empty() ? "C" : language;
}

// Which of day, month and year comes first, as the platform numbers the orders.
Text order_of(const QString& picture) {
  const auto place = [&](char16_t letter) {
    const qsizetype found = picture.indexOf(QChar(letter));
    return found < 0 ? picture.size() : found;
  };
  // A weekday ("dddd") is not the day of the month.
  QString plain = picture;
  plain.remove(QStringLiteral("dddd")).remove(QStringLiteral("ddd"));
  if (plain != picture) return order_of(plain);
  const qsizetype day = place(u'd'), month = place(u'M'), year = place(u'y');
  if (year < day && year < month) return u"2";
  return day < month ? u"1" : u"0";
}

Text separator_of(const QString& picture) {
  Text separator;
  bool field_seen = false;
  for (const QChar c : picture) {
    if (c.isLetter()) {
      if (!separator.empty()) break;
      field_seen = true;
    } else if (field_seen && !c.isSpace() && c != u'\'') {
      separator += c.unicode();
    }
  }
  return separator;
}

void set_conventions(LocaleData& data, const QLocale& locale) {
  data.name = from_qt(locale.bcp47Name());
  const QString short_date = locale.dateFormat(QLocale::ShortFormat);
  const QString time = locale.timeFormat(QLocale::ShortFormat);
  data.long_date_order = order_of(locale.dateFormat(QLocale::LongFormat));
  data.short_date_order = order_of(short_date);
  data.time_format = time.contains(u"ap", Qt::CaseInsensitive) ? u"0" : u"1";
  if (const Text mark = separator_of(short_date); !mark.empty()) data.date_separator = mark;
  if (const Text mark = separator_of(time); !mark.empty()) data.time_separator = mark;
  data.monday_first = locale.firstDayOfWeek() == Qt::Monday;
  if (const QString zero = locale.zeroDigit(); zero.size() == 1)
    data.zero_digit = zero.front().unicode();
}

LocaleData from_toolkit(const QLocale& locale) {
  LocaleData data;
  for (int day = 1; day <= 7; ++day) {
    const auto index = static_cast<std::size_t>(day - 1);
    data.day_names[index] = from_qt(locale.standaloneDayName(day, QLocale::LongFormat));
    data.short_day_names[index] = from_qt(locale.standaloneDayName(day, QLocale::ShortFormat));
    data.narrow_day_names[index] = from_qt(locale.standaloneDayName(day, QLocale::NarrowFormat));
  }
  for (int month = 1; month <= 12; ++month) {
    const auto index = static_cast<std::size_t>(month - 1);
    data.month_names[index] = from_qt(locale.standaloneMonthName(month, QLocale::LongFormat));
    data.genitive_month_names[index] = from_qt(locale.monthName(month, QLocale::LongFormat));
    data.short_month_names[index] =
        from_qt(locale.standaloneMonthName(month, QLocale::ShortFormat));
    data.genitive_short_month_names[index] = from_qt(locale.monthName(month, QLocale::ShortFormat));
  }
  data.morning = from_qt(locale.amText());
  data.afternoon = from_qt(locale.pmText());
  return data;
}

std::string without_encoding(const std::string& name) {
  return name.substr(0, name.find_first_of(".@"));
}

QLocale locale_named(const std::string& name) {
  return QLocale(QString::fromStdString(without_encoding(name)));
}

// Russian and English names come from our own tables, which are written as this program shows them
// (months with a capital, two-letter days); their regions decide about orders and clocks.
LocaleData data_of(const std::string& language, const std::string& name) {
  const bool plain = language == "C";
  LocaleData data = language == "ru"   ? russian_locale()
                    : language == "en" ? english_locale()
                                       : LocaleData{};
  if (plain) return russian_locale();
  const QLocale locale = locale_named(name);
  if (language != "ru" && language != "en") data = from_toolkit(locale);
  set_conventions(data, locale);
  return data;
}

}  // namespace

QtLocale::QtLocale(const std::string& messages, const std::string& times,
                   const std::string& language, const std::string& order) {
  // Dates without a language of their own are in that of the texts.
  const std::string& dates = language_of(times) == "C" ? messages : times;
  const std::string message_language = language_of(messages), time_language = language_of(dates);
  // A device without a locale speaks Russian.
  const std::string texts = !language.empty()         ? language
                            : message_language == "C" ? std::string("ru")
                                                      : without_encoding(messages);
  language_ = to_utf16(texts);
  const std::string wanted = language.empty() ? time_language : language_of(language);
  if (wanted == time_language)
    data_ = data_of(time_language, dates);
  else
    data_ = wanted == "ru"   ? russian_locale()
            : wanted == "en" ? english_locale()
                             : data_of(wanted, language);
  // As the texts run; where nobody chose their language, as the dates do.
  const std::string& read = !language.empty()         ? language
                            : message_language == "C" ? dates
                                                      : messages;
  data_.right_to_left = locale_named(read).textDirection() == Qt::RightToLeft;
  const bool ordered = language_of(order) != "C";
  collator_ = QCollator(ordered ? locale_named(order) : QLocale(to_qt(data_.name)));
}

QtLocale QtLocale::of_environment(const std::string& language) {
  return QtLocale(environment_locale("LC_MESSAGES"), environment_locale("LC_TIME"), language,
                  environment_locale("LC_COLLATE"));
}

int QtLocale::compare(TextView a, TextView b) const {
  return collator_.compare(QStringView(a.data(), static_cast<qsizetype>(a.size())),
                           QStringView(b.data(), static_cast<qsizetype>(b.size())));
}

}  // namespace orvello
