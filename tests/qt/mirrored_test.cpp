// Right-to-left screens as the toolkit shows them.
#include <gtest/gtest.h>

#include "draw/mirrored_canvas.h"
#include "hosts/qt/form_widget.h"
#include "hosts/qt/month_calendar.h"
#include "hosts/qt/qt_surface.h"
#include "resources/dialog_templates.h"
#include "tests/hebrew_locale.h"
#include "tests/qt/right_to_left.h"

namespace orvello {
namespace {

void draw_shapes(Canvas& canvas) {
  canvas.fill_rect({2, 1, 9, 4}, rgb(200, 0, 0));
  canvas.frame_rect({1, 8, 12, 7}, rgb(0, 0, 200), 2);
  for (const int width : {1, 2, 3}) canvas.polyline({{4, 20}, {4, 30}, {17, 30}}, kBlack, width);
  canvas.polyline({{20, 3}, {31, 17}}, kBlack, 1);
  canvas.polyline({{22, 22}, {31, 36}}, kBlack, 2);
  canvas.fill_polygon({{3, 34}, {15, 34}, {3, 39}}, rgb(0, 120, 0));
  canvas.set_clip(Rect{20, 0, 5, 5});
  canvas.fill_rect({18, 0, 9, 9}, rgb(1, 2, 3));
  canvas.set_clip(std::nullopt);
}

TEST(RightToLeftScreen, ShapesAreMirroredToThePixel) {
  need_application();
  QtSurface plain({40, 40}), other({40, 40});
  draw_shapes(plain.canvas());
  MirroredCanvas mirrored_canvas(other.canvas());
  draw_shapes(mirrored_canvas);
  plain.publish();
  other.publish();
  const QImage wanted = plain.front().mirrored(true, false), drawn = other.front();
  for (int y = 0; y < 40; ++y)
    for (int x = 0; x < 40; ++x) {
      const int apart = std::abs(qGray(wanted.pixel(x, y)) - qGray(drawn.pixel(x, y)));
      EXPECT_LE(apart, 8) << x << "," << y;  // slanted edges are smoothed from the left
    }
}

// On each of its steps, at the handheld's size and at a desktop's; the tab order stays that of the
// template, and so runs from right to left.
TEST(RightToLeftScreen, EveryFormIsMirrored) {
  need_application();
  const LocaleData locale = hebrew_locale();
  Density density;
  for (const DialogTemplate& dialog : all_dialogs(Language::english))
    for (const QSize size : {QSize(240, 294), QSize(700, 500)}) {
      const auto places = [&](bool turns) {
        FormWidget form(nullptr, density, locale, dialog, false);
        form.resize(size);
        form.lay_out();
        std::vector<QRect> found;
        for (const ControlTemplate& control : dialog.controls) {
          const QWidget* widget = form.control(control.id);
          const QRect place = widget->geometry();
          const int x =
              turns ? widget->parentWidget()->width() - place.x() - place.width() : place.x();
          found.emplace_back(x, place.y(), place.width(), place.height());
        }
        return found;
      };
      const auto plain = places(false);
      const RightToLeft mirrored_screen;
      EXPECT_EQ(places(true), plain) << dialog.id;
    }
}

TEST(RightToLeftScreen, TheCalendarsWeeksAndItsKeysRunFromTheRight) {
  const RightToLeft mirrored_screen;
  const LocaleData locale = hebrew_locale();
  Density density;
  MonthCalendar calendar(nullptr, density, locale);
  calendar.resize(224, 208);
  calendar.set_date({11, 4, 2026});
  calendar.show();
  const auto parts = calendar.accessible_parts();
  const auto first = parts.end() - 42;
  EXPECT_GT(first[0].place.x, first[6].place.x);
  EXPECT_EQ(first[0].place.right(), 224);
  EXPECT_GT(parts[0].place.x, parts[1].place.x) << "back is to the right";
  QTest::keyClick(&calendar, Qt::Key_Left);
  EXPECT_EQ(calendar.date(), (MonthDayYear{11, 5, 2026}));
  // Both the first day of November and the arrow stand where they are drawn.
  QTest::mouseClick(&calendar, Qt::LeftButton, {}, QPoint(223, 60));
  EXPECT_EQ(calendar.date(), (MonthDayYear{11, 1, 2026}));
  QTest::mouseClick(&calendar, Qt::LeftButton, {}, QPoint(223, 5));
  EXPECT_EQ(calendar.date(), (MonthDayYear{10, 1, 2026}));
}

}  // namespace
}  // namespace orvello
