#include "views/year_marks.h"

#include <gtest/gtest.h>

#include "calendar/dates.h"
#include "views/accessible_counts.h"
#include "views/year_snapshot.h"

namespace orvello {
namespace {

// Answers every restriction with the same items, and notes what it was asked.
class ListedItems : public StoreItems {
 public:
  ListedItems(std::vector<Text>& log, const std::vector<StoreItem>& items)
      : log_(log), items_(items) {}
  void set_include_recurrences(bool include) override { log_.push_back(include ? u"all" : u"-"); }
  void sort(TextView property, bool descending) override {
    log_.push_back(Text(property) + (descending ? u" down" : u" up"));
  }
  std::unique_ptr<StoreItems> restrict_to(TextView restriction) override {
    log_.emplace_back(restriction);
    return std::make_unique<ListedItems>(log_, items_);
  }
  std::optional<StoreItem> find(TextView) override { return std::nullopt; }
  std::optional<StoreItem> find_next() override { return std::nullopt; }
  int count() override { return static_cast<int>(items_.size()); }
  std::optional<StoreItem> item(int index) override {
    if (index < 1 || index > count()) return std::nullopt;
    return items_[static_cast<std::size_t>(index - 1)];
  }

 private:
  std::vector<Text>& log_;
  const std::vector<StoreItem>& items_;
};

class YearMarksTest : public testing::Test {
 protected:
  void add(CalendarDate start, CalendarDate end, TextView categories = {}, bool all_day = false) {
    auto summary = std::make_shared<AppointmentSummary>();
    summary->categories = categories;
    summary->all_day = all_day;
    items.push_back({start, end, summary});
  }
  ItemsSource source() {
    return [this] { return std::make_unique<ListedItems>(log, items); };
  }
  // The marked days as "12/30 12/31 1/1".
  std::string marked(int year = 2026, int generation = 0, const ProfileTest& passes = {}) {
    YearMarks marks;
    const std::atomic<int> state{101};
    EXPECT_TRUE(BuildYearMarks(year, source(), passes, generation, state, marks));
    std::string text;
    for (int month = 1; month <= 12; ++month)
      for (int day = 1; day <= 31; ++day)
        if (marks.at(month, day)) text += std::to_string(month) + "/" + std::to_string(day) + " ";
    return text;
  }
  static CalendarDate day(int month, int d, int year, double hour = 0) {
    return WholeDayNumber(month, d, year) + hour / 24;
  }

  std::vector<StoreItem> items;
  std::vector<Text> log;
};

TEST_F(YearMarksTest, AsksForTheYearInOrderOfStart) {
  marked(2008);
  // A leap year's last day is asked for by its midnight.
  EXPECT_EQ(log,
            (std::vector<Text>{u"[Start] up", u"all", u"[End] >= <39448 AND [Start] <= <39813"}));
  EXPECT_EQ(day(12, 31, 2008), 39813);
}

TEST_F(YearMarksTest, DaysBeyondTheYearMarkTheSameTable) {
  add(day(12, 30, 2026, 9), day(1, 2, 2027, 10));
  EXPECT_EQ(marked(), "1/1 1/2 12/30 12/31 ");
  items.clear();
  add(day(12, 31, 2025, 23), day(1, 1, 2026));  // until midnight, and that belongs to the day
  EXPECT_EQ(marked(), "1/1 12/31 ");
}

TEST_F(YearMarksTest, AllDayItemsOfGenerationThreeEndADayEarlier) {
  add(day(5, 4, 2026), day(5, 6, 2026), {}, true);
  add(day(8, 4, 2026), day(8, 5, 2026));
  EXPECT_EQ(marked(2026, 2), "5/4 5/5 5/6 8/4 8/5 ");
  EXPECT_EQ(marked(2026, 3), "5/4 5/5 8/4 8/5 ");
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
  EXPECT_EQ(marked(2026, 0, work), "5/4 5/5 ");
  EXPECT_EQ(count_days(source(), 46146, 46148, work, 0), (std::vector<int>{1, 1, 0}));
}

TEST_F(YearMarksTest, GivesUpForANewerRequest) {
  add(day(5, 4, 2026), day(5, 4, 2026), u"a");
  add(day(5, 5, 2026), day(5, 5, 2026), u"b");
  std::atomic<int> state{101};
  YearMarks marks;
  const auto stop = [&](TextView) { return state = 100, true; };
  EXPECT_FALSE(BuildYearMarks(2026, source(), stop, 0, state, marks));
  EXPECT_TRUE(marks.at(5, 4));
  EXPECT_FALSE(marks.at(5, 5));
  log.clear();
  EXPECT_FALSE(BuildYearMarks(2026, source(), {}, 0, state, marks));
  EXPECT_TRUE(log.empty());  // not even asked
  EXPECT_FALSE(marks.at(5, 4));
  state = 101;
  EXPECT_TRUE(BuildYearMarks(
      2026, [] { return nullptr; }, {}, 0, state, marks));
}

TEST_F(YearMarksTest, EachAppointmentCountsOnceADay) {
  add(day(5, 4, 2026, 9), day(5, 4, 2026, 10));
  add(day(5, 1, 2026), day(5, 5, 2026), {}, true);
  add(day(4, 1, 2026), day(6, 5, 2046));
  EXPECT_EQ(count_days(source(), 46146, 46148, {}, 0), (std::vector<int>{3, 2, 1}));
  EXPECT_EQ(count_days(source(), 46146, 46148, {}, 3), (std::vector<int>{3, 1, 1}));
  EXPECT_EQ(log.back(), u"[End] >= <46146 AND [Start] <= <46148");
  EXPECT_TRUE(count_days(source(), 46146, 46145, {}, 0).empty());
}

TEST_F(YearMarksTest, TheSnapshotAsksOnlyWhenMarksAreWanted) {
  SettingsRecord settings;
  const ScreenLayout screen = layout_screen({240, 292}, 96, 96, false);
  const auto take = [&] {
    return take_year_snapshot(source(), settings, screen, 2026, {11, 21, 2026}, {5, 4, 2026}, true);
  };
  add(day(5, 4, 2026), day(5, 4, 2026));
  EXPECT_FALSE(take().marks.at(5, 4));
  EXPECT_TRUE(log.empty());
  settings.coloryearview = 1;
  const YearSnapshot taken = take();
  EXPECT_TRUE(taken.marks.at(5, 4));
  log.clear();
  const YearSnapshot moved = select_in_year(taken, {5, 5, 2026}, false);
  EXPECT_EQ(moved.marks, taken.marks);
  EXPECT_EQ(moved.selected, (MonthDayYear{5, 5, 2026}));
  EXPECT_TRUE(log.empty());
}

}  // namespace
}  // namespace orvello
