#include "views/day_popup_list.h"

#include <gtest/gtest.h>

#include "hosts/headless/recording_canvas.h"
#include "settings/colors.h"

namespace orvello {
namespace {

// Whatever the rows hold, the popup's columns fill its width and no more, and no text is cut off.
TEST(DayPopupList, EveryRowIsReadAtTheHandheldsWidth) {
  SettingsRecord settings;
  ResetItemColors(settings, 1000);
  settings.wrapsubject = 1;
  const ScreenLayout screen = layout_screen({240, 291}, 96, 96, false);
  RecordingCanvas canvas({1, 1});
  const Text words = u"Weekly planning with Anna-Maria and the others about the cake";
  const std::vector<CompactRow> days[] = {
      {{u"No Appointments", {}, DayRow::Kind::nothing}},
      {{u"10:00a-11:15a", u"X"}},
      {{u"10:00a-multiday", words}, {u"All Day", Text(200, u'W')}},
      std::vector<CompactRow>(60, {u"9:00a-9:15a", words})};
  for (settings.dvfontsize = 8; settings.dvfontsize <= 16; settings.dvfontsize += 4) {
    for (const auto& rows : days) {
      SCOPED_TRACE(testing::Message() << rows.size() << " rows at " << settings.dvfontsize);
      const ReportContent shown = day_popup_content({rows, settings, screen}, {232, 200}, canvas);
      ASSERT_EQ(shown.rows.size(), rows.size());
      EXPECT_EQ(shown.columns[0].width + shown.columns[1].width, 232);
      for (const ReportRow& row : shown.rows) {
        const FontSpec& font = row.bold ? shown.bold_font : shown.font;
        EXPECT_GE(row.height, 27);
        EXPECT_LE(lines_of(row) * font.height * 12 / 10, row.height);
        for (std::size_t i = 0; i < 2; ++i) {
          for (const Text& line : split(row.cells[i], u'\n')) {
            if (line.empty()) continue;
            EXPECT_LE(canvas.measure(line, font).width + 2 * shown.padding, shown.columns[i].width);
          }
        }
      }
      EXPECT_EQ(shown.rows[0].name.substr(0, rows[0].time.size()), rows[0].time);
    }
  }
}

}  // namespace
}  // namespace orvello
