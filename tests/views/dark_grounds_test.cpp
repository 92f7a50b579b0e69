// What no colour is chosen for follows a dark scheme.
#include <gtest/gtest.h>

#include "draw/readable.h"
#include "hosts/headless/recording_canvas.h"
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

TEST(DarkGrounds, BarsIconsAndTodaysNumbersAreSeen) {
  MonthFixture month;
  month.settings.item_colors = dark_scheme().colors;
  month.settings.showindicator = month.settings.showdays = month.settings.coloroffdays = 1;
  month.settings.weeknumberformat = 1;
  month.settings.usecategorycolorforbar = 1;
  month.settings.category_props = {{u"Deep", static_cast<std::int32_t>(rgb(0, 0, 120)), 1}};
  month.add(46344.4, 46344.5, u"Deep");
  month.add(46344.6, 46344.7);
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
    const MonthLayout layout(snapshot);
    MonthBars bars(snapshot, layout);
    for (const PeriodItem& item : snapshot.period.items)
      bars.add(item, cells_of(item, layout.grid));
    for (int cell = 0; cell < static_cast<int>(layout.cells.size()); ++cell)
      for (const MonthBar& bar : bars.bars_of(cell))
        EXPECT_GE(contrast(cell_background(snapshot, layout.cells[cell]), bar.color), 3);
  }
  // Outlines of pictures are lighter there, and as they were made on paper.
  const Image outline{1, 1, {rgb(28, 28, 48)}}, hole{1, 1, {kMagenta}};
  EXPECT_GE(contrast(kBlack, visible_on(kBlack, outline).pixels[0]), kOutlineContrast);
  EXPECT_EQ(visible_on(kWhite, outline), outline);
  EXPECT_EQ(visible_on(kBlack, hole), hole);
}

}  // namespace
}  // namespace orvello
