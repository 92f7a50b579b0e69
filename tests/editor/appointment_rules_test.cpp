#include "editor/appointment_rules.h"

#include <gtest/gtest.h>

#include "calendar/dates.h"
#include "editor/occurs_rules.h"
#include "editor/reminder_rules.h"

namespace orvello {
namespace {

constexpr CalendarDate kSaturday = 46347;  // 21 November 2026

CalendarDate hours(double hour) { return hour / 24; }

SettingsRecord settings_on_the_21st() {
  SettingsRecord settings;
  settings.shown = {11, 21, 2026};
  settings.locale = english_locale();
  return settings;
}

TEST(ReminderRules, AreShownInTheLargestUnitAndReadBack) {
  const struct {
    std::int32_t minutes, amount;
    int unit;
  } cases[] = {{0, 0, 0},      {1, 1, 0},       {59, 59, 0},   {60, 1, 1},    {90, 90, 0},
               {120, 2, 1},    {1440, 1, 2},    {1470, 24, 1}, {1500, 25, 1}, {2880, 2, 2},
               {6000, 100, 1}, {10080, 1, 3},   {11520, 8, 2}, {11530, 8, 2}, {20160, 2, 3},
               {64800, 45, 2}, {604800, 60, 3}, {-5, -5, 0}};
  for (const auto& one : cases) {
    EXPECT_EQ(shown_reminder(one.minutes), (ShownReminder{one.amount, one.unit})) << one.minutes;
    // What does not divide is dropped; nothing else gets lost.
    const std::int32_t back = reminder_minutes(format(u"%d", one.amount), one.unit);
    EXPECT_LE(back, one.minutes);
    EXPECT_LT(one.minutes - back, kUnitMinutes[static_cast<std::size_t>(one.unit)]);
  }
  EXPECT_EQ(reminder_minutes(Text(200, u'9'), 3), 2147483640 / 10080 * 10080);
  for (const TextView wrong : {u"", u" ", u"a", u"-5", u"1.5", u"5 "})
    EXPECT_EQ(checked_amount(wrong), u"1");
  EXPECT_EQ(checked_amount(u"007"), u"007");
}

TEST(ReminderRules, OnlyTheFirstAmountsHaveAZero) {
  using Rows = std::vector<Text>;
  EXPECT_EQ(opening_amounts(0), (Rows{u"0", u"1", u"5", u"10", u"15", u"30", u"45"}));
  EXPECT_EQ(opening_amounts(2), (Rows{u"0", u"1", u"2", u"3", u"4", u"5", u"6"}));
  EXPECT_EQ(opening_amounts(3), (Rows{u"0", u"1", u"2", u"3"}));
  EXPECT_EQ(amounts_of(0), (Rows{u"1", u"5", u"10", u"15", u"30", u"45"}));
  EXPECT_EQ(amounts_of(1), (Rows{u"1", u"2", u"3", u"4", u"5", u"6"}));
  EXPECT_EQ(amounts_of(3), (Rows{u"1", u"2", u"3"}));
}

TEST(NewAppointment, TakesTheSettingsDefaults) {
  SettingsRecord settings = settings_on_the_21st();
  AppointmentForm form = new_appointment(settings);
  EXPECT_EQ(form.start_date + form.start_time, kSaturday + hours(12));
  EXPECT_EQ(form.end_date + form.end_time, kSaturday + hours(12.5));
  EXPECT_TRUE(form.categories.empty() && !form.recurring && !form.reminder_set);
  EXPECT_EQ(form.reminder_minutes, 0);
  EXPECT_EQ(form.pattern.day_of_week_mask, 64);
  EXPECT_TRUE(form.pattern.no_end_date);
  settings.defremindme = 1;
  settings.defremindtime = 2;
  settings.defremindunits = 3;
  settings.strdefcategory = u"Work";
  settings.default_start = {23, 30};
  settings.default_end = {24, 0};  // as midnight is kept
  form = new_appointment(settings);
  EXPECT_EQ(form.reminder_minutes, 2 * 10080);
  EXPECT_EQ(form.categories, u"Work");
  EXPECT_EQ(form.end_date + form.end_time, kSaturday + 1);
  EXPECT_FALSE(first_fault(form)) << "it can be saved as it is";
  EXPECT_EQ(offered_location({u"Bar", u"Home"}, u"Home"), u"Home");
  EXPECT_EQ(offered_location({u"Bar", u"Home"}, u"home"), u"Bar");
  EXPECT_EQ(offered_location({}, u"Home"), u"");
}

TEST(Summary, EndsInDotsBehindSeventyNineUnits) {
  EXPECT_EQ(categories_summary(u""), kNoCategories);
  EXPECT_EQ(categories_summary(u"Home,Work"), u"Home,Work");
  EXPECT_EQ(attendees_summary({}), kNoAttendees);
  EXPECT_EQ(attendees_summary({{u"Ann", u"a@x"}, {u"", u"b@x"}}), u"Ann,b@x");
  const Text forty(40, u'a'), rest(38, u'b');
  EXPECT_EQ(summary_of({forty, rest}), forty + u"," + rest) << "79";
  EXPECT_EQ(summary_of({forty, rest + u"b"}), forty + u"," + Text(35, u'b') + u"...");
  EXPECT_EQ(summary_of({forty, rest, u"c"}), forty + u"," + Text(35, u'b') + u"...");
  EXPECT_EQ(summary_of({Text(200, u'x'), u"c"}), Text(76, u'x') + u"...");
}

TEST(Times, AnotherStartKeepsTheDurationAndTheDays) {
  const struct {
    FormTimes before;
    double start;
    CalendarDate end_date;
    double end;
  } cases[] = {
      {{kSaturday, kSaturday, hours(9), hours(10)}, 14, kSaturday, 15},
      {{kSaturday, kSaturday, hours(9), hours(10)}, 23.5, kSaturday + 1, 0.5},
      {{kSaturday, kSaturday + 1, hours(23), hours(1)}, 9, kSaturday, 11},
      {{kSaturday, kSaturday, hours(9), hours(8)}, 9.5, kSaturday + 1, 8.5},
      {{kSaturday, kSaturday + 2, hours(9), hours(17)}, 10, kSaturday + 2, 18},
  };
  for (const auto& one : cases) {
    FormTimes times = one.before;
    set_start_time(times, hours(one.start));
    EXPECT_EQ(times.start_date, one.before.start_date);
    EXPECT_EQ(times.end_date, one.end_date) << one.start;
    EXPECT_NEAR(times.end_time, hours(one.end), 1e-9);
  }
  FormTimes times{kSaturday, kSaturday + 2, hours(9), hours(17)};
  set_start_date(times, kSaturday - 20);
  EXPECT_EQ(times, (FormTimes{kSaturday - 20, kSaturday - 18, hours(9), hours(17)}));
  set_end_date(times, kSaturday - 30);
  EXPECT_EQ(times.start_date, kSaturday - 30);
  set_end_time(times, hours(8), false);
  EXPECT_EQ(times.end_date, kSaturday - 30) << "the dates are the person's";
  times = {kSaturday, kSaturday, hours(23), hours(23.5)};
  set_end_time(times, hours(1), true);
  EXPECT_EQ(times.end_date, kSaturday + 1);
  set_end_time(times, hours(23.75), true);
  EXPECT_EQ(times.end_date, kSaturday);
}

AppointmentForm weekly() {
  AppointmentForm form = new_appointment(settings_on_the_21st());
  form.recurring = true;
  form.pattern = simple_pattern(Occurs::weekly, form.pattern, form.start_date);
  return form;
}

TEST(OccursRules, RowsAndPatternsMeanTheSame) {
  EXPECT_EQ(occurs_rows(kSaturday, english_locale()),
            (std::vector<Text>{u"Once", u"Every Saturday", u"Every 21 of the month",
                               u"Every November 21", u"<Edit pattern...>"}));
  AppointmentForm form = weekly();
  const auto shown = [&] { return shown_occurs(form); };
  for (const Occurs row : {Occurs::weekly, Occurs::monthly, Occurs::yearly}) {
    form.pattern.interval = 3;
    form.pattern.no_end_date = false;
    form.pattern = simple_pattern(row, form.pattern, kSaturday);
    EXPECT_EQ(shown(), row);
    EXPECT_EQ(form.pattern.day_of_week_mask, row == Occurs::weekly ? 64 : 0);
    form.pattern.interval = 2;
    EXPECT_EQ(shown(), Occurs::pattern) << "not every one";
    form.pattern.interval = 1;
    form.pattern.no_end_date = false;
    EXPECT_EQ(shown(), Occurs::pattern) << "it ends";
    form.pattern.no_end_date = true;
    take_days(form.pattern, kSaturday + 12);
    if (row != Occurs::weekly) form.pattern.day_of_week_mask = 0;
    EXPECT_EQ(shown(), Occurs::pattern) << "on another day than the row says";
  }
  form = weekly();
  form.pattern.day_of_week_mask = 62;
  EXPECT_EQ(shown(), Occurs::pattern);
  form.pattern.type = RecurrenceType::daily;
  EXPECT_EQ(shown(), Occurs::pattern);
  form.pattern.day_of_week_mask = 64;
  EXPECT_EQ(shown(), Occurs::once);
  for (const auto type : {RecurrenceType::month_nth, RecurrenceType::year_nth}) {
    form.pattern.type = type;
    EXPECT_EQ(shown(), Occurs::pattern);
  }
  form = weekly();
  form.rules = "RRULE:FREQ=HOURLY";
  EXPECT_EQ(shown(), Occurs::pattern);
  form.recurring = false;
  EXPECT_EQ(shown(), Occurs::once);
}

// What an occurrence takes goes into the pattern, and its dates stay the pattern's.
TEST(FormTimes, OfASeriesAreThoseOfAnOccurrence) {
  const SettingsRecord settings = settings_on_the_21st();
  AppointmentForm form = weekly();
  apply_times(form, {kSaturday, kSaturday + 1, hours(22), hours(23)});
  EXPECT_EQ(form.end_date, kNoDate);
  EXPECT_EQ(form.pattern.duration, 25 * 60);
  EXPECT_EQ(form.pattern.start_time, hours(22));
  EXPECT_FALSE(first_fault(form));
  EXPECT_EQ(times_of(form, settings), (FormTimes{kSaturday, kSaturday + 1, hours(22), hours(23)}));
  form.all_day = true;
  apply_times(form, times_of(form, settings));
  EXPECT_EQ(form.pattern.duration, 2 * 1440 - 1);
  EXPECT_EQ(form.start_time, 0);
  EXPECT_EQ(form.end_time, all_day_end_time());
  EXPECT_LT(all_day_end_time(), 1.0 / 48);
  EXPECT_GT(all_day_end_time(), 1.0 / 48 - 1e-7);
  form.pattern.no_end_date = false;
  form.pattern.pattern_end_date = kSaturday;
  form.all_day = false;
  apply_times(form, {kSaturday, kSaturday + 1, hours(23), hours(1)});
  EXPECT_EQ(form.end_date, kSaturday);
  EXPECT_FALSE(first_fault(form)) << "the last one runs past midnight";
  form.pattern.pattern_end_date = kSaturday - 1;
  apply_times(form, {kSaturday, kSaturday, hours(9), hours(10)});
  EXPECT_TRUE(first_fault(form));
  // Of one occurrence the day stays, and of a rule that is kept the day on which it began.
  AppointmentForm one = weekly();
  one.choice = {5, kSaturday + hours(12), EditScope::occurrence};
  apply_times(one, {kSaturday + 3, kSaturday + 1, hours(23), hours(1)});
  EXPECT_EQ(one.start_date, kSaturday);
  EXPECT_EQ(one.end_date, kSaturday + 1);
  EXPECT_EQ(one.pattern, weekly().pattern);
  one = weekly();
  one.rules = "RRULE:FREQ=HOURLY";
  one.pattern.duration = 24 * 60 + 30;
  FormTimes times = times_of(one, settings);
  EXPECT_EQ(times.end_date, kSaturday + 1);
  set_start_time(times, hours(8));
  apply_times(one, times);
  EXPECT_EQ(one.start_date + one.start_time, kSaturday + hours(8));
  EXPECT_EQ(one.pattern.duration, 24 * 60 + 30);
}

TEST(AsNew, KeepsARecurrenceThatCanBeMadeAgain) {
  AppointmentForm form = weekly();
  form.choice.oid = 5;
  EXPECT_TRUE(as_new(form).recurring);
  EXPECT_EQ(as_new(form).choice, EditorChoice());
  form.rules = "RRULE:FREQ=HOURLY";
  EXPECT_FALSE(as_new(form).recurring);
  form.rules.clear();
  form.choice.scope = EditScope::occurrence;
  EXPECT_FALSE(as_new(form).recurring);
  EXPECT_FALSE(first_fault(as_new(form)));
}

TEST(FormFaults, ComeInTheirOrder) {
  constexpr char16_t kLength[] = u"Duration of appointment must be less than 31 days!";
  constexpr char16_t kReminder[] = u"Reminder time cannot be greater than than 45 days!";
  constexpr char16_t kOrder[] = u"The defined start date must be before the end date!";
  AppointmentForm form = new_appointment(settings_on_the_21st());
  const auto fault = [&] {
    const auto found = first_fault(form);
    EXPECT_TRUE(!found || found->caption == u"Error Warning");
    return found ? Text(found->text) : Text();
  };
  form.end_time = form.start_time;
  EXPECT_EQ(fault(), u"") << "equal ends pass";
  form.end_date = kSaturday + 40;
  EXPECT_EQ(fault(), u"") << "a new one may be as long as it likes";
  form.pattern.no_end_date = false;
  form.reminder_minutes = 64801;
  EXPECT_EQ(fault(), kLength);
  form.end_date = kSaturday + 32;
  EXPECT_EQ(fault(), kLength);
  form.end_time = form.start_time - hours(1);
  EXPECT_EQ(fault(), kReminder) << "31 days and 23 hours";
  form.end_date = kSaturday - 40;
  EXPECT_EQ(fault(), kReminder);
  form.reminder_minutes = 64800;
  EXPECT_EQ(fault(), kOrder);
  form.end_date = kSaturday;
  form.end_time = form.start_time - 1.0 / 1440;
  EXPECT_EQ(fault(), kOrder);
  form.recurring = true;
  form.end_date = kSaturday + 40;
  EXPECT_EQ(fault(), u"");
}

}  // namespace
}  // namespace orvello
