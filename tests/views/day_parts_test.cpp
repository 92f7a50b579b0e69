// The Day view's header and the notes bubble.
#include <gtest/gtest.h>

#include "hosts/headless/recording_canvas.h"
#include "settings/colors.h"
#include "views/day_header.h"
#include "views/notes_bubble.h"

namespace orvello {
namespace {

TEST(DayHeader, ZonesFollowTheTodayButton) {
  const ScreenLayout screen = layout_screen({240, 291}, 96, 96, false);
  const DayHeaderLayout layout = lay_out_day_header(screen, 240, {15, 13}, 0);
  // 13-pixel letters: 19 high; the square is 12, and 18 go to it with its margin.
  EXPECT_EQ(layout.strip, (Rect{0, 0, 240, 19}));
  EXPECT_EQ(layout.left, 240 - 9 - 18 - 15 - 7);
  EXPECT_EQ(layout.right, layout.left + 30);
  EXPECT_EQ(hit_day_header(layout, {layout.left - 1, 5}), DayHeaderZone::next);
  EXPECT_EQ(hit_day_header(layout, {layout.left - 28, 5}), DayHeaderZone::date);
  EXPECT_EQ(hit_day_header(layout, {26, 5}), DayHeaderZone::previous);
  EXPECT_TRUE(lay_out_day_header(screen, 240, {15, 13}, 70).next.empty()) << "the date needs it";
  EXPECT_EQ(hit_day_header(layout, layout.today_picture.center()), DayHeaderZone::today);
  EXPECT_EQ(hit_day_header(layout, layout.style_button.center()), DayHeaderZone::style);
  EXPECT_EQ(hit_day_header(layout, {20, 19}), DayHeaderZone::none);
  EXPECT_TRUE(intersection(layout.today_picture, layout.style_button).empty());
}

TEST(DayHeader, NothingIsCutOffOrCoveredOnAnyScreen) {
  struct Screen {
    Size size;
    int dpi;
  };
  for (const Screen& one : {Screen{{240, 291}, 96}, Screen{{320, 211}, 96}, Screen{{480, 582}, 192},
                            Screen{{1000, 671}, 96}}) {
    const ScreenLayout screen = layout_screen(one.size, one.dpi, one.dpi, false);
    RecordingCanvas canvas(one.size);
    const FontSpec number_font = font_of(13, 700, screen);
    const DayHeaderInput input{u"воскресенье, 22 сентября 2026 г.", u"26265", number_font};
    const int b = 15 * screen.scale;
    const DayHeaderLayout layout =
        lay_out_day_header(screen, one.size.width, {b, 13 * screen.scale},
                           canvas.measure(input.day_number, number_font).width);
    SettingsRecord settings;
    ResetItemColors(settings, 1000);
    const Image today{b, 13 * screen.scale,
                      std::vector<Color>(static_cast<std::size_t>(b) * 13 * screen.scale)};
    draw_day_header(canvas, input, layout, screen, settings.item_colors, today,
                    DayHeaderZone::date);
    EXPECT_TRUE(canvas.clipped_texts().empty()) << one.size.width;
    EXPECT_LE(layout.date.right(), layout.number.x);
  }
}

// The heading is as large on the third of May as on the last of September.
TEST(DayHeader, TheDateKeepsItsSizeFromDayToDay) {
  const ScreenLayout screen = layout_screen({240, 291}, 96, 96, false);
  SettingsRecord settings;
  ResetItemColors(settings, 1000);
  settings.dayviewheaderformat = 3;
  for (const LocaleData& locale : {english_locale(), russian_locale()}) {
    settings.locale = locale;
    int size = 0;
    for (int day = 0; day < 366; ++day) {
      const SystemTime shown = civil_of(day_of(2026, 1, 1) + day);
      RecordingCanvas canvas(screen.work);
      const DayHeaderInput input =
          day_header_input(settings, screen, {shown.month, shown.day, shown.year});
      const DayHeaderLayout layout = lay_out_day_header(input, screen, {}, canvas);
      draw_day_header(canvas, input, layout, screen, settings.item_colors, {}, {});
      ASSERT_TRUE(canvas.clipped_texts().empty()) << to_utf8(input.date);
      const int height = canvas.of_kind(DrawnOperation::Kind::text).front().style.font.height;
      ASSERT_EQ(height, size == 0 ? height : size) << to_utf8(input.date);
      size = height;
    }
  }
}

struct BubbleTest : testing::Test {
  NotesBubble lay_out(const Rect& row, TextView notes, int aim = 80) {
    return lay_out_notes_bubble({screen, 12, row, aim}, {subject, when, Text(notes)}, canvas);
  }
  ScreenLayout screen = layout_screen({240, 291}, 96, 96, false);
  RecordingCanvas canvas{{240, 291}};
  Text subject = Text(200, u'W'), when = u"9:00a-10:00a, Town hall";
};

TEST_F(BubbleTest, StandsAboveTheRowElseBelowElseAtTheBottom) {
  const Rect low{0, 150, 240, 27}, high{0, 18, 240, 27};
  const NotesBubble above = lay_out(low, u"Bring the papers");
  EXPECT_EQ(above.pointer, NotesBubble::Pointer::above);
  EXPECT_LE(above.place.bottom(), low.y);
  EXPECT_EQ(above.place.x + above.pointer_x, 80);  // points at the icons
  const NotesBubble below = lay_out(high, u"Bring the papers");
  EXPECT_EQ(below.pointer, NotesBubble::Pointer::below);
  EXPECT_GE(below.place.y, high.bottom());
  EXPECT_GE(above.place.width, 240 / 3);

  Text longest;
  while (longest.size() < 594) longest += u"seven letters ";
  const NotesBubble pushed = lay_out(high, longest + u"...");
  EXPECT_EQ(pushed.pointer, NotesBubble::Pointer::none);
  EXPECT_EQ(pushed.place.bottom(), 291);
}

TEST_F(BubbleTest, AllTextIsInsideTheShapeWhereverItPoints) {
  Text longest;
  while (longest.size() < 594) longest += u"WWWWWW MMMMMM ";
  for (const TextView notes :
       {TextView(u"(No Notes)"), TextView(u"a\r\nb\n\nc"), TextView(longest)}) {
    for (const int y : {18, 100, 250}) {
      for (const int aim : {0, 80, 239}) {
        const NotesBubble bubble = lay_out({0, y, 240, 27}, notes, aim);
        const Rect window{0, 0, 240, 291};
        EXPECT_EQ(intersection(window, bubble.place), bubble.place);
        const Rect own{0, 0, bubble.place.width, bubble.place.height};
        for (const Point& point : bubble.outline) EXPECT_TRUE(own.contains(point));
        EXPECT_EQ(intersection(own, bubble.text), bubble.text);
        EXPECT_LE(bubble.lines.back().top + bubble.line_height, bubble.text.height);
        for (const NotesBubble::Line& line : bubble.lines)
          EXPECT_LE(canvas.measure(line.text, line.bold ? bubble.bold_font : bubble.font).width,
                    bubble.text.width);
      }
    }
  }
  subject = u"Dentist";
  Text all;
  for (const NotesBubble::Line& line : lay_out({0, 100, 240, 27}, u"a\r\nb\n\nc").lines)
    all += line.text + (line.bold ? u"!|" : u"|");
  EXPECT_EQ(all, u"Dentist!|9:00a-10:00a, Town hall|a|b||c|");
}

}  // namespace
}  // namespace orvello
