#include "draw/mirrored_canvas.h"

#include <gtest/gtest.h>

#include "hosts/headless/recording_canvas.h"
#include "tests/hebrew_locale.h"
#include "tests/views/month_fixture.h"

namespace orvello {
namespace {

using Kind = DrawnOperation::Kind;

// A whole month, drawn on either screen: every box lies on the other side, every text in a line is
// aligned there, and pictures keep their pixels; the arrows alone point the other way.
TEST(MirroredMonth, IsMirroredAndItsTextsAndPicturesAreNot) {
  MonthFixture month(kTestScreens[0]);
  month.label_slots(2);
  month.settings.showindicator = month.settings.showholiday = month.settings.showdays = 1;
  month.settings.weeknumberformat = 1;
  month.add(at(11, 6, 2026, 9), at(11, 6, 2026, 12), u"A,B");
  const MonthSnapshot snapshot = month.snapshot(11, 2026);
  const std::atomic<int> undisturbed{kDrawing};
  RecordingCanvas plain(month.screen.work), other(month.screen.work);
  MirroredCanvas mirrored_canvas(other);
  DrawMonthView(snapshot, plain, undisturbed, {});
  DrawMonthView(snapshot, mirrored_canvas, undisturbed, {});
  const int width = month.screen.work.width;
  ASSERT_EQ(plain.operations().size(), other.operations().size());
  bool sided = false;
  for (std::size_t i = 0; i < plain.operations().size(); ++i) {
    const DrawnOperation &a = plain.operations()[i], &b = other.operations()[i];
    ASSERT_EQ(a.kind, b.kind);
    EXPECT_EQ(a.text, b.text);
    EXPECT_EQ(a.color, b.color);
    if (a.kind == Kind::polyline) continue;
    EXPECT_EQ(b.box.x, width - a.box.right());
    EXPECT_EQ((Rect{0, b.box.y, b.box.width, b.box.height}),
              (Rect{0, a.box.y, a.box.width, a.box.height}));
    EXPECT_EQ(a.image, b.image);
    if (a.kind != Kind::text || a.style.align == Align::center) continue;
    EXPECT_EQ(b.style.align, a.style.align == Align::left ? Align::right : Align::left);
    sided = true;
  }
  EXPECT_TRUE(sided);
  month.settings.locale = hebrew_locale();
  const MonthSnapshot hebrew = month.snapshot(11, 2026);
  EXPECT_EQ(hebrew.arrows.previous, snapshot.arrows.next);
  EXPECT_EQ(hebrew.arrows.next, snapshot.arrows.previous);
}

}  // namespace
}  // namespace orvello
