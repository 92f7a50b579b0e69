#include <set>

#include "calendar/date_text.h"
#include "calendar/time_slots.h"
#include "calendar/typed_time.h"
#include "tests/calendar/dates_case_file.h"

namespace orvello {
namespace {

TEST(ParseTime, PinnedCases) {
  for (const std::string& line : case_lines("typed_times.txt")) {
    const std::vector<Text> cells = split(to_utf16(line), u'|');
    ASSERT_EQ(cells.size(), 2u) << line;
    CalendarDate time = -1;
    EXPECT_TRUE(ParseTimeText(cells[0], time)) << line;
    EXPECT_EQ(to_utf8(FormatTimeOfDay(time, true, english_locale())), to_utf8(cells[1])) << line;
    EXPECT_GE(time, 0.0) << line;
    EXPECT_LT(time, 1.0) << line;
  }
}

TEST(ParseTime, EmptyTextIsNoTime) {
  CalendarDate time = 0.5;
  EXPECT_FALSE(ParseTimeText(u"", time));
  EXPECT_EQ(time, 0.0);
}

TEST(TypedTime, TakesWhatIsMeantAsATimeAndNothingElse) {
  for (const std::string& line : case_lines("meant_times.txt")) {
    const std::vector<Text> cells = split(to_utf16(line), u'|');
    ASSERT_EQ(cells.size(), 2u) << line;
    const auto time = typed_time(cells[0], english_locale());
    const Text read = time ? FormatTimeOfDay(*time, true, english_locale()) : Text();
    EXPECT_EQ(to_utf8(read), to_utf8(cells[1])) << line;
  }
}

// Whatever a list of times offers is read back, also where a locale's words are long.
TEST(TypedTime, ReadsEveryTimeThatIsShown) {
  LocaleData wordy = russian_locale();
  wordy.time_separator = u" uhr ";
  wordy.morning = u"до полудня";
  wordy.afternoon = u"после полудня";
  for (const LocaleData& locale : {english_locale(), russian_locale(), wordy}) {
    for (const bool clock24 : {true, false}) {
      ChoiceList combo;
      FillHalfHourList(combo, clock24, locale);
      for (int slot = 0; slot < kTimeSlots; ++slot) {
        const auto time = typed_time(combo.items[static_cast<std::size_t>(slot)], locale);
        ASSERT_TRUE(time) << to_utf8(combo.items[static_cast<std::size_t>(slot)]);
        EXPECT_NEAR(*time, time_of_slot(slot), 1e-9);
      }
    }
  }
  EXPECT_NEAR(*typed_time(u"9 uhr 30", wordy), 9.5 / 24, 1e-9);
  EXPECT_NEAR(*typed_time(u"9:30 После Полудня", wordy), 21.5 / 24, 1e-9);
}

TEST(AppointmentTime, NoonAndMidnightAreTwelve) {
  EXPECT_EQ(AppointmentTimeText(9, 5, true), u"9:05");
  EXPECT_EQ(AppointmentTimeText(0, 0, true), u"0:00");
  EXPECT_EQ(AppointmentTimeText(0, 5, false), u"12:05a");
  EXPECT_EQ(AppointmentTimeText(11, 59, false), u"11:59a");
  EXPECT_EQ(AppointmentTimeText(12, 0, false), u"12:00p");
  EXPECT_EQ(AppointmentTimeText(13, 7, false), u"1:07p");
  EXPECT_EQ(AppointmentTimeText(23, 30, false), u"11:30p");
}

// A slot's text, its position and what is read back from it are the same time, in every clock.
TEST(HalfHourList, PositionsAreSlots) {
  for (const LocaleData& locale : {english_locale(), russian_locale()}) {
    for (const bool clock24 : {true, false}) {
      ChoiceList combo{{u"old"}, u"old", 0};
      FillHalfHourList(combo, clock24, locale);
      ASSERT_EQ(combo.items.size(), 48u);
      EXPECT_EQ(combo.edit_text, u"");
      EXPECT_EQ(combo.selected, -1);
      EXPECT_EQ(std::set<Text>(combo.items.begin(), combo.items.end()).size(), 48u);
      for (int slot = 0; slot < kTimeSlots; ++slot) {
        ShowTimeInCombo(combo, 46347 + time_of_slot(slot), clock24, locale);
        EXPECT_EQ(combo.selected, slot);
        CalendarDate time = 0;
        ASSERT_TRUE(ParseTimeText(combo.edit_text, time));
        EXPECT_NEAR(time, time_of_slot(slot), 1e-9) << to_utf8(combo.edit_text);
      }
      ShowTimeInCombo(combo, 46347 + 61.0 / 1440, clock24, locale);
      EXPECT_EQ(combo.edit_text, clock24 ? u"1:01" : u"1:01 AM");
      EXPECT_EQ(combo.selected, -1);
    }
  }
}

TEST(HalfHourList, DesignatorsAreTheLocales) {
  LocaleData locale = english_locale();
  locale.morning = u"before noon";
  locale.afternoon = u"";
  ChoiceList combo;
  FillHalfHourList(combo, false, locale);
  EXPECT_EQ(combo.items[0], u"12:00 before no");
  EXPECT_EQ(combo.items[47], u"11:30 ");
  // The short buffer cuts the text of a time, the combo's does not.
  EXPECT_EQ(FormatTimeOfDay(0.25, false, locale), u"6:00 befor");
  ShowTimeInCombo(combo, 0.25, false, locale);
  EXPECT_EQ(combo.edit_text, u"6:00 before noon");
}

}  // namespace
}  // namespace orvello
