// The recurrence editor: what it shows of a pattern, what it makes of what is chosen, its dialog.
#include <gtest/gtest.h>

#include <fstream>

#include "calendar/dates.h"
#include "calendar/rule_text.h"
#include "editor/edit_recurrence.h"
#include "editor/recurrence_rules.h"
#include "editor/rule_words.h"
#include "ports/messages.h"
#include "resources/recurrence_ids.h"
#include "tests/data_path.h"
#include "tests/editor/editor_bench.h"

namespace orvello {
namespace {

using Type = RecurrenceType;

CalendarDate date(int month, int day, int year) { return calendar_date_of({month, day, year}); }

// From Tuesday, 24 November 2026, 9:00 to 10:00, without end.
RecurrencePattern pattern_of(Type type, int interval, int mask, int day, int instance, int month) {
  RecurrencePattern pattern;
  pattern.type = type;
  pattern.pattern_start_date = date(11, 24, 2026);
  pattern.start_time = 9.0 / 24;
  pattern.end_time = 10.0 / 24;
  pattern.duration = 60;
  pattern.interval = interval;
  pattern.day_of_week_mask = mask;
  pattern.day_of_month = day;
  pattern.instance = instance;
  pattern.month_of_year = month;
  return pattern;
}

TEST(RecurrenceRules, WhatAPatternHoldsIsShownAndComesBack) {
  const RecurrencePattern patterns[] = {
      pattern_of(Type::daily, 3, 0, 0, 0, 0),          pattern_of(Type::weekly, 2, 4 | 16, 0, 0, 0),
      pattern_of(Type::monthly, 18, 0, 24, 0, 0),      pattern_of(Type::month_nth, 2, 65, 0, 5, 0),
      pattern_of(Type::yearly, 1, 0, 24, 0, 11),       pattern_of(Type::year_nth, 1, 4, 0, 4, 11),
      pattern_of(Type::yearly, 4, 0, 24, 0, 11),       pattern_of(Type::month_nth, 1, 127, 0, 1, 0),
      pattern_of(Type::weekly, 1, 1 | 4 | 64, 0, 0, 0)};
  for (RecurrencePattern pattern : patterns) {
    EXPECT_EQ(recurrence_pattern(recurrence_form(pattern, false), pattern), pattern)
        << static_cast<int>(pattern.type);
    pattern.no_end_date = false;
    pattern.pattern_end_date = date(3, 3, 2028);
    EXPECT_EQ(recurrence_form(pattern, false).end, SeriesEnd::by_date);
    EXPECT_EQ(recurrence_pattern(recurrence_form(pattern, false), pattern), pattern);
    pattern.pattern_end_date = kNoDate;
    pattern.occurrences = 12;
    EXPECT_EQ(recurrence_form(pattern, false).end, SeriesEnd::by_count);
    EXPECT_EQ(recurrence_pattern(recurrence_form(pattern, false), pattern), pattern);
    // The day on which the count ends it is no end of its own; another day is.
    pattern.pattern_end_date = to_calendar_date(day_of(*last_instance(pattern)));
    EXPECT_EQ(recurrence_form(pattern, false).end, SeriesEnd::by_count);
    pattern.pattern_end_date += 1;
    EXPECT_EQ(recurrence_form(pattern, false).end, SeriesEnd::by_date);
  }
}

TEST(RecurrenceRules, EveryWeekdayIsSavedAsAWeeklyPatternAndOpensAsOne) {
  RecurrencePattern pattern = pattern_of(Type::daily, 1, kEveryWeekdayMask, 0, 0, 0);
  EXPECT_TRUE(recurrence_form(pattern, false).every_weekday);
  pattern = recurrence_pattern(recurrence_form(pattern, false), pattern);
  EXPECT_EQ(pattern.type, Type::weekly);
  EXPECT_EQ(pattern.interval, 0);
  EXPECT_EQ(pattern.day_of_week_mask, 62);
  const RecurrenceForm again = recurrence_form(pattern, false);
  EXPECT_EQ(again.kind, kRowWeekly);
  EXPECT_EQ(again.weekdays, 62);
  EXPECT_EQ(again.weekly_interval, 1) << "as the store takes it";
}

TEST(RecurrenceRules, PagesThatThePatternSaysNothingAboutSuitItsFirstDay) {
  const RecurrenceForm form = recurrence_form(pattern_of(Type::daily, 5, 0, 0, 0, 0), false);
  EXPECT_EQ(form.weekdays, 4);
  EXPECT_EQ(form.weekly_interval, 1);
  EXPECT_EQ(form.month_day, 24);
  EXPECT_EQ(form.month_instance, 3);  // the fourth
  EXPECT_EQ(form.month_kind, 5);      // Tuesday
  EXPECT_EQ(form.year_month, 10);
}

// Day by day against what the words mean.
TEST(RecurrenceRules, ASeriesBeginsOnTheFirstDayThatSuits) {
  const auto weekday = [](Day day) { return 1 << weekday_of(day); };
  struct Case {
    const char* name;
    RecurrenceForm form;
    std::function<bool(const SystemTime&, Day)> suits;
  };
  std::vector<Case> cases;
  const auto add = [&](const char* name, int kind, auto set, auto suits) {
    RecurrenceForm form;
    form.kind = kind;
    set(form);
    cases.push_back({name, form, suits});
  };
  add(
      "Monday, Saturday", kRowWeekly, [](auto& form) { form.weekdays = 2 | 64; },
      [&](const SystemTime&, Day day) { return (weekday(day) & (2 | 64)) != 0; });
  add(
      "the 31st", kRowMonthly, [](auto& form) { form.month_day = 31; },
      [](const SystemTime& time, Day) {
        return time.day == day_of(time.year, time.month + 1, 1) - day_of(time.year, time.month, 1);
      });
  add(
      "29 February", kRowYearly, [](auto& form) { form.year_month = 1, form.year_day = 29; },
      [](const SystemTime& time, Day day) {
        return time.month == 2 && civil_of(day + 1).day == 1;
      });
  add(
      "5 November", kRowYearly, [](auto& form) { form.year_month = 10, form.year_day = 5; },
      [](const SystemTime& time, Day) { return time.month == 11 && time.day == 5; });
  add(
      "last Friday of March", kRowYearly,
      [](auto& form) {
        form.year_nth = true, form.year_instance = 4, form.year_kind = 8, form.nth_month = 2;
      },
      [&](const SystemTime& time, Day day) {
        return time.month == 3 && weekday(day) == 32 && civil_of(day + 7).month == 4;
      });
  for (Case& one : cases) {
    for (Day day = day_of(2027, 1, 1); day < day_of(2028, 4, 1); ++day) {
      one.form.start_date = to_calendar_date(day);
      Day expected = day;
      while (!one.suits(civil_of(expected), expected)) ++expected;
      const Day begun = whole_day(recurrence_pattern(one.form, {}).pattern_start_date);
      ASSERT_EQ(begun, expected) << one.name << " from " << day.number();
    }
  }
  // What is counted in weeks or months counts from the week or month of the start.
  RecurrenceForm form;
  form.kind = kRowWeekly;
  form.start_date = date(11, 27, 2026);  // a Friday
  form.weekdays = 2;
  form.weekly_interval = 2;
  EXPECT_EQ(recurrence_pattern(form, {}).pattern_start_date, date(12, 7, 2026));
}

TEST(RecurrenceRules, FieldsFollowEachOther) {
  RecurrenceForm form = recurrence_form(pattern_of(Type::daily, 1, 0, 0, 0, 0), false);
  choose_start_time(form, 23.5 / 24);
  EXPECT_NEAR(form.end_time, 0.5 / 24, 1e-9) << "past midnight";
  choose_start_date(form, date(12, 1, 2026));
  EXPECT_EQ(form.end_date, date(12, 1, 2026)) << "without end";
  form.end = SeriesEnd::by_date;
  form.end_date = date(12, 31, 2026);
  choose_start_date(form, date(12, 11, 2026));
  EXPECT_EQ(form.end_date, date(1, 10, 2027));
  form.year_day = 31;
  choose_year_month(form, 1);
  EXPECT_EQ(form.year_day, 29);
  // Two days and an hour stay so, at other times.
  RecurrencePattern before = pattern_of(Type::daily, 7, 0, 0, 0, 0);
  before.duration = 2 * 24 * 60 + 60;
  form = recurrence_form(before, false);
  choose_start_time(form, 23.5 / 24);
  EXPECT_EQ(recurrence_pattern(form, before).duration, before.duration);
  form.end_time += 0.5 / 24;
  EXPECT_EQ(recurrence_pattern(form, before).duration, before.duration + 30);
}

TEST(RecurrenceRules, WhatNobodyCanMeanIsNamed) {
  const auto fault_at = [](auto change) {
    RecurrenceForm form = recurrence_form(pattern_of(Type::daily, 1, 0, 0, 0, 0), false);
    change(form);
    const auto fault = recurrence_fault(form, Language::english);
    return fault ? fault->control : 0;
  };
  EXPECT_EQ(typed_count(u"12 days"), 12);
  EXPECT_EQ(typed_count(u"days"), 0);
  EXPECT_EQ(typed_count(u"-3"), 0);
  EXPECT_EQ(fault_at([](auto&) {}), 0);
  EXPECT_EQ(fault_at([](auto& form) { form.daily_interval = 0; }), kControlDailyInterval);
  EXPECT_EQ(fault_at([](auto& form) { form.every_weekday = true, form.daily_interval = 0; }), 0);
  EXPECT_EQ(fault_at([](auto& form) { form.kind = kRowWeekly, form.weekly_interval = 0; }),
            kControlWeeklyInterval);
  EXPECT_EQ(fault_at([](auto& form) { form.kind = kRowMonthly, form.month_day = 32; }),
            kControlMonthDay);
  EXPECT_EQ(fault_at([](auto& form) {
              form.kind = kRowMonthly, form.month_nth = true, form.nth_interval = 0;
            }),
            kControlNthInterval);
  EXPECT_EQ(
      fault_at([](auto& form) { form.kind = kRowYearly, form.year_month = 1, form.year_day = 30; }),
      kControlYearDay);
  EXPECT_EQ(fault_at([](auto& form) { form.end = SeriesEnd::by_count, form.count = 0; }),
            kControlCount);
  EXPECT_EQ(fault_at([](auto& form) {
              form.end = SeriesEnd::by_date, form.end_date = form.start_date - 1;
            }),
            kControlRangeEnd);
  EXPECT_EQ(fault_at([](auto& form) { form.end = SeriesEnd::by_date; }), 0) << "a single day";
  EXPECT_EQ(fault_at([](auto& form) {
              form.end = SeriesEnd::by_date, form.kind = kRowWeekly, form.weekdays = 2;
            }),
            kControlRangeEnd)
      << "Monday is later";
  EXPECT_EQ(
      fault_at([](auto& form) { form.kind = kRowMonthly, form.monthly_interval = 999999999; }), 0);
}

TEST(RecurrenceRules, ThePatternCanBeDumped) {
  MemoryFiles files;
  EXPECT_TRUE(dump_pattern(files, pattern_of(Type::yearly, 1, 0, 24, 0, 11)));
  const std::vector<Text> lines = {
      u"longType = 5",        u"patternStart = 46350.000000", u"patternEnd = 949998.000000",
      u"bNoEndDate = 1",      u"longOccurrences = -1",        u"startTime = 0.375000",
      u"endTime = 0.416667",  u"longDuration = 60",           u"longInterval = 1",
      u"longDayOfWeek = 0",   u"longDayOfMonth = 24",         u"longInstance = 0",
      u"longMonthOfYear = 11"};
  EXPECT_EQ(files.diagnostics, lines);
}

struct RecurrenceDialogTest : testing::Test, EditorBench {
  bool edit(std::function<void(HeadlessDialog&)> acts, bool all_day = false) {
    person(std::move(acts));
    return edit_recurrence(context, pattern, all_day);
  }
  RecurrencePattern pattern = pattern_of(Type::weekly, 1, 4, 0, 0, 0);
};

TEST_F(RecurrenceDialogTest, LeadsThroughItsSteps) {
  EXPECT_TRUE(edit([](HeadlessDialog& form) {
    EXPECT_EQ(form.title(), u"Appointment - Recurring");
    EXPECT_FALSE(form.reachable(kControlPreviousStep));
    EXPECT_EQ(form.list(kControlRecurrenceType)->selected(), std::vector<int>{kRowWeekly});
    EXPECT_EQ(form.text(kControlRecurrenceStartTime), u"9:00");
    form.choose_row(kControlRecurrenceStartTime, 21);
    EXPECT_EQ(form.text(kControlRecurrenceEndTime), u"11:30") << "as long as before";
    form.press(kControlNextStep);
    EXPECT_TRUE(form.seen(kControlWeeklyInterval));
    EXPECT_TRUE(form.checked(kControlWeekdays[2]));
    form.press(kControlPreviousStep);
    form.tap_row(kControlRecurrenceType, kRowMonthly);
    form.press(kControlNextStep);
    EXPECT_FALSE(form.seen(kControlWeeklyInterval));
    EXPECT_TRUE(form.checked(kControlMonthDayChoice));
    form.choose_row(kControlMonthInstance, 4);
    EXPECT_TRUE(form.checked(kControlMonthNthChoice)) << "what belongs to it was chosen";
    form.type(kControlNthInterval, u"2 or so");
    form.press(kControlNextStep);
    EXPECT_FALSE(form.seen(kControlNextStep));
    EXPECT_EQ(form.focused, kControlDone);
    EXPECT_EQ(form.text(kControlSummary), u"Every 2 months on the last Tuesday");
    form.choose_date(kControlRangeEnd, {12, 31, 2027});
    EXPECT_TRUE(form.checked(kControlEndBy));
    form.choose_date(kControlRangeStart, {11, 25, 2026});
    EXPECT_EQ(form.date(kControlRangeEnd)->date(), (MonthDayYear{1, 1, 2028}));
    form.press(kControlDone);
  }));
  EXPECT_EQ(pattern.type, Type::month_nth);
  EXPECT_EQ(pattern.instance, 5);
  EXPECT_EQ(pattern.day_of_week_mask, 4);
  EXPECT_EQ(pattern.interval, 2);
  EXPECT_EQ(pattern.pattern_start_date, date(11, 25, 2026));
  EXPECT_EQ(pattern.pattern_end_date, date(1, 1, 2028));
  EXPECT_NEAR(pattern.start_time, 10.5 / 24, 1e-9);
  EXPECT_NEAR(pattern.end_time, 11.5 / 24, 1e-9);
  EXPECT_EQ(device.input.panel_hides, 1);
  EXPECT_TRUE(boxes_shown().empty());
}

TEST_F(RecurrenceDialogTest, OneDayOfTheWeekStays) {
  EXPECT_TRUE(edit([this](HeadlessDialog& form) {
    form.press(kControlNextStep);
    form.press(kControlWeekdays[2]);
    EXPECT_TRUE(form.checked(kControlWeekdays[2]));
    EXPECT_EQ(boxes_shown(), Messages{"Warning: You must have at least one day selected!"});
    form.press(kControlWeekdays[4]);
    form.press(kControlWeekdays[2]);
    EXPECT_TRUE(boxes_shown().empty());
    form.press(kControlHeaderOk);
  }));
  EXPECT_EQ(pattern.day_of_week_mask, 16);
  EXPECT_EQ(pattern.pattern_start_date, date(11, 26, 2026));
}

TEST_F(RecurrenceDialogTest, FaultsLeadToTheirFieldAndKeepTheForm) {
  const RecurrencePattern before = pattern;
  EXPECT_FALSE(edit([this](HeadlessDialog& form) {
    form.press(kControlNextStep);
    form.type(kControlWeeklyInterval, u"0");
    form.press(kControlNextStep);
    form.press(kControlDone);
    EXPECT_EQ(boxes_shown(), Messages{"Error Warning: The interval must be at least 1!"});
    EXPECT_EQ(form.focused, kControlWeeklyInterval);
    EXPECT_FALSE(form.closed);
    form.press(kControlHeaderCancel);
  }));
  EXPECT_EQ(pattern, before);
}

TEST_F(RecurrenceDialogTest, ATypedTimeIsTakenOrRefusedAndToldOnce) {
  EXPECT_TRUE(edit([this](HeadlessDialog& form) {
    form.type(kControlRecurrenceEndTime, u"noon");
    form.press(kControlHeaderOk);
    EXPECT_FALSE(form.closed);
    EXPECT_EQ(boxes_shown().size(), 1u);
    EXPECT_EQ(form.text(kControlRecurrenceEndTime), u"10:00");
    form.type(kControlRecurrenceEndTime, u"1015");
    form.key(kKeyReturn);
  }));
  EXPECT_NEAR(pattern.end_time, 10.25 / 24, 1e-9);
  EXPECT_FALSE(edit(
      [](HeadlessDialog& form) {
        EXPECT_FALSE(form.reachable(kControlRecurrenceStartTime));
        EXPECT_FALSE(form.reachable(kControlRecurrenceEndTime));
        form.press_close();
      },
      true))
      << "an all-day appointment has no times";
}

TEST_F(RecurrenceDialogTest, ARuleThatItCannotShowIsReplacedOnlyIfThePersonSaysSo) {
  const RecurrencePattern before = pattern;
  const std::string rules = "RRULE:FREQ=YEARLY;BYDAY=20MO";
  person([](HeadlessDialog& form) { form.press(kControlHeaderOk); });
  device.boxes.answers = {BoxAnswer::no, BoxAnswer::yes};
  EXPECT_FALSE(edit_recurrence(context, pattern, false, rules));
  EXPECT_TRUE(device.dialogs.opened.empty());
  EXPECT_NE(device.boxes.shown.at(0).text.find(u"Every year on the 20th Monday of the year"),
            Text::npos);
  EXPECT_TRUE(edit_recurrence(context, pattern, false, rules));
  EXPECT_EQ(pattern, before);
}

TEST(RuleWords, SayTheRuleInBothLanguages) {
  std::ifstream file(ORVELLO_TEST_DATA "/rule_words.txt");
  int cases = 0;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    const auto fields = split_bytes(line, '|');
    ASSERT_EQ(fields.size(), 3u) << line;
    std::string rules(fields[0]);
    std::replace(rules.begin(), rules.end(), ' ', '\n');
    EXPECT_EQ(to_utf8(rule_words(rules, Language::english)), fields[1]);
    EXPECT_EQ(to_utf8(rule_words(rules, Language::russian)), fields[2]);
    ++cases;
  }
  EXPECT_GT(cases, 20);
  EXPECT_EQ(rule_words("", Language::english), u"");
  RecurrencePattern pattern = pattern_of(Type::month_nth, 1, kEveryWeekdayMask, 0, 5, 0);
  EXPECT_EQ(pattern_words(pattern, Language::english), u"Every month on the last weekday");
}

}  // namespace
}  // namespace orvello
