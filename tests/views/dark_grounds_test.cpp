// What no colour is chosen for follows a dark scheme.
#include <gtest/gtest.h>

#include "draw/readable.h"
#include "hosts/headless/recording_canvas.h"
#include "resources/strings.h"
#include "settings/color_schemes.h"
#include "tests/views/month_fixture.h"
#include "views/day_list.h"
#include "views/month_bars.h"
#include "views/month_cells.h"
#include "views/row_colors.h"

namespace orvello {
namespace {

TEST(DarkGrounds, ADayWithoutAppointmentsOrColorsIsNotWhite) {
  SettingsRecord settings;
  settings.item_colors = dark_scheme().colors;
  settings.rowcolorindex = static_cast<std::int32_t>(RowColorStyle::by_category);
  const Color row = settings.color(ColorSlot::day_row_1);
  const ScreenLayout screen = layout_screen({240, 291}, 96, 96, false);
  RecordingCanvas canvas({1, 1});
  for (const auto kind : {DayRow::Kind::nothing, DayRow::Kind::timed}) {
    DayAgenda agenda;
    agenda.rows.resize(1);
    agenda.rows[0].kind = kind;
    agenda.row_ends = {46347};
    agenda.row_colors = {kWhite};  // of no category
    agenda.row_shades = {0};
    const ReportContent content =
        day_list_content(agenda, {settings, screen, {{240, 273}, 13, 1}, 46347.5}, canvas);
    EXPECT_EQ(content.rows[0].background, row);
    EXPECT_EQ(content.rows[0].text, settings.color(ColorSlot::day_appointment_text));
  }
}

TEST(DarkGrounds, IconsAndTodaysNumbersAreSeen) {
  MonthFixture month;
  month.settings.item_colors = dark_scheme().colors;
  month.settings.showindicator = month.settings.showdays = month.settings.coloroffdays = 1;
  month.settings.weeknumberformat = 1;
  for (const MonthDayYear& today : {MonthDayYear{11, 1, 2026}, MonthDayYear{12, 5, 2026}}) {
    month.today = today;
    const MonthSnapshot snapshot = month.snapshot(11, 2026);
    RecordingCanvas canvas(snapshot.screen.work);
    const std::atomic<int> undisturbed{kDrawing};
    DrawMonthView(snapshot, canvas, undisturbed, {});
    int seen = 0;
    for (const DrawnOperation& text : canvas.of_kind(DrawnOperation::Kind::text)) {
      const auto ground = canvas.fill_at(text.box.center());
      if (!ground) continue;
      ++seen;
      EXPECT_GE(contrast(*ground, text.style.color), 4.5) << to_utf8(text.text);
    }
    EXPECT_GT(seen, 42);
  }
  // Outlines of pictures are lighter there, and as they were made on paper.
  const Image outline{1, 1, {rgb(28, 28, 48)}}, hole{1, 1, {kMagenta}};
  EXPECT_GE(contrast(kBlack, visible_on(kBlack, outline).pixels[0]), kOutlineContrast);
  EXPECT_EQ(visible_on(kWhite, outline), outline);
  EXPECT_EQ(visible_on(kBlack, hole), hole);
}

// Bars of all kinds and colours, and the lines that name them, in cells of every ground: of either
// row, of weekends, of the neighbouring months, and today's.
TEST(EveryGround, ShowsBarsAndNames) {
  MonthFixture month(kTestScreens[4]);
  month.settings.showindicator = month.settings.showdays = 1;
  month.settings.usecategorycolorforbar = 1;
  const auto channel = [](int n) { return n % 3 * 255 / 2; };
  for (int n = 0; n < 27; ++n) {
    const Text label = format(u"c%d", n);
    const Color color = rgb(channel(n), channel(n / 3), channel(n / 9));
    month.settings.category_props.push_back({label, static_cast<std::int32_t>(color), 1});
  }
  for (int day = -7; day < 42; ++day) {
    const CalendarDate date = at(11, 1, 2026) + day;
    for (int n = 0; n < 27; ++n) {
      const Text label = format(u"c%d", n);
      month.add(joined(whole_day(date), n / 27.0), joined(whole_day(date), (n + 0.5) / 27), label);
    }
    month.add(date, date, format(u"c%d", (day + 7) % 27), true, static_cast<BusyStatus>(day & 3));
  }
  for (const ColorScheme& scheme : color_schemes()) {
    SCOPED_TRACE(to_utf8(load_string(scheme.name, Language::english)));
    month.settings.item_colors = scheme.colors;
    for (int style : {0, 1}) {
      month.settings.calendarcolorstyle = style;
      for (const MonthDayYear& today : {MonthDayYear{11, 11, 2026}, {11, 1, 2026}, {12, 5, 2026}}) {
        month.today = today;
        MonthSnapshot snapshot = month.snapshot(11, 2026);
        const MonthLayout layout(snapshot);
        MonthLine line;
        line.subject = u"x";
        snapshot.lines.assign(layout.cells.size(), {{line}, 3});
        const DrawnMonth drawn = draw_month(snapshot);
        int texts = 0;
        for (const DrawnOperation& text : drawn.canvas.of_kind(DrawnOperation::Kind::text)) {
          if (text.text != u"x" && text.text != u"+3") continue;
          ++texts;
          EXPECT_GE(contrast(*drawn.canvas.fill_at(text.box.center()), text.color), 4.5);
        }
        EXPECT_EQ(texts, 2 * 42);
        MonthBars bars(snapshot, layout);
        for (const PeriodItem& item : snapshot.period.items)
          bars.add(item, cells_of(item, layout.grid));
        for (const MonthCell& cell : layout.cells) {
          const auto index = static_cast<int>(&cell - layout.cells.data());
          const Color ground = cell_background(snapshot, cell);
          const std::vector<MonthBar> found = bars.bars_of(index);
          EXPECT_GT(found.size(), 20u);
          for (const MonthBar& bar : found) {
            const bool axis = bar.box.y == cell.box.y + layout.bars.axis_top;
            EXPECT_GE(contrast(ground, bar.color), axis ? 1.5 : 3);
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace orvello
