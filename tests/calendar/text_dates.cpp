#include <algorithm>

#include "calendar/date_pictures.h"
#include "calendar/date_text.h"
#include "calendar/iso_date.h"
#include "tests/calendar/dates_case_file.h"

namespace orvello {
namespace {

TEST(DatePictures, PinnedCases) {
  for (const std::string& line : case_lines("date_pictures.txt")) {
    const std::vector<Text> cells = split(to_utf16(line), u'|');
    ASSERT_EQ(cells.size(), 4u) << line;
    const MonthDayYear date = read_date(to_utf8(cells[2]));
    // A wrong weekday in the record must not show.
    const SystemTime time{
        .year = date.year, .month = date.month, .day_of_week = 3, .day = date.day};
    const LocaleData locale = cells[0] == u"ru" ? russian_locale() : english_locale();
    EXPECT_EQ(to_utf8(FormatDatePicture(cells[1], time, locale)), to_utf8(cells[3])) << line;
  }
}

TEST(DatePictures, TimeElements) {
  const LocaleData locale = english_locale();
  const SystemTime morning{.hour = 0, .minute = 5}, evening{.hour = 21, .minute = 30};
  EXPECT_EQ(FormatTimePicture(u"h:mm tt|hh:m t|H HH", morning, locale), u"12:05 AM|12:5 A|0 00");
  EXPECT_EQ(FormatTimePicture(u"h':'mm tt|hh:m t|H HH", evening, locale), u"9:30 PM|09:30 P|21 21");
}

TEST(DatePictures, LocaleOrdersChooseThePicture) {
  LocaleData locale = english_locale();
  EXPECT_EQ(OneDateHeaderPicture(0, locale), u"MMMM dd',' yyyy");
  EXPECT_EQ(DatePickerPicture(locale), u"ddd MMM'/'dd'/'yy");
  locale.long_date_order = u"2";
  EXPECT_EQ(OneDateHeaderPicture(1, locale), u"ddd - yyyy MMM dd");
  locale.short_date_order = u"";  // the long order stands in
  locale.date_separator = u"o'";
  EXPECT_EQ(DatePickerPicture(locale), u"ddd yy'o'''MMM'o'''dd");
  const SystemTime day{.year = 2008, .month = 2, .day = 5};
  EXPECT_EQ(FormatDatePicture(DatePickerPicture(locale), day, locale), u"Tue 08o'Febo'05");
  locale.zero_digit = u'\u0660';
  EXPECT_EQ(FormatDatePicture(u"d MMMM yyyy", day, locale), u"٥ February ٢٠٠٨");
  locale.date_separator = u"0123456789";
  EXPECT_EQ(DatePickerPicture(locale), u"ddd yy'012345678'MMM'012345678'dd");
  locale.long_date_order = u"x";
  EXPECT_EQ(DatePickerPicture(locale), u"ddd ");
  EXPECT_EQ(DatePickerPicture(russian_locale()), u"ddd dd'.'MMM'.'yy");
}

TEST(DatePictures, AnUnknownHeaderFormatLeavesThePicture) {
  Text picture = u"kept";
  LongDatePicture(6, picture);
  LongDatePicture(-1, picture);
  EXPECT_EQ(picture, u"kept");
  LongDatePicture(5, picture);
  EXPECT_EQ(picture, u"dddd, yyyy MMMM d");
}

TEST(Names, ColumnsAndWeekdays) {
  const LocaleData locale = russian_locale();
  for (int weekday = 0; weekday < 7; ++weekday) {
    const Text name = DayNameForWeekday(weekday, false, locale);
    EXPECT_EQ(DayNameForColumn(weekday, false, 0, locale), name);
    EXPECT_EQ(DayNameForColumn((weekday + 6) % 7, false, 1, locale), name);
  }
  EXPECT_EQ(DayNameForColumn(0, false, 1, locale), u"понедельник");
  EXPECT_EQ(DayNameForColumn(6, true, 1, locale), u"вос");
  EXPECT_EQ(DayNameForWeekday(7, false, locale), u"");
}

TEST(Names, LongNamesAreCutToTheirBuffers) {
  LocaleData locale = english_locale();
  locale.month_names[3] = Text(30, u'x');
  locale.day_names[0] = Text(30, u'y');
  MonthNames names;
  LoadMonthNames(names, locale);
  EXPECT_EQ(names[3].size(), 19u);
  EXPECT_EQ(names[11], u"December");
  EXPECT_EQ(DayNameForWeekday(1, false, locale).size(), 19u);
  locale.day_names[1] = Text(30, u'y') + u"z";
  EXPECT_EQ(DayNameForWeekday(1, false, locale).size(), 30u) << "cut it would be Tuesday as well";
}

TEST(IsoDates, AreReadWhereTheyExist) {
  for (const char* text : {"1601-01-01", "2000-02-29", "9999-12-31"}) {
    const auto date = parse_iso_date(text);
    EXPECT_EQ(date ? iso_text(*date) : "", text);
  }
  EXPECT_EQ(parse_iso_moment("2026-11-21T09:30"), (SystemTime{2026, 11, 6, 21, 9, 30, 0, 0}));
  for (const char* text :
       {"1600-12-31", "1900-02-29", "2026-00-10", "2026-13-01", "2026-04-31", "2026-04-00",
        "2026/04/01", "2026-04-01 ", "+026-04-01", "2026--4-01", ""})
    EXPECT_FALSE(parse_iso_date(text)) << text;
  for (const char* text : {"2026-11-06T24:00", "2026-11-06T21:60", "2026-11-06T2::10",
                           "2026-11-06 21:10", "2026-11-06T21:10Z", "2026-11-06T2110", "T21:10"})
    EXPECT_FALSE(parse_iso_moment(text)) << text;
}

TEST(RecurrenceChoices, SpeakOfTheStartDate) {
  const CalendarDate start = calendar_date_of({11, 21, 2026}) + 0.5;
  const auto english = recurrence_choice_texts(start, english_locale());
  EXPECT_EQ(english, (std::array<Text, 4>{u"Once", u"Every Saturday", u"Every 21 of the month",
                                          u"Every November 21"}));
  EXPECT_EQ(recurrence_choice_texts(start, russian_locale())[3], u"Every Ноябрь 21");
}

}  // namespace
}  // namespace orvello
