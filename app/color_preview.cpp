#include "app/color_preview.h"

#include <algorithm>
#include <atomic>

#include "app/day_popups.h"
#include "calendar/date_text.h"
#include "draw/report_paint.h"
#include "store/day_label.h"
#include "views/day_header.h"
#include "views/day_list.h"
#include "views/month_paint.h"
#include "views/notes_bubble.h"
#include "views/row_colors.h"
#include "views/year_paint.h"

namespace orvello {
namespace {

// A little smaller than on the screen where the whole view would not fit.
constexpr int kWholeWidth = 240, kWholeHeight = 200;  // at 96 dpi
constexpr double kSmallest = 0.65, kSmall = 0.8;

// At least this high for its width: what a low canvas lacks is cut off, so that it stays legible.
int view_height(Size canvas) { return std::max(canvas.height, canvas.width * 4 / 5); }

ScreenLayout preview_screen(const PreviewInput& in, Size canvas, bool whole) {
  const double unit = in.state.dpi_x / 96.0;
  double share = std::clamp(canvas.width / (kWholeWidth * unit), kSmallest, 1.0);
  if (canvas.height < kWholeHeight * unit) share = std::min(share, kSmall);
  const auto dpi = [&](int of_screen) { return static_cast<int>(of_screen * share); };
  return layout_screen({canvas.width, whole ? canvas.height : view_height(canvas)},
                       dpi(in.state.dpi_x), dpi(in.state.dpi_y), in.settings.cleartype == 1);
}

// With everything shown that has a colour.
SettingsRecord showing_all(const SettingsRecord& settings) {
  SettingsRecord all = settings;
  all.showdays = all.showlocation = all.colorexpired = all.coloryearview = 1;
  all.showholiday = all.showindicator = 0;
  if (all.weeknumberformat == 0) all.weeknumberformat = 1;
  all.rowcolorindex = static_cast<std::int32_t>(RowColorStyle::by_rows);
  return all;
}

// The month that is shown, or the next where that one begins without neighbouring days.
MonthDayYear month_of_examples(const SettingsRecord& settings, MonthDayYear date) {
  const int first = civil_of(day_of(date.year, date.month, 1)).day_of_week;
  if (first != (settings.firstdayofweek != 0 ? 1 : 0)) return date;
  return date.month == 12 ? MonthDayYear{1, 1, date.year + 1}
                          : MonthDayYear{date.month + 1, 1, date.year};
}

void draw_month(const PreviewInput& in, Canvas& canvas) {
  const SettingsRecord settings = showing_all(in.settings);
  const MonthDayYear month = month_of_examples(settings, in.state.current);
  // In the second row, which is seen also where the others are cut off.
  constexpr int kSecondRow = 8;
  const MonthDayYear today{month.month, kSecondRow, month.year};
  const MonthSnapshot snapshot = month_snapshot_without_items(
      settings, preview_screen(in, canvas.size(), false), month.month, month.year, today);
  const std::atomic<int> undisturbed{kDrawing};
  DrawMonthView(snapshot, canvas, undisturbed, {});
}

void draw_year(const PreviewInput& in, Canvas& canvas) {
  const SettingsRecord settings = showing_all(in.settings);
  const int year = in.state.current.year;
  const MonthDayYear today{2, 12, year};  // not one of those that are marked
  YearSnapshot snapshot = year_snapshot_without_marks(
      settings, preview_screen(in, canvas.size(), false), year, today, today, false);
  for (int month = 1; month <= 12; ++month)
    for (int day = 4 + month % 3; day <= 28; day += 5) snapshot.marks.add(month, day);
  const std::atomic<int> undisturbed{kDrawing};
  DrawYearView(snapshot, canvas, undisturbed, {});
}

// One day: all of it, in the past, and yet to come, with a place.
class ExampleDay {
 public:
  ExampleDay(const PreviewInput& in) : in_(in), day_(day_of(in.state.current)) {
    const auto text = [&](StringId id) { return load_string(id, in.language); };
    add(DayRow::Kind::all_day, u"All Day", text(StringId::sample_all_day), 24);
    add(DayRow::Kind::timed, span(9), text(StringId::sample_expired), 10);
    add(DayRow::Kind::timed, span(15), text(StringId::sample_meeting), 16);
    add(DayRow::Kind::location, {}, location_label(text(StringId::sample_place)), 16);
    agenda_.emptiness = DayAgenda::Emptiness::has_rows;
    agenda_.row_shades = build_row_shades(agenda_.rows);
  }

  DayAgenda agenda() const { return agenda_; }
  std::vector<CompactRow> compact() const {
    std::vector<CompactRow> rows;
    for (const DayRow& row : agenda_.rows)
      if (!row.continues()) rows.push_back({row.time, row.subject, row.kind});
    return rows;
  }
  CalendarDate noon() const { return at(12); }

 private:
  Text span(int hour) const {
    const bool clock24 = in_.settings.timeformat == 1;
    return format(u"%s-%s", AppointmentTimeText(hour, 0, clock24),
                  AppointmentTimeText(hour + 1, 0, clock24));
  }
  CalendarDate at(int hour) const {
    SystemTime time = civil_of(day_);
    time.hour = hour;
    CalendarDate date = 0;
    SystemTimeToVariantTime(time, date);
    return date;
  }
  void add(DayRow::Kind kind, Text time, Text subject, int end) {
    DayRow row;
    row.kind = kind;
    row.time = std::move(time);
    row.subject = std::move(subject);
    row.oid = static_cast<std::int32_t>(agenda_.rows.size());
    agenda_.rows.push_back(std::move(row));
    agenda_.row_ends.push_back(at(end));
    agenda_.row_colors.push_back(kWhite);
  }

  const PreviewInput& in_;
  Day day_;
  DayAgenda agenda_;
};

void draw_example_day(const PreviewInput& in, Canvas& canvas) {
  const SettingsRecord settings = showing_all(in.settings);
  const ScreenLayout screen = preview_screen(in, canvas.size(), true);
  const DayHeaderInput header = day_header_input(settings, screen, in.state.current);
  const DayHeaderLayout strip = lay_out_day_header(header, screen, in.today_picture, canvas);
  draw_day_header(canvas, header, strip, screen, settings.item_colors, in.today_picture,
                  DayHeaderZone::none);
  const Rect place{0, strip.strip.height, screen.work.width,
                   screen.work.height - strip.strip.height};
  const ExampleDay day(in);
  DayAgenda agenda = day.agenda();
  const DayListInput list{
      settings, screen, {{place.width, place.height}, 0, 0}, day.noon(), in.language};
  draw_report(day_list_content(agenda, list, canvas), place, canvas);
}

void draw_popup_schedule(const PreviewInput& in, Canvas& canvas) {
  const ScreenLayout screen = preview_screen(in, canvas.size(), true);
  const DayHeaderInput header = day_header_input(in.settings, screen, in.state.current);
  DayPopupProcedure({header.date, ExampleDay(in).compact(), in.settings, screen, canvas})
      .draw(canvas);
}

// The bubble over its day, as large as the canvas lets it be.
void draw_popup_notes(const PreviewInput& in, Canvas& canvas) {
  draw_example_day(in, canvas);
  const ScreenLayout screen = preview_screen(in, canvas.size(), true);
  const Size size = screen.work;
  const NotesBubbleInput input{
      screen, in.settings.dvfontsize, {0, 0, size.width, size.height / 5}, size.width / 2};
  const NotesBubbleText text{{}, {}, load_string(StringId::sample_notes, in.language)};
  const NotesBubble bubble = lay_out_notes_bubble(input, text, canvas);
  draw_notes_bubble_at({bubble.place.x, bubble.place.y}, canvas, bubble, screen,
                       in.settings.item_colors);
}

}  // namespace

void draw_color_preview(ColorGroup group, const PreviewInput& input, Canvas& canvas) {
  switch (group) {
    case ColorGroup::month:
      return draw_month(input, canvas);
    case ColorGroup::day:
      return draw_example_day(input, canvas);
    case ColorGroup::year:
      return draw_year(input, canvas);
    case ColorGroup::popup_schedule:
      return draw_popup_schedule(input, canvas);
    case ColorGroup::popup_notes:
      return draw_popup_notes(input, canvas);
  }
}

}  // namespace orvello
