#include "views/month_paint.h"

#include <gtest/gtest.h>

#include "tests/views/month_fixture.h"

namespace orvello {
namespace {

using Kind = DrawnOperation::Kind;

std::vector<Text> texts_of(const DrawnMonth& drawn) {
  std::vector<Text> texts;
  for (const DrawnOperation& text : drawn.canvas.of_kind(Kind::text)) texts.push_back(text.text);
  return texts;
}

const DrawnOperation* find_text(const std::vector<DrawnOperation>& texts, TextView wanted) {
  for (const DrawnOperation& text : texts)
    if (text.text == wanted) return &text;
  return nullptr;
}

TEST(MonthPaint, EveryTextFitsOnEveryScreenInBothLanguages) {
  for (const TestScreen& screen : kTestScreens) {
    for (const bool russian : {false, true}) {
      MonthFixture month(screen, russian);
      month.settings.showdays = 1;
      month.settings.weeknumberformat = 1;
      for (int m = 1; m <= 12; ++m) {
        const DrawnMonth drawn = draw_month(month.snapshot(m, 2028));
        EXPECT_TRUE(drawn.finished);
        const std::vector<Text> clipped = drawn.canvas.clipped_texts();
        EXPECT_TRUE(clipped.empty())
            << screen.work.width << " " << to_utf8(clipped.empty() ? u"" : clipped[0]);
      }
    }
  }
}

TEST(MonthPaint, HeaderNamesTheMonthAndItsNeighbours) {
  MonthFixture month(kTestScreens[0], true);
  month.settings.firstdayofweek = 1;
  const DrawnMonth drawn = draw_month(month.snapshot(12, 2026));
  const std::vector<DrawnOperation> texts = drawn.canvas.of_kind(Kind::text);
  for (const TextView wanted : {u"дек", u"2025", u"2027", u"Декабрь 2026", u"пон", u"вос"})
    EXPECT_TRUE(find_text(texts, wanted)) << to_utf8(wanted);
  EXPECT_EQ(find_text(texts, u"2027")->style.align, Align::right);
  EXPECT_LT(find_text(texts, u"пон")->box.x, find_text(texts, u"вос")->box.x);

  // The shown month is underlined in yellow, inside its column.
  const std::vector<DrawnOperation> lines = drawn.canvas.of_kind(Kind::polyline);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].color, rgb(255, 255, 0));
  EXPECT_EQ(lines[0].width, 2);
  EXPECT_GE(lines[0].points[0].x, 220);
  EXPECT_LE(lines[0].points[1].x, 240);

  // The arrows lie between the years and the title, and touch neither.
  const MonthLayout layout(month.snapshot(12, 2026));
  const std::vector<DrawnOperation> arrows = drawn.canvas.of_kind(Kind::image);
  ASSERT_EQ(arrows.size(), 3u) << "and today, which is elsewhere";
  EXPECT_GE(arrows[2].box.x, find_text(texts, u"Декабрь 2026")->box.right());
  EXPECT_LE(arrows[2].box.right(), layout.title.right());
  EXPECT_GT(arrows[0].box.x, layout.previous_year.x + find_text(texts, u"2025")->text_size.width);
  EXPECT_LE(arrows[0].box.right(), layout.title.x);
  EXPECT_LT(arrows[1].box.right(),
            layout.next_year.right() - find_text(texts, u"2027")->text_size.width);
  EXPECT_GE(arrows[1].box.x, layout.title.right());
  EXPECT_EQ(draw_month(month.snapshot(11, 2026)).canvas.of_kind(Kind::image).size(), 2u);
}

TEST(MonthPaint, BackgroundsFollowRowsOrWeekends) {
  MonthFixture month;
  const auto background = [&](int row, int column, int firstdayofweek) {
    month.settings.firstdayofweek = firstdayofweek;
    const MonthSnapshot snapshot = month.snapshot(11, 2026);
    return draw_month(snapshot).canvas.fill_at(
        MonthLayout(snapshot).cells[row * 7 + column].box.center());
  };
  const Color first = month.settings.color(ColorSlot::month_date_background_1);
  const Color second = month.settings.color(ColorSlot::month_date_background_2);
  EXPECT_EQ(background(0, 3, 0), first);
  EXPECT_EQ(background(1, 3, 0), second);
  EXPECT_EQ(background(2, 3, 0), first);
  month.settings.calendarcolorstyle = 1;
  EXPECT_EQ(background(1, 3, 0), first);
  EXPECT_EQ(background(1, 0, 0), second);
  EXPECT_EQ(background(1, 5, 0), first);
  EXPECT_EQ(background(1, 5, 1), second);
  EXPECT_EQ(background(1, 0, 1), first);
}

TEST(MonthPaint, TodayAndTheNeighbouringMonths) {
  MonthFixture month;
  month.settings.firstdayofweek = 1;
  const Color today = month.settings.color(ColorSlot::month_today_background);
  const auto cell_color = [&](int cell) {
    const MonthSnapshot snapshot = month.snapshot(11, 2026);  // day 1 is a Sunday: cell 6
    return draw_month(snapshot).canvas.fill_at(MonthLayout(snapshot).cells[cell].box.center());
  };
  EXPECT_EQ(cell_color(26), today);
  EXPECT_EQ(cell_color(5), kWhite);
  month.settings.showdays = 1;
  EXPECT_EQ(cell_color(5), month.settings.color(ColorSlot::month_off_background));
  month.today = {10, 31, 2026};
  EXPECT_EQ(cell_color(5), today);
  EXPECT_NE(cell_color(26), today);
  month.today = {11, 21, 2025};  // the day of another year is not today
  EXPECT_NE(cell_color(26), today);
}

TEST(MonthPaint, DaysAndWeeksAreNumbered) {
  MonthFixture month;
  month.settings.showdays = 1;
  month.settings.firstdayofweek = 1;
  month.settings.weeknumberformat = 1;
  const DrawnMonth drawn = draw_month(month.snapshot(12, 2026));
  std::vector<Text> texts = texts_of(drawn);
  texts.erase(texts.begin(), texts.end() - 48);
  // 30 November leads, ten days of January follow; then the six weeks.
  EXPECT_EQ(texts[0], u"30");
  EXPECT_EQ(texts[31], u"31");
  EXPECT_EQ(texts[32], u"1");
  EXPECT_EQ(texts[41], u"10");
  EXPECT_EQ(std::vector<Text>(texts.begin() + 42, texts.end()),
            (std::vector<Text>{u"49", u"50", u"51", u"52", u"53", u"1"}));
  month.settings.weeknumberformat = 0;
  EXPECT_EQ(texts_of(draw_month(month.snapshot(12, 2026))).size() + 6, texts_of(drawn).size());
}

TEST(MonthPaint, DaysOffStandOutWhenAsked) {
  MonthFixture month;
  const auto color_of = [&](TextView day) {
    const DrawnMonth drawn = draw_month(month.snapshot(11, 2026));
    return find_text(drawn.canvas.of_kind(Kind::text), day)->color;
  };
  const Color plain = month.settings.color(ColorSlot::month_date_text);
  EXPECT_EQ(color_of(u"22"), plain);
  month.settings.coloroffdays = 1;
  EXPECT_EQ(color_of(u"22"), month.settings.color(ColorSlot::month_week_number_text));
  EXPECT_EQ(color_of(u"23"), plain);
}

TEST(MonthPaint, AStaleDrawingIsGivenUpBetweenItems) {
  for (const int bars : {0, 1}) {
    MonthFixture month;
    month.settings.showholiday = 1;
    month.settings.showindicator = bars;
    month.label_slots(2);
    month.add(at(11, 10, 2026, 9), at(11, 10, 2026, 10), u"A");
    month.add(at(11, 11, 2026, 9), at(11, 11, 2026, 10), u"B");
    const MonthSnapshot snapshot = month.snapshot(11, 2026);
    const auto draw = [&](int progress_calls) {
      RecordingCanvas canvas(snapshot.screen.work);
      std::atomic<int> state{progress_calls == 0 ? 100 : 101};
      const bool finished = DrawMonthView(snapshot, canvas, state, [&] {
        if (--progress_calls == 0) state = 100;
      });
      return std::pair{finished, canvas.of_kind(Kind::image).size()};
    };
    const std::size_t arrows = 2;
    EXPECT_EQ(draw(-1), (std::pair{true, arrows + 2}));
    EXPECT_EQ(draw(0), (std::pair{false, arrows}));  // before the pass
    EXPECT_EQ(draw(1), (std::pair{false, arrows}));  // as the grid stands
    if (bars == 0) {
      EXPECT_EQ(draw(2), (std::pair{false, arrows + 1}));
    }
  }
}

}  // namespace
}  // namespace orvello
