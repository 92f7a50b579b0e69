// What the Month and the Year view say where a profile hides everything, and their numbers.
#include <gtest/gtest.h>

#include "tests/views/month_fixture.h"
#include "views/month_lines.h"
#include "views/year_label.h"
#include "views/year_paint.h"

namespace orvello {
namespace {

using Operation = DrawnOperation::Kind;
constexpr TextView kHidden = u"Profile “A rather long name of a family’s profile” hides all";

// The words, put together from their lines, and where they stand.
struct SaidNote {
  Text words;
  Rect place;
};
SaidNote told_below(const RecordingCanvas& canvas, int y) {
  SaidNote told;
  for (const DrawnOperation& text : canvas.of_kind(Operation::text)) {
    if (text.box.y < y || text.text.size() <= 2) continue;
    if (!told.words.empty()) told.words += u" ";
    told.words += text.text;
    told.place = told.place.empty() ? text.box : told.place;
    told.place.height = text.box.bottom() - told.place.y;
  }
  return told;
}

TEST(PeriodNote, IsSaidOnEveryPageAndCoversNoNumber) {
  for (const TestScreen& screen : kTestScreens) {
    SCOPED_TRACE(screen.work.width);
    MonthFixture month(screen);
    for (const int showdays : {0, 1}) {
      month.settings.showdays = showdays;
      MonthSnapshot snapshot = month.snapshot(11, 2026);
      snapshot.note = kHidden;
      const MonthLayout layout(snapshot);
      const DrawnMonth drawn = draw_month(snapshot);
      EXPECT_TRUE(drawn.canvas.clipped_texts().empty());
      const SaidNote told = told_below(drawn.canvas, layout.grid_top);
      EXPECT_TRUE(told.words == kHidden || told.words.ends_with(u"..."));
      for (const MonthCell& cell : layout.cells)
        EXPECT_TRUE(!cell.drawn || intersection(told.place, cell.number).empty());
      EXPECT_LE(told.place.bottom(), screen.work.height);
    }
    YearSnapshot year =
        year_snapshot_without_marks(month.settings, month.screen, 2026, {}, {}, false);
    year.note = kHidden;
    const YearLayout layout(year);
    RecordingCanvas canvas(screen.work);
    const std::atomic<int> undisturbed{kDrawing};
    ASSERT_TRUE(DrawYearView(year, canvas, undisturbed, {}));
    const SaidNote told = told_below(canvas, layout.months.back().strip.bottom());
    EXPECT_TRUE(told.words == kHidden || told.words.ends_with(u"..."));
    EXPECT_GE(told.place.y, layout.months.back().box.bottom());
    EXPECT_LE(told.place.bottom(), screen.work.height);
  }
}

TEST(PeriodNote, NumbersAreInTheDigitsOfTheLocale) {
  MonthFixture month(kTestScreens[4]);
  month.settings.locale.zero_digit = u'٠';
  month.settings.weeknumberformat = month.settings.showdays = 1;
  month.add(at(11, 10, 2026, 9), at(11, 10, 2026, 10));
  MonthSnapshot snapshot = month.snapshot(11, 2026);
  snapshot.lines.assign(42, {{MonthLine{}}, 3});
  YearSnapshot year =
      year_snapshot_without_marks(month.settings, month.screen, 2026, {}, {}, false);
  RecordingCanvas canvas = draw_month(snapshot).canvas;
  const std::atomic<int> undisturbed{kDrawing};
  DrawYearView(year, canvas, undisturbed, {});
  EXPECT_GT(canvas.of_kind(Operation::text).size(), 42u + 42 + 6 + 365);
  for (const DrawnOperation& text : canvas.of_kind(Operation::text))
    EXPECT_EQ(text.text.find_first_of(u"0123456789"), Text::npos) << to_utf8(text.text);
  const std::vector<CompactRow> rows(9, {u"9:00-10:00", u"Yoga"});
  const YearLabel label = year_label(u"-", rows, {}, month.screen, month.settings.locale, canvas);
  EXPECT_EQ(label.text.find_first_of(u"0123456789"), Text::npos) << to_utf8(label.text);
}

}  // namespace
}  // namespace orvello
