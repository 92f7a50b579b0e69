#include "app/view_preview.h"

#include <atomic>

#include "draw/report_paint.h"
#include "settings/profiles.h"
#include "store/day_agenda.h"
#include "views/day_header.h"
#include "views/day_list.h"
#include "views/month_page.h"
#include "views/year_page.h"

namespace orvello {
namespace {

template <typename Page>
bool draw_page(const PreviewInput& in, const ScreenLayout& screen, Canvas& canvas) {
  Page page(in.session, in.settings);
  const auto outcome =
      page.take({screen, in.state.current, in.state.today, false, {}, in.language}, false);
  const std::atomic<int> undisturbed{kDrawing};
  page.drawing()(canvas, undisturbed, {});
  return outcome == ReadOutcome::whole;
}

bool draw_day(const PreviewInput& in, const ScreenLayout& screen, Canvas& canvas) {
  const MonthDayYear& day = in.state.current;
  const DayHeaderInput header = day_header_input(in.settings, screen, day);
  const DayHeaderLayout strip = lay_out_day_header(header, screen, in.today_picture, canvas);
  draw_day_header(canvas, header, strip, screen, in.settings.item_colors, in.today_picture,
                  DayHeaderZone::none);
  const Rect place{0, strip.strip.height, screen.work.width,
                   screen.work.height - strip.strip.height};
  const auto items = in.session.CalendarItems();
  DayAgenda agenda = full_agenda(items.get(), day_of(day), in.settings, [&](TextView categories) {
    return profileAllowsCategory(in.settings, categories);
  });
  const bool whole = !agenda.failed;
  if (!whole) agenda = unreadable_agenda(load_string(StringId::unreadable, in.language));
  CalendarDate now = 0;
  SystemTimeToVariantTime(in.clock.local_time(), now);
  const DayListInput list{
      in.settings, screen, {{place.width, place.height}, 0, 0}, now, in.language};
  draw_report(day_list_content(agenda, list, canvas), place, canvas);
  return whole;
}

}  // namespace

bool draw_preview(ViewMode view, const PreviewInput& in, Canvas& canvas) {
  const ScreenLayout screen =
      layout_screen(canvas.size(), in.state.dpi_x, in.state.dpi_y, in.settings.cleartype == 1);
  switch (view) {
    case ViewMode::day:
      return draw_day(in, screen, canvas);
    case ViewMode::month:
      return draw_page<MonthPage>(in, screen, canvas);
    case ViewMode::year:
      return draw_page<YearPage>(in, screen, canvas);
    case ViewMode::none_yet:
      break;
  }
  return false;
}

}  // namespace orvello
