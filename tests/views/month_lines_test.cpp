// The appointments that a cell of the Month view names.
#include "views/month_lines.h"

#include <gtest/gtest.h>

#include "draw/readable.h"
#include "tests/views/month_fixture.h"
#include "tests/views/scripted_items.h"

namespace orvello {
namespace {

class MonthLinesTest : public testing::Test {
 protected:
  MonthLinesTest() : month(kTestScreens[4]) {
    month.settings.timeformat = 1;
    month.settings.showindicator = 1;
    month.settings.firstdayofweek = 1;  // cell 15 is the 10th
  }

  void add(int oid, TextView subject, CalendarDate start, CalendarDate end, bool all_day = false,
           BusyStatus status = BusyStatus::busy) {
    const auto summary = std::make_shared<AppointmentSummary>();
    summary->oid = oid;
    summary->subject = subject;
    summary->all_day = all_day;
    summary->busy_status = status;
    answer.push_back({start, end, summary});
  }
  MonthSnapshot taken() {
    const MonthGrid grid = MonthGridRange(11, 2026, month.settings.showdays, 1);
    answers = {{period_restrictions(grid)[1], answer}};
    return take_month_snapshot([&] { return std::make_unique<ScriptedItems>(answers, log); },
                               month.settings, month.screen, 11, 2026, month.today)
        .value();
  }
  // "9:00 Dentist|Trip+2"
  static Text told(const MonthCellLines& lines) {
    Text text;
    for (const MonthLine& line : lines.first) {
      if (!text.empty()) text += u"|";
      text += line.time.empty() ? line.subject : line.time + u" " + line.subject;
    }
    return lines.more > 0 ? text + format(u"+%d", lines.more) : text;
  }

  MonthFixture month;
  std::vector<StoreItem> answer;
  ScriptedItems::Answers answers;
  std::vector<Text> log;
};

TEST_F(MonthLinesTest, WholeDaysComeFirstThenByStartAsManyAsFit) {
  add(1, u"Night train", at(11, 9, 2026, 21.5), at(11, 10, 2026, 6));
  add(2, u"Party", at(11, 9, 2026, 20), at(11, 10, 2026, 0));  // over as the 10th begins
  for (int hour = 8; hour < 14; ++hour)
    add(hour, format(u"at\n%d", hour), at(11, 10, 2026, hour), at(11, 10, 2026, hour + 1));
  add(20, u"Trip", at(11, 10, 2026), at(11, 11, 2026, 23.98), true);
  add(21, u"Free", at(11, 11, 2026), at(11, 11, 2026, 23.98), true, BusyStatus::free);
  MonthSnapshot snapshot = taken();
  EXPECT_EQ(told(snapshot.lines[14]), u"20:00 Party|21:30 Night train");
  EXPECT_EQ(told(snapshot.lines[15]), u"Trip|Night train|8:00 at 8|9:00 at 9+4");
  EXPECT_EQ(told(snapshot.lines[16]), u"Trip|Free");
  month.settings.showfree = 0;
  month.settings.showindicator = 0;  // nothing but lines then, to the end of the cell
  snapshot = taken();
  EXPECT_EQ(told(snapshot.lines[15]), u"Trip|Night train|8:00 at 8|9:00 at 9|10:00 at 10+3");
  EXPECT_EQ(told(snapshot.lines[16]), u"Trip");
  month.screen = layout_screen({480, 584}, 192, 192, false);
  EXPECT_TRUE(taken().lines.empty());  // a handheld keeps to the shape of the day
}

TEST_F(MonthLinesTest, AProfileThatHidesAllTheDaysShownIsTold) {
  month.settings.activeprofilename = u"Work";
  add(1, u"Next month", at(12, 1, 2026, 9), at(12, 1, 2026, 10));
  EXPECT_FALSE(taken().all_hidden);
  month.settings.showdays = 1;
  EXPECT_TRUE(taken().all_hidden);
  month.screen = layout_screen({240, 292}, 96, 96, false);
  EXPECT_TRUE(taken().all_hidden);
  month.settings.profile_labels = {u""};
  EXPECT_FALSE(taken().all_hidden);
}

TEST_F(MonthLinesTest, TheyKeepOffNumbersBarsAndIconsAtEveryWindowSize) {
  month.settings.showholiday = 1;
  month.label_slots(6);
  for (int n = 0; n < 60; ++n) {
    add(n + 1, Text(static_cast<std::size_t>(n == 0 ? 1 : 200), u'W'), at(11, 10, 2026, 9),
        at(11, 10, 2026, 10));
    const auto named = std::make_shared<AppointmentSummary>(*answer.back().summary);
    named->categories = Text(1, static_cast<char16_t>(u'A' + n % 6));
    answer.back().summary = named;
  }
  int with_lines = 0;
  for (int width = 200; width <= 2000; width += 150) {
    for (int height = 180; height <= 1200; height += 85) {
      month.screen = layout_screen({width, height}, 96, 96, false);
      const MonthSnapshot snapshot = taken();
      const MonthLayout layout(snapshot);
      if (snapshot.lines.empty()) continue;
      ++with_lines;
      const DrawnMonth drawn = draw_month(snapshot);
      const MonthCell& cell = layout.cells[15];
      const Rect number = cell.number;
      std::vector<Rect> taken_places = {
          {number.x, number.y, number.width, layout.number_font.height}};
      for (const DrawnOperation& icon : drawn.canvas.of_kind(DrawnOperation::Kind::image))
        if (cell.box.contains(icon.box.center())) taken_places.push_back(icon.box);
      const BarBand& bars = layout.bars;
      taken_places.push_back({cell.box.x,
                              cell.box.y + bars.lanes_bottom - bars.lanes * bars.lane_pitch,
                              cell.box.width, bars.lanes * bars.lane_pitch});
      for (const DrawnOperation& text : drawn.canvas.of_kind(DrawnOperation::Kind::text)) {
        if (!cell.box.contains(text.box.center()) || text.text == u"10") continue;
        EXPECT_LE(text.text_size.width, text.box.width);
        EXPECT_EQ(intersection(text.box, cell.box), text.box);
        for (const Rect& place : taken_places)
          EXPECT_TRUE(intersection(place, text.box).empty())
              << width << "x" << height << " " << to_utf8(text.text);
      }
    }
  }
  EXPECT_GT(with_lines, 60);
}

TEST_F(MonthLinesTest, APointOnALineMeansItsAppointment) {
  add(7, u"Dentist", at(11, 10, 2026, 9), at(11, 10, 2026, 10));
  add(8, u"Many", at(11, 10, 2026, 10), at(11, 10, 2026, 11));
  answer.back().many = 100;
  const MonthSnapshot snapshot = taken();
  const MonthLayout layout(snapshot);
  const auto key_at = [&](int cell, int n) {
    const Rect place = month_line_place(layout, layout.cells[cell], n);
    const MonthLine* line = month_line_at(snapshot, layout, place.center());
    return line ? line->key : RowKey();
  };
  EXPECT_EQ(key_at(15, 0), (RowKey{7, at(11, 10, 2026, 9)}));
  EXPECT_EQ(key_at(15, 1), (RowKey{8, kNoDate}));  // stands for none of them alone
  EXPECT_FALSE(key_at(15, 2));
  EXPECT_FALSE(key_at(16, 0));
}

}  // namespace
}  // namespace orvello
