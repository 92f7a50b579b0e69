#include "calendar/date_pictures.h"

#include <iterator>

namespace orvello {
namespace {

constexpr TextView kQuote = u"'";

// Splits a picture into literal text and runs of one element letter.
class PictureReader {
 public:
  PictureReader(TextView picture, TextView letters) : picture_(picture), letters_(letters) {}

  // False at the end. `letter` is 0 for a literal, which is then in `literal`.
  bool next(char16_t& letter, int& count, Text& literal) {
    if (at_ >= picture_.size()) return false;
    letter = 0;
    literal.clear();
    const char16_t c = picture_[at_];
    if (c == kQuote[0]) {
      read_quoted(literal);
    } else if (letters_.find(c) == TextView::npos) {
      literal.push_back(c);
      ++at_;
    } else {
      letter = c;
      for (count = 0; at_ < picture_.size() && picture_[at_] == c; ++at_) ++count;
    }
    return true;
  }

 private:
  // A doubled quote is a quote, inside a quoted text or by itself; an open one ends the picture.
  void read_quoted(Text& literal) {
    if (picture_.substr(at_, 2) == u"''") {
      literal = kQuote;
      at_ += 2;
      return;
    }
    for (++at_; at_ < picture_.size(); ++at_) {
      if (picture_[at_] == kQuote[0]) {
        if (at_ + 1 >= picture_.size() || picture_[at_ + 1] != kQuote[0]) break;
        ++at_;
      }
      literal.push_back(picture_[at_]);
    }
    ++at_;
  }

  TextView picture_;
  TextView letters_;
  std::size_t at_ = 0;
};

Text number(int value, int digits) {
  return digits > 1 ? format(u"%.2d", value) : format(u"%d", value);
}

// Times, which are typed too, keep the digits that are understood there.
Text date_number(int value, int digits, const LocaleData& locale) {
  return local_digits(number(value, digits), locale);
}

bool has_day_number(TextView picture) {
  PictureReader reader(picture, u"dMy");
  char16_t letter = 0;
  int count = 0;
  Text literal;
  while (reader.next(letter, count, literal))
    if (letter == u'd' && count <= 2) return true;
  return false;
}

Text day_element(const SystemTime& date, int count, const LocaleData& locale) {
  if (count <= 2) return date_number(date.day, count, locale);
  const int from_monday = (date.day_of_week + 6) % 7;
  return count == 3 ? locale.short_day_names[from_monday] : locale.day_names[from_monday];
}

Text month_element(int month, int count, bool beside_day, const LocaleData& locale) {
  if (count <= 2) return date_number(month, count, locale);
  const auto& nominative = count == 3 ? locale.short_month_names : locale.month_names;
  const auto& genitive =
      count == 3 ? locale.genitive_short_month_names : locale.genitive_month_names;
  const bool use_genitive = beside_day && !genitive[month - 1].empty();
  return use_genitive ? genitive[month - 1] : nominative[month - 1];
}

Text year_element(int year, int count, const LocaleData& locale) {
  if (count <= 2) return date_number(year % 100, count, locale);
  return local_digits(format(u"%.4d", year), locale);
}

Text time_element(char16_t letter, int count, const SystemTime& time, const LocaleData& locale) {
  switch (letter) {
    case u'H':
      return number(time.hour, count);
    case u'h':
      return number(time.hour % 12 == 0 ? 12 : time.hour % 12, count);
    case u'm':
      return number(time.minute, count);
    default: {
      const Text& designator = time.hour < 12 ? locale.morning : locale.afternoon;
      return count == 1 ? cut(designator, 1) : designator;
    }
  }
}

}  // namespace

Text FormatDatePicture(TextView picture, const SystemTime& time, const LocaleData& locale) {
  // The weekday is worked out rather than believed, and a day the month lacks has rolled on.
  const SystemTime date = civil_of(day_of(time.year, time.month, time.day));
  const bool beside_day = has_day_number(picture);
  PictureReader reader(picture, u"dMy");
  char16_t letter = 0;
  int count = 0;
  Text out, literal;
  while (reader.next(letter, count, literal)) {
    if (letter == 0)
      out += literal;
    else if (letter == u'd')
      out += day_element(date, count, locale);
    else if (letter == u'M')
      out += month_element(date.month, count, beside_day, locale);
    else
      out += year_element(date.year, count, locale);
  }
  return out;
}

Text FormatTimePicture(TextView picture, const SystemTime& time, const LocaleData& locale) {
  PictureReader reader(picture, u"hHmt");
  char16_t letter = 0;
  int count = 0;
  Text out, literal;
  while (reader.next(letter, count, literal))
    out += letter == 0 ? literal : time_element(letter, count, time, locale);
  return out;
}

void LongDatePicture(int dayviewheaderformat, Text& picture) {
  static constexpr TextView kPictures[] = {u"MMMM d, yyyy",      u"d MMMM yyyy",
                                           u"yyyy MMMM d",       u"dddd, MMMM d, yyyy",
                                           u"dddd, d MMMM yyyy", u"dddd, yyyy MMMM d"};
  if (dayviewheaderformat >= 0 && dayviewheaderformat < static_cast<int>(std::size(kPictures)))
    picture = kPictures[dayviewheaderformat];
}

Text OneDateHeaderPicture(int showdaylabel, const LocaleData& locale) {
  const bool label = showdaylabel != 0;
  if (starts_with(locale.long_date_order, u"1"))
    return label ? u"ddd - dd MMM yyyy" : u"dd MMMM yyyy";
  if (starts_with(locale.long_date_order, u"2"))
    return label ? u"ddd - yyyy MMM dd" : u"yyyy MMMM dd";
  return label ? u"ddd - MMM dd',' yyyy" : u"MMMM dd',' yyyy";
}

Text DatePickerPicture(const LocaleData& locale) {
  const auto known = [](TextView order) {
    return !order.empty() && order[0] >= u'0' && order[0] <= u'2';
  };
  const TextView order =
      known(locale.short_date_order) ? locale.short_date_order : locale.long_date_order;
  Text picture = u"ddd ";
  if (!known(order)) return picture;
  Text separator = kQuote.data();
  for (const char16_t c : cut(locale.date_separator, 9))
    separator += c == kQuote[0] ? Text(2, c) : Text(1, c);
  separator += kQuote;
  static constexpr TextView kOrders[3][3] = {
      {u"MMM", u"dd", u"yy"}, {u"dd", u"MMM", u"yy"}, {u"yy", u"MMM", u"dd"}};
  const auto& parts = kOrders[order[0] - u'0'];
  return picture.append(parts[0]).append(separator).append(parts[1]).append(separator).append(
      parts[2]);
}

}  // namespace orvello
