#include "views/year_marks.h"

#include <gtest/gtest.h>

#include "calendar/dates.h"
#include "tests/views/scripted_items.h"
#include "views/accessible_counts.h"
#include "views/year_snapshot.h"

namespace orvello {
namespace {

const Text kThreeDays = u"[End] >= <46146 AND [Start] <= <46148";  // from 4 May 2026

class YearMarksTest : public testing::Test {
 protected:
  void add(CalendarDate start, CalendarDate end, TextView categories = {}, bool all_day = false) {
    auto summary = std::make_shared<AppointmentSummary>();
    summary->categories = categories;
    summary->all_day = all_day;
    items.push_back({start, end, summary});
  }
  ItemsSource source() {
    return [this] {
      for (const int year : {1900, 2008, 2026}) answers[year_restriction(year)] = items;
      answers[kThreeDays] = items;
      return std::make_unique<ScriptedItems>(answers, log);
    };
  }
  // The marked days as "12/30 12/31 1/1".
  std::string marked(int year = 2026, const ProfileTest& passes = {}) {
    YearMarks marks;
    const std::atomic<int> state{101};
    EXPECT_EQ(BuildYearMarks(year, source(), passes, state, marks), MarksOutcome::finished);
    std::string text;
    for (int month = 1; month <= 12; ++month)
      for (int day = 1; day <= 31; ++day)
        if (marks.at(month, day)) text += std::to_string(month) + "/" + std::to_string(day) + " ";
    return text;
  }
  static CalendarDate day(int month, int d, int year, double hour = 0) {
    return WholeDayNumber(month, d, year) + hour / 24;
  }

  std::vector<StoreItem> items;  // answered to each of the queries
  ScriptedItems::Answers answers;
  std::vector<Text> log;
};

TEST_F(YearMarksTest, AsksForTheYearInOrderOfStart) {
  marked(2008);
  // A leap year's last day is asked for by its midnight.
  EXPECT_EQ(log,
            (std::vector<Text>{u"[Start] up", u"all", u"[End] >= <39448 AND [Start] <= <39813"}));
  EXPECT_EQ(day(12, 31, 2008), 39813);
}

TEST_F(YearMarksTest, EveryDayFromStartToEndIsMarked) {
  add(day(12, 30, 2026, 9), day(1, 2, 2027, 10));  // January of the same table
  EXPECT_EQ(marked(), "1/1 1/2 12/30 12/31 ");
  items.clear();
  add(day(12, 31, 2025, 23), day(1, 1, 2026));  // until midnight, and that belongs to the day
  add(day(5, 4, 2026), day(5, 6, 2026), {}, true);
  EXPECT_EQ(marked(), "1/1 5/4 5/5 5/6 12/31 ");
}

TEST_F(YearMarksTest, ALongSpanMarksEachDateItHolds) {
  add(day(3, 1, 2026), day(2, 28, 2027));
  EXPECT_EQ(marked().find(" 2/29 "), std::string::npos);
  EXPECT_NE(marked().find("2/28 3/1 "), std::string::npos);
  // 1900 has no 29 February: the next one lies 2920 days ahead.
  items[0] = {day(3, 1, 1896), day(3, 1, 1904), items[0].summary};
  EXPECT_NE(marked(1900).find("2/28 2/29 3/1 "), std::string::npos);
  items[0].end = 1e300;
  EXPECT_NE(marked(1900).find("2/28 2/29 3/1 "), std::string::npos);
}

TEST_F(YearMarksTest, OnlyWhatPassesTheProfile) {
  add(day(5, 4, 2026), day(5, 4, 2026, 1), u"Home");
  add(day(5, 4, 2026), day(5, 5, 2026), u"Work");
  add(day(5, 4, 2026), day(5, 6, 2026), u"Home");
  const auto work = [](TextView categories) { return categories == u"Work"; };
  EXPECT_EQ(marked(2026, work), "5/4 5/5 ");
  EXPECT_EQ(count_days(source(), Day(46146), Day(46148), work), (std::vector<int>{1, 1, 0}));
  // A hidden one says nothing about its days, and hides none that lie inside it.
  items.clear();
  add(day(5, 4, 2026), day(5, 9, 2026), u"Home");
  add(day(5, 4, 2026), day(5, 4, 2026, 1), u"Work");
  add(day(5, 6, 2026), day(5, 7, 2026), u"Work");
  EXPECT_EQ(marked(2026, work), "5/4 5/6 5/7 ");
  const std::atomic<int> state{101};
  YearMarks marks;
  const auto hidden = [&](TextView only) {
    BuildYearMarks(
        2026, source(), [&](TextView text) { return text == only; }, state, marks);
    return marks.all_hidden();
  };
  EXPECT_FALSE(hidden(u"Work"));
  EXPECT_TRUE(hidden(u"Sport"));
  items.clear();
  EXPECT_FALSE(hidden(u"Sport"));
}

TEST_F(YearMarksTest, BusyDaysHaveSeveralAppointments) {
  add(day(3, 1, 2016), day(3, 1, 2026));  // holds each date ten times, and is one
  for (int n = 1; n < kBusyDay; ++n) {
    add(day(5, 4, 2026, n), day(5, 4, 2026, n + 1));
    add(day(5, 5, 2026, n), day(5, 6, 2026));
  }
  YearMarks marks;
  const std::atomic<int> state{101};
  BuildYearMarks(2026, source(), {}, state, marks);
  for (const int of_may : {4, 5, 6}) EXPECT_TRUE(marks.busy(5, of_may));
  EXPECT_TRUE(marks.at(5, 3) && !marks.busy(5, 3));
}

TEST_F(YearMarksTest, GivesUpForANewerRequest) {
  add(day(5, 4, 2026), day(5, 4, 2026));
  add(day(5, 5, 2026), day(5, 5, 2026));
  std::atomic<int> state{101};
  YearMarks marks;
  const auto stop = [&](TextView) { return state = 100, true; };
  EXPECT_EQ(BuildYearMarks(2026, source(), stop, state, marks), MarksOutcome::given_up);
  EXPECT_TRUE(marks.at(5, 4));
  EXPECT_FALSE(marks.at(5, 5));
  log.clear();
  EXPECT_EQ(BuildYearMarks(2026, source(), {}, state, marks), MarksOutcome::given_up);
  EXPECT_TRUE(log.empty());  // not even asked
  EXPECT_EQ(marks, YearMarks());
  state = 101;
}

TEST_F(YearMarksTest, EachAppointmentCountsOnceADay) {
  add(day(5, 4, 2026, 9), day(5, 4, 2026, 10));
  add(day(5, 1, 2026), day(5, 5, 2026), {}, true);
  add(day(4, 1, 2026), day(6, 5, 2046));
  EXPECT_EQ(count_days(source(), Day(46146), Day(46148), {}), (std::vector<int>{3, 2, 1}));
  EXPECT_TRUE(count_days(source(), Day(46146), Day(46145), {})->empty());
}

TEST_F(YearMarksTest, TheSnapshotAsksOnlyWhenMarksAreWanted) {
  add(day(5, 4, 2026), day(5, 4, 2026));
  SettingsRecord settings;
  for (const bool wanted : {false, true}) {
    settings.coloryearview = wanted;
    const YearSnapshot taken =
        take_year_snapshot(source(), settings, {}, 2026, {}, {}, false).value();
    EXPECT_EQ(taken.marks.at(5, 4), wanted);
    EXPECT_EQ(log.empty(), !wanted);
  }
}

}  // namespace
}  // namespace orvello
