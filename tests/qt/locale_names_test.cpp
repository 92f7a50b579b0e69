// The short names of days and months in every locale that the toolkit knows.
#include <gtest/gtest.h>

#include <QLocale>
#include <set>

#include "hosts/headless/recording_canvas.h"
#include "hosts/qt/qt_locale.h"
#include "hosts/qt/qt_surface.h"
#include "hosts/qt/qt_text.h"
#include "settings/load_settings.h"
#include "tests/qt/test_window.h"
#include "tests/views/month_fixture.h"
#include "views/year_paint.h"

namespace orvello {
namespace {

using Kind = DrawnOperation::Kind;

// Records what is drawn in the widths of real letters.
class LetterCanvas : public RecordingCanvas {
 public:
  explicit LetterCanvas(Size size) : RecordingCanvas(size), letters_({8, 8}) {}
  Size measure(TextView text, const FontSpec& font) override {
    return letters_.canvas().measure(text, font);
  }

 private:
  QtSurface letters_;
};

// The texts in these boxes differ, and each has the room it needs.
template <typename Boxes>
void expect_told_apart(const RecordingCanvas& canvas, const Boxes& boxes, const std::string& what) {
  std::set<Text> texts;
  for (const Rect& box : boxes)
    for (const DrawnOperation& text : canvas.of_kind(Kind::text)) {
      if (text.box.x != box.x || text.box.bottom() != box.bottom()) continue;
      EXPECT_LE(text.text_size.width, box.width) << what << " " << to_utf8(text.text);
      EXPECT_TRUE(texts.insert(text.text).second) << what << " " << to_utf8(text.text);
    }
  EXPECT_EQ(texts.size(), boxes.size()) << what;
}

// Full names, as far as their buffers go.
void check_whole(const LocaleData& locale, const std::string& name) {
  MonthNames months;
  LoadMonthNames(months, locale);
  std::set<Text> days;
  for (int day = 0; day < 7; ++day) days.insert(DayNameForWeekday(day, false, locale));
  EXPECT_EQ(days.size(), 7u) << name;
  EXPECT_EQ((std::set<Text>(months.begin(), months.end()).size()), 12u) << name;
}

void check_views(const LocaleData& locale, const std::string& name) {
  const std::atomic<int> undisturbed{kDrawing};
  const TestScreen& screen = kTestScreens[0];  // the narrowest columns
  MonthFixture month(screen);
  month.settings.locale = locale;
  LoadMonthNames(month.settings.month_names, locale);
  LetterCanvas drawn(screen.work), year(screen.work);
  const MonthSnapshot snapshot = month.snapshot(11, 2026);
  draw_month_header(snapshot, MonthLayout(snapshot), drawn);
  expect_told_apart(drawn, MonthLayout(snapshot).day_names, name + " days");
  expect_told_apart(drawn, MonthLayout(snapshot).months, name + " months");
  const YearSnapshot whole = year_snapshot_without_marks(month.settings, month.screen, 2026,
                                                         {11, 21, 2026}, {11, 21, 2026}, false);
  DrawYearView(whole, year, undisturbed, {});
  std::vector<Rect> strips;
  for (const YearBlock& block : YearLayout(whole).months) strips.push_back(block.strip);
  expect_told_apart(year, strips, name + " year");
}

TEST(LocaleNames, AreToldApartInEveryLocaleWhereTheyAreShort) {
  need_application();
  std::set<std::vector<Text>> seen;
  for (const QLocale& known :
       QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
    const std::string name = known.name().toStdString();
    const LocaleData locale = QtLocale(name, name, {}).data();
    std::vector<Text> names;
    for (const auto* days : {&locale.day_names, &locale.short_day_names, &locale.narrow_day_names})
      names.insert(names.end(), days->begin(), days->end());
    for (const auto* months : {&locale.month_names, &locale.short_month_names})
      names.insert(names.end(), months->begin(), months->end());
    if (!seen.insert(names).second) continue;
    check_whole(locale, name);
    check_views(locale, name);
  }
  EXPECT_GT(seen.size(), 150u);
}

}  // namespace
}  // namespace orvello
