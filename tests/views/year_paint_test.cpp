#include "views/year_paint.h"

#include <gtest/gtest.h>

#include "draw/readable.h"
#include "resources/strings.h"
#include "settings/color_schemes.h"
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
        for (int i = 0; i < 372; i += 2) all.marks.add(i / 31 + 1, i % 31 + 1);
        const RecordingCanvas canvas = drawn(all);
        const std::vector<Text> clipped = canvas.clipped_texts();
        EXPECT_TRUE(clipped.empty())
            << screen.work.width << " " << to_utf8(clipped.empty() ? u"" : clipped[0]);
        const std::size_t letters = screen.work.width < 1000 ? 0 : 12 * 7;
        EXPECT_EQ(canvas.of_kind(Operation::text).size(), 1u + 12u + 365u + letters);
        for (const DrawnOperation& text : canvas.of_kind(Operation::text))  // numbers keep apart
          ASSERT_TRUE(text.text.size() > 2 || text.box.width <= YearLayout(all).cell.width);
      }
    }
  }
}

// Marked days keep their colour, the others step back but stay readable, on every ground; busy days
// have a line where there is room for one.
TEST_F(YearPaintTest, MarkedDaysAreToldFromTheOthers) {
  for (const ColorScheme& scheme : color_schemes()) {
    SCOPED_TRACE(to_utf8(load_string(scheme.name, Language::english)));
    YearSnapshot year = snapshot();
    year.colors = scheme.colors;
    year.marks.add(3, 31);  // the later day of a double cell
    const Color ground = year.color(ColorSlot::year_month_background_1);
    const Color plain = year.color(ColorSlot::year_day_text);
    const Color marked = number(year, {3, 31, 2026}).color,
                other = number(year, {3, 24, 2026}).color;
    EXPECT_EQ(marked, legible_on(ground, year.color(ColorSlot::year_appointment_day_text)));
    EXPECT_GE(contrast(ground, other), 4.5);
    EXPECT_LT(contrast(ground, other), contrast(ground, plain));
    year.coloryearview = 0;
    for (const int day : {24, 31}) EXPECT_EQ(number(year, {3, day, 2026}).color, plain);
  }
  for (const bool large : {false, true}) {
    YearSnapshot year = snapshot(kTestScreens[large ? 4 : 0]);
    const std::size_t before = drawn(year).of_kind(Operation::fill).size();
    for (int n = 0; n < kBusyDay; ++n) {
      EXPECT_EQ(drawn(year).of_kind(Operation::fill).size(), before);
      year.marks.add(3, 12);
    }
    EXPECT_EQ(drawn(year).of_kind(Operation::fill).size(), before + large);
  }
}

// Of a large window, above the days; the weekend's columns are set apart on every screen.
TEST_F(YearPaintTest, LettersAndWeekends) {
  for (const TestScreen& screen : kTestScreens) {
    for (const int monday : {0, 1}) {
      MonthFixture parts(screen);
      parts.settings.firstdayofweek = monday;
      const YearSnapshot year =
          year_snapshot_without_marks(parts.settings, parts.screen, 2026, {}, {}, false);
      const YearLayout layout(year);
      const RecordingCanvas canvas = drawn(year);
      Text letters;
      for (const DrawnOperation& text : canvas.of_kind(Operation::text))
        if (layout.months[4].names.contains(text.box.center())) letters += text.text;
      EXPECT_EQ(letters, screen.work.width < 1000 ? u"" : monday ? u"MTWTFSS" : u"SMTWTFS");
      // The 2nd of May 2026 is a Saturday: a line stands before it, and none before the Friday.
      const Rect saturday = cell_place(layout, {5, 2, 2026});
      const Color ground = year.color(ColorSlot::year_month_background_1);
      const auto at_left_of = [&](const Rect& place) {
        return canvas.fill_at({place.x, place.y}).value_or(ground);
      };
      const Color beside = at_left_of(cell_place(layout, {5, 1, 2026}));
      EXPECT_GE(contrast(beside, at_left_of(saturday)), 1.15) << screen.work.width;
    }
  }
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
