#include "views/day_list.h"

#include <gtest/gtest.h>

#include "draw/readable.h"
#include "hosts/headless/recording_canvas.h"
#include "settings/color_schemes.h"
#include "settings/colors.h"

namespace orvello {
namespace {

struct DayListTest : testing::Test {
  using Kind = DayRow::Kind;
  DayListTest() {
    ResetItemColors(settings, 1000);
    settings.time_fraction = {0.25, 0.5, 17.0 / 24, 21.0 / 24};
    settings.notes_glyph = settings.reminder_glyph = Image{8, 8, std::vector<Color>(64)};
    settings.builtin_icons = Image{18, 9, std::vector<Color>(162)};
    settings.builtin_icon_count = 2;
    settings.displayicon[3] = 1;
    settings.displayiconstring[3] = u"Work";
  }
  void add(TextView time, TextView subject, CalendarDate end, TextView icons = u"",
           TextView location = u"") {
    const auto oid = static_cast<std::int32_t>(agenda.rows.size()) + 1;
    agenda.emptiness = DayAgenda::Emptiness::has_rows;
    const Kind kind = time == u"All Day" ? Kind::all_day : Kind::timed;
    agenda.rows.push_back({Text(time), Text(icons), Text(subject), oid, u"Work", kind});
    if (!location.empty())
      agenda.rows.push_back({{}, u" ", Text(location), oid, u"Work", Kind::location});
    agenda.row_ends.resize(agenda.rows.size(), end);
    agenda.row_colors.resize(agenda.rows.size(), rgb(0, 0, 90));
    agenda.row_shades = build_row_shades(agenda.rows);
  }
  ReportContent content() {
    const DayListInput input{settings, screen, place, now};
    return day_list_content(agenda, input, canvas);
  }

  ScreenLayout screen = layout_screen({240, 291}, 96, 96, false);
  ReportPlace place{{240, 273}, 13, 1};
  CalendarDate now = 46347.5;
  SettingsRecord settings;
  DayAgenda agenda;
  RecordingCanvas canvas{{1, 1}};
};

TEST_F(DayListTest, EachStyleColoursItsOwnWay) {
  add(u"9:00-10:00", u"Morning", 46347 + 10.0 / 24);
  add(u"12:00-13:00", u"Noon", 46347 + 13.0 / 24);
  add(u"19:00-20:00", u"Late", 46347 + 20.0 / 24);
  const auto backgrounds = [&](int style) {
    settings.rowcolorindex = style;
    std::vector<Color> colors;
    for (const ReportRow& row : content().rows) colors.push_back(row.background);
    return colors;
  };
  const Color normal = rgb(214, 222, 239), alternate = rgb(247, 255, 247);
  EXPECT_EQ(backgrounds(0), (std::vector<Color>{alternate, normal, alternate}));
  const auto times = backgrounds(1);
  EXPECT_EQ(times[0], alternate);
  EXPECT_EQ(times[1], normal);
  EXPECT_NE(times[2], times[0]);
  EXPECT_NE(times[2], times[1]);
  EXPECT_EQ(backgrounds(2), std::vector<Color>(3, rgb(0, 0, 90)));
  EXPECT_EQ(content().rows[0].text, kWhite);  // black on the category's dark blue is unreadable
  EXPECT_EQ(backgrounds(3), std::vector<Color>(3, normal));
}

TEST_F(DayListTest, TextColoursGoByPrecedence) {
  add(u"All Day", u"Fair", 46347.99, u"", u"[Hall]");
  add(u"9:00-10:00", u"Over", 46347.4, u"", u"[Room]");
  const Color all_day = rgb(0, 0, 170), location = rgb(247, 0, 0), expired = rgb(128, 128, 128);
  auto rows = content().rows;
  EXPECT_EQ(rows[0].text, all_day);
  EXPECT_EQ(rows[1].text, location);
  EXPECT_EQ(rows[2].text, kBlack);
  settings.colorexpired = 1;
  rows = content().rows;
  EXPECT_EQ(rows[0].text, all_day);
  EXPECT_EQ(rows[2].text, expired);
  EXPECT_EQ(rows[3].text, expired);  // a location too, as that is looked at last
  EXPECT_EQ(rows[3].background, rows[2].background);
  EXPECT_FALSE(rows[1].line_above.has_value());
  EXPECT_TRUE(rows[2].line_above.has_value());
}

TEST_F(DayListTest, WrappedPiecesKeepColourOidEndAndPlace) {
  settings.wrapsubject = 1;
  add(u"All Day", u"A subject that is much too long for its column", 46347.99);
  add(u"9:00-10:00", u"Short", 46347.4);
  add(u"9:00-10:00", u"Onewordthatislongerthanthewholecolumnofsubjects", 46347.4);
  const ReportContent shown = content();
  std::size_t first = 0, second = 0;
  while (agenda.rows[++second].continues()) continue;
  EXPECT_GT(second, 1u);
  Text joined = agenda.rows[0].subject;
  for (std::size_t i = 1; i < second; ++i) {
    EXPECT_EQ(agenda.rows[i].oid, agenda.rows[0].oid);
    EXPECT_EQ(agenda.row_ends[i], agenda.row_ends[0]);
    EXPECT_EQ(agenda.row_shades[i], agenda.row_shades[0]);
    EXPECT_EQ(shown.rows[i].text, shown.rows[first].text);
    EXPECT_TRUE(agenda.rows[i].time.empty() && agenda.rows[i].icons.empty());
    joined += u" " + agenda.rows[i].subject;
  }
  EXPECT_EQ(joined, u"A subject that is much too long for its column");  // broken at blanks
  EXPECT_EQ(agenda.rows[second].subject, u"Short");
  EXPECT_GT(agenda.rows.size(), second + 2);  // the long word is broken too
  EXPECT_EQ(agenda.rows.size(), agenda.row_colors.size());
  EXPECT_EQ(agenda.rows.size(), agenda.row_ends.size());
  for (const ReportRow& row : shown.rows)
    EXPECT_LE(canvas.measure(row.cells[2], shown.font).width + 2 * shown.padding,
              shown.columns[2].width);
  // Alone a row has room for a finger, and so have the rows of an appointment together.
  EXPECT_GE(shown.rows[second].height, 27);
  EXPECT_EQ(rows_of_appointment(agenda, 1)[0], 1);
  EXPECT_EQ(rows_of_appointment(agenda, 1).size(), second);
}

// What a row does not have keeps its place, so that bells stand below bells.
TEST_F(DayListTest, PicturesHaveTheirPlacesAndAreNeverCutOff) {
  settings.usecategorycolorforbar = 1;
  add(u"9:00-10:00", u"All of them", 46347.4, u"nrc");
  add(u"9:00-10:00", u"A bell", 46347.4, u"r");
  agenda.row_colors[1] = kWhite;
  agenda.notes_seen = true;
  const ReportContent shown = content();
  const auto place_of = [&](std::size_t row, std::size_t picture) {
    int x = 0;
    for (std::size_t i = 0; i < picture; ++i)
      x += shown.pictures[static_cast<std::size_t>(shown.rows[row].pictures[i])].width + 2;
    return x;
  };
  ASSERT_EQ(shown.rows[0].pictures.size(), 4u);
  ASSERT_EQ(shown.rows[1].pictures.size(), 4u);
  EXPECT_EQ(shown.rows[1].pictures[2], shown.rows[0].pictures[2]) << "the bell";
  EXPECT_EQ(place_of(1, 2), place_of(0, 2));
  EXPECT_EQ(place_of(1, 4), place_of(0, 4));
  EXPECT_EQ(shown.columns[1].width, 3 + 2 + 8 + 2 + 8 + 2 + 9);
  EXPECT_EQ(to_utf8(shown.rows[0].name), "9:00-10:00 All of them, Notes, Reminder, Work");
  EXPECT_EQ(to_utf8(shown.rows[1].name), "9:00-10:00 A bell, Reminder");
  for (DayRow& row : agenda.rows) row.icons.clear();
  agenda.row_colors[0] = kWhite;
  agenda.notes_seen = false;
  EXPECT_EQ(content().columns[1].width, 1);
}

// Where a list is narrow, times that make way for subjects go on in the next row, in their colour.
TEST_F(DayListTest, TimesMakeWayForSubjectsOnANarrowList) {
  settings.wrapsubject = settings.showlocation = 1;
  add(u"10:00a-10:30a", u"Piano lesson Anna", 46347.4, u"", u"[Music school]");
  add(u"All Day", u"Fair", 46347.99);
  add(u"11:00a-11:30a", u"Yoga", 46347.5);
  const ReportContent shown = content();
  ASSERT_EQ(shown.rows.size(), 5u);
  EXPECT_EQ(shown.rows[3].cells[0], u"11:00a-");
  EXPECT_EQ(shown.rows[4].cells[0], u"11:30a");
  EXPECT_EQ(shown.rows[0].cells[0], u"10:00a-");
  EXPECT_EQ(shown.rows[1].cells[0], u"10:30a");
  EXPECT_EQ(shown.rows[1].first_text, shown.rows[0].text);
  EXPECT_EQ(agenda.rows[0].time, u"10:00a-10:30a");
  EXPECT_EQ(to_utf8(shown.rows[0].name), "10:00a-10:30a Piano lesson Anna, [Music school]");
  agenda = {};
  add(u"10:00a-10:30a", u"Yoga", 46347.4);
  EXPECT_EQ(content().rows[0].cells[0], u"10:00a-10:30a") << "it would only be higher";
  place.size.width = 1000;
  agenda = {};
  add(u"9:00a-9:30a", u"Yoga", 46347.4);
  const int subjects_begin = content().columns[0].width;
  add(u"10:00a-10:30a", u"Yoga", 46347.4);
  EXPECT_EQ(content().columns[0].width, subjects_begin) << "the same from day to day";
}

// Whatever the style, the scheme and the category's colour.
TEST_F(DayListTest, EndedRowsLookEndedAndSeparatorsAreSeen) {
  settings.colorexpired = 1;
  add(u"9:00-10:00", u"Morning", 46347.4);
  add(u"9:00-23:00", u"Evening", 46347.95);
  for (const ColorScheme& scheme : color_schemes()) {
    settings.item_colors = scheme.colors;
    for (const Color category :
         {kWhite, kBlack, rgb(128, 128, 128), rgb(200, 40, 40), rgb(255, 214, 57)}) {
      agenda.row_colors = {category, category};
      for (settings.rowcolorindex = 0; settings.rowcolorindex < 4; ++settings.rowcolorindex) {
        SCOPED_TRACE(testing::Message() << to_utf8(load_string(scheme.name, Language::english))
                                        << " style " << settings.rowcolorindex);
        now = 46347;
        const auto ahead = content().rows;
        now = 46348;
        const ReportContent shown = content();
        for (std::size_t i = 0; i < 2; ++i) {
          const ReportRow& row = shown.rows[i];
          EXPECT_NE(row.text, ahead[i].text);
          EXPECT_GE(contrast(row.text, row.background), 2.9);
          EXPECT_NE(to_utf8(row.name).find("Ended"), std::string::npos);
        }
        EXPECT_GE(contrast(*shown.rows[1].line_above, shown.rows[1].background), 1.25);
        EXPECT_GE(contrast(shown.selected_background, shown.background), 3);
        EXPECT_GE(contrast(shown.selected_background, shown.selected_text), 4.5);
      }
    }
  }
}

TEST_F(DayListTest, AnEmptyDaySaysSoAcrossTheList) {
  agenda.rows = {{u"No Appointments", {}, {}, -1, {}, Kind::nothing}};
  agenda.row_ends = {46348};
  agenda.row_shades = {1};
  ReportContent shown = content();
  EXPECT_EQ(shown.columns[0].align, Align::center);
  EXPECT_EQ(shown.columns[0].width, 238);
  EXPECT_TRUE(shown.rows[0].bold);
  EXPECT_EQ(shown.rows[0].background, kWhite);
  agenda.emptiness = DayAgenda::Emptiness::all_filtered;
  shown = content();
  EXPECT_EQ(shown.columns[0].align, Align::right);
  EXPECT_GE(shown.columns[0].width, 140);
}

}  // namespace
}  // namespace orvello
