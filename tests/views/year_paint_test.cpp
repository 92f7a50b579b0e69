#include "views/year_paint.h"

#include <gtest/gtest.h>

#include "tests/views/month_fixture.h"

namespace orvello {
namespace {

using Operation = DrawnOperation::Kind;

class YearPaintTest : public testing::Test {
 protected:
  YearSnapshot snapshot(TestScreen screen = kTestScreens[0], bool russian = false,
                        int year = 2026) const {
    MonthFixture parts(screen, russian);
    parts.settings.firstdayofweek = 1;
    parts.settings.coloryearview = 1;
    return year_snapshot_without_marks(parts.settings, parts.screen, year, {11, 21, 2026},
                                       {5, 13, 2026}, false);
  }
  static RecordingCanvas drawn(const YearSnapshot& snapshot) {
    RecordingCanvas canvas(snapshot.screen.work);
    const std::atomic<int> state{101};
    EXPECT_TRUE(DrawYearView(snapshot, canvas, state, {}));
    return canvas;
  }
  // The number drawn for a day: the one whose box is centred on the day's cell.
  static DrawnOperation number(const YearSnapshot& snapshot, const MonthDayYear& date) {
    const Rect place = cell_place(YearLayout(snapshot), date);
    for (const DrawnOperation& text : drawn(snapshot).of_kind(Operation::text))
      if (text.text == format(u"%d", date.day) && place.contains(text.box.center())) return text;
    ADD_FAILURE() << date.day << " is not drawn in its place";
    return {};
  }
};

TEST_F(YearPaintTest, EveryTextFitsOnEveryScreenInBothLanguages) {
  for (const TestScreen& screen : kTestScreens) {
    for (const bool russian : {false, true}) {
      for (const int year : {2026, 2034}) {
        YearSnapshot all = snapshot(screen, russian, year);
        for (int i = 0; i < 372; i += 2) all.marks.set(i / 31 + 1, i % 31 + 1);
        const RecordingCanvas canvas = drawn(all);
        const std::vector<Text> clipped = canvas.clipped_texts();
        EXPECT_TRUE(clipped.empty())
            << screen.work.width << " " << to_utf8(clipped.empty() ? u"" : clipped[0]);
        EXPECT_EQ(canvas.of_kind(Operation::text).size(), 1u + 12u + 365u);
        for (const DrawnOperation& text : canvas.of_kind(Operation::text))  // numbers keep apart
          ASSERT_TRUE(text.text.size() > 2 || text.box.width <= YearLayout(all).cell.width);
      }
    }
  }
}

TEST_F(YearPaintTest, AppointmentDaysDifferInColourAndWeight) {
  YearSnapshot year = snapshot();
  year.marks.set(3, 31);  // the later day of a double cell
  EXPECT_EQ(number(year, {3, 31, 2026}).color, year.color(ColorSlot::year_appointment_day_text));
  EXPECT_EQ(number(year, {3, 31, 2026}).style.font.weight, 700);
  EXPECT_EQ(number(year, {3, 24, 2026}).color, year.color(ColorSlot::year_day_text));
  EXPECT_EQ(number(year, {3, 24, 2026}).style.font.weight, 400);
  year.coloryearview = 0;
  EXPECT_EQ(number(year, {3, 31, 2026}).color, year.color(ColorSlot::year_day_text));
}

TEST_F(YearPaintTest, BackgroundsOfMonthsAndOfToday) {
  YearSnapshot year = snapshot();
  const YearLayout layout(year);
  const auto background = [&](const MonthDayYear& date) {
    return drawn(year).fill_at(cell_place(layout, date).center());
  };
  const Color first = year.color(ColorSlot::year_month_background_1);
  const Color second = year.color(ColorSlot::year_month_background_2);
  EXPECT_EQ(background({1, 7, 2026}), first);
  EXPECT_EQ(background({2, 7, 2026}), second);
  EXPECT_EQ(background({4, 7, 2026}), second);  // three to a row: a chess board
  EXPECT_EQ(background({5, 7, 2026}), first);
  EXPECT_EQ(background({11, 21, 2026}), year.color(ColorSlot::year_today_background));
  year.today = {11, 30, 2026};  // of a double cell, only its half
  EXPECT_EQ(background({11, 30, 2026}), year.color(ColorSlot::year_today_background));
  EXPECT_NE(background({11, 23, 2026}), year.color(ColorSlot::year_today_background));
}

TEST_F(YearPaintTest, TheFocusSurroundsTheSelectedDay) {
  YearSnapshot year = snapshot();
  EXPECT_TRUE(drawn(year).of_kind(Operation::frame).empty());
  year.focus_visible = true;
  const std::vector<DrawnOperation> frames = drawn(year).of_kind(Operation::frame);
  ASSERT_EQ(frames.size(), 2u);
  const Rect place = cell_place(YearLayout(year), year.selected);
  EXPECT_NE(frames[0].color, frames[1].color);
  for (const DrawnOperation& frame : frames) EXPECT_EQ(intersection(frame.box, place), place);

  // And in the Month view, above everything else.
  MonthFixture month;
  MonthSnapshot november = month.snapshot(11, 2026);
  november.selected = {11, 13, 2026};
  november.focus_visible = true;
  const RecordingCanvas canvas = draw_month(november).canvas;
  const DrawnOperation& last = canvas.operations().back();
  EXPECT_EQ(last.kind, Operation::frame);
  EXPECT_EQ(hit_month(MonthLayout(november), last.box.center()).date, november.selected);
  november.selected = {12, 1, 2026};  // not drawn
  EXPECT_NE(draw_month(november).canvas.operations().back().kind, Operation::frame);
}

TEST_F(YearPaintTest, AStaleDrawingIsGivenUpBetweenMonths) {
  const YearSnapshot year = snapshot();
  RecordingCanvas canvas(year.screen.work);
  std::atomic<int> state{101};
  EXPECT_FALSE(DrawYearView(year, canvas, state, [&] { state = 100; }));
  EXPECT_EQ(canvas.of_kind(Operation::text).size(), 1u + 1u + 31u);  // year, January, its days
}

}  // namespace
}  // namespace orvello
