#include "views/period_query.h"

#include <gtest/gtest.h>

#include "calendar/dates.h"
#include "tests/views/scripted_items.h"
#include "views/accessible_counts.h"
#include "views/year_marks.h"

namespace orvello {
namespace {

// Summaries are made anew at each answer, as a store may do.
StoreItem item(int oid, CalendarDate start, CalendarDate end, TextView categories = {}) {
  auto summary = std::make_shared<AppointmentSummary>();
  summary->oid = oid;
  summary->categories = categories;
  return {start, end, summary};
}

// February 2010: the 1st is a Monday, so that Sunday-first weeks have one leading day.
const MonthGrid kGrid = MonthGridRange(2, 2010, 0, 0);
const Text kFirst = u"[End] >= <40209 AND [Start] <  <40210";
const Text kSecond = u"[End] >= <40210 AND [Start] <= <40237";
const Text kThird = u"[End] >  <40237 AND [Start] <= <40243";

TEST(PeriodQuery, AsksForTheGridInThreeParts) {
  ScriptedItems::Answers answers;
  std::vector<Text> log;
  fetch_period([&] { return std::make_unique<ScriptedItems>(answers, log); }, kGrid, {});
  EXPECT_EQ(log, (std::vector<Text>{u"all", u"[Start] up", kFirst, kSecond, kThird}));
}

TEST(PeriodQuery, AnItemOfSeveralPartsComesOnce) {
  ScriptedItems::Answers answers;
  answers[kFirst] = {item(1, 40209.5, 40209.6), item(2, 40209.25, 40240)};
  answers[kSecond] = {item(2, 40209.25, 40240), item(3, 40210.5, 40210.6),
                      item(3, 40211.5, 40211.6), item(4, 40237.5, 40237.6)};
  answers[kThird] = {item(2, 40209.25, 40240), item(4, 40237.5, 40237.6), item(5, 40237.5, 40237.6),
                     item(3, 40238.5, 40238.6)};
  std::vector<Text> log;
  const PeriodItems found =
      fetch_period([&] { return std::make_unique<ScriptedItems>(answers, log); }, kGrid, {})
          .value();
  std::vector<CalendarDate> starts;
  for (const PeriodItem& each : found.items) starts.push_back(each.start);
  EXPECT_EQ(starts, (std::vector<CalendarDate>{40209.5, 40209.25, 40210.5, 40211.5, 40237.5,
                                               40237.5, 40238.5}));
}

// What is drawn of a half-read span would look like free days.
TEST(PeriodQuery, AReadingThatBreaksOffIsNoAnswer) {
  std::vector<Text> log;
  for (const Text& broken : {kFirst, kSecond, kThird}) {
    ScriptedItems::Answers answers;
    answers[kSecond] = {item(1, 40211.5, 40211.6)};
    answers[broken].push_back(broken_off());
    const auto source = [&] { return std::make_unique<ScriptedItems>(answers, log); };
    EXPECT_FALSE(fetch_period(source, kGrid, {}));
    answers[broken].pop_back();
    EXPECT_TRUE(fetch_period(source, kGrid, {}));
  }
  ScriptedItems::Answers answers;
  answers[year_restriction(2010)] = {item(1, 40211.5, 40211.6), broken_off()};
  answers[u"[End] >= <40210 AND [Start] <= <40237"] = {item(1, 40211.5, 40211.6), broken_off()};
  const auto source = [&] { return std::make_unique<ScriptedItems>(answers, log); };
  const auto closed = [] { return nullptr; };
  YearMarks marks;
  const std::atomic<int> drawing{101};
  for (const ItemsSource& failing : {ItemsSource(source), ItemsSource(closed)}) {
    EXPECT_FALSE(fetch_period(failing, kGrid, {}));
    EXPECT_FALSE(count_days(failing, Day(40210), Day(40237), {}));
    EXPECT_EQ(BuildYearMarks(2010, failing, {}, drawing, marks), MarksOutcome::unreadable);
  }
}

TEST(PeriodQuery, TheProfileIsAskedOnceForEachCategoriesText) {
  ScriptedItems::Answers answers;
  for (int i = 0; i < 10; ++i)
    answers[kSecond].push_back(item(i, 40211 + i, 40211.5 + i, i % 2 ? u"Work" : u"Work, Home"));
  std::vector<Text> log, asked;
  const PeriodItems found =
      fetch_period([&] { return std::make_unique<ScriptedItems>(answers, log); }, kGrid,
                   [&](TextView categories) {
                     asked.emplace_back(categories);
                     return categories == u"Work";
                   })
          .value();
  EXPECT_EQ(asked, (std::vector<Text>{u"Work, Home", u"Work"}));
  for (std::size_t i = 0; i < found.items.size(); ++i)
    EXPECT_EQ(found.items[i].passes_profile, i % 2 == 1);
}

TEST(PeriodQuery, DaysThatAnItemCovers) {
  const auto cells = [&](CalendarDate start, CalendarDate end) {
    const CellSpan span = cells_of({start, end}, kGrid);
    return std::pair{span.first, span.last};
  };
  EXPECT_EQ(cells(40210.9, 40211.1), (std::pair{1, 2}));
  EXPECT_EQ(cells(40200.5, 40209.5), (std::pair{0, 0}));
  EXPECT_EQ(cells(40243.5, 50000), (std::pair{34, 34}));
  const auto before = cells(40100, 40208.9), absent = cells(kNoDate, kNoDate);
  EXPECT_GT(before.first, before.second);
  EXPECT_GT(absent.first, absent.second);
}

}  // namespace
}  // namespace orvello
