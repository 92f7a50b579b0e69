#include "views/month_snapshot.h"

#include "draw/readable.h"
#include "settings/icon_picture.h"
#include "settings/profiles.h"
#include "views/month_lines.h"

namespace orvello {

namespace {

void copy_icons(MonthSnapshot& snapshot, const SettingsRecord& settings) {
  for (int slot = 0; slot < kDisplayIconSlots; ++slot) {
    const Text& label = settings.displayiconstring[slot];
    if (label.empty()) continue;  // no category has an empty name
    snapshot.icons.push_back(
        {label, visible_on(settings.color(ColorSlot::month_date_background_1),
                           icon_picture(settings, settings.displayicon[slot]))});
  }
}

bool hides_all(const PeriodItems& period, const MonthLayout& layout) {
  bool hidden = false;
  for (const PeriodItem& item : period.items) {
    const CellSpan span = cells_of(item, layout.grid);
    for (int cell = span.first; cell <= span.last; ++cell) {
      if (!layout.cells[static_cast<std::size_t>(cell)].drawn) continue;
      if (item.passes_profile) return false;
      hidden = true;
      break;
    }
  }
  return hidden;
}

}  // namespace

MonthSnapshot month_snapshot_without_items(const SettingsRecord& settings,
                                           const ScreenLayout& screen, int month, int year,
                                           const MonthDayYear& today) {
  MonthSnapshot snapshot;
  snapshot.screen = screen;
  snapshot.layout = {month,
                     year,
                     settings.showdays,
                     settings.firstdayofweek,
                     settings.showholiday == 1,
                     settings.icon_cell,
                     settings.showindicator == 1};
  snapshot.today = today;
  snapshot.calendarcolorstyle = settings.calendarcolorstyle;
  snapshot.coloroffdays = settings.coloroffdays;
  snapshot.showindicator = settings.showindicator;
  snapshot.showfree = settings.showfree;
  snapshot.showholiday = settings.showholiday;
  snapshot.usecategorycolorforbar = settings.usecategorycolorforbar;
  snapshot.weeks = {settings.weeknumberformat, settings.firstdayofweek, settings.weekstartmonth,
                    settings.weekstartday};
  snapshot.colors = settings.item_colors;
  snapshot.locale = settings.locale;
  snapshot.strip_names = short_month_names(settings.locale);
  for (YearNames& names : snapshot.strip_names)
    for (Text& name : names) name = local_digits(name, settings.locale);
  snapshot.title_name = settings.month_names[month - 1];
  snapshot.day_names = short_day_names(settings.firstdayofweek, settings.locale);
  snapshot.arrows =
      turn_arrows(screen, settings.locale, snapshot.color(ColorSlot::month_header_background));
  snapshot.category_colors = settings.category_props;
  if (settings.showholiday == 1) copy_icons(snapshot, settings);
  return snapshot;
}

std::optional<MonthSnapshot> take_month_snapshot(const ItemsSource& source,
                                                 const SettingsRecord& settings,
                                                 const ScreenLayout& screen, int month, int year,
                                                 const MonthDayYear& today) {
  MonthSnapshot snapshot = month_snapshot_without_items(settings, screen, month, year, today);
  const MonthLayout layout(snapshot);
  const bool names = layout.lines.count > 0;
  const bool marks = settings.showindicator == 1 || settings.showholiday == 1;
  if (!marks && !names) return snapshot;
  MonthLineCollector collector(layout, settings);
  ItemVisit visit;
  if (names)
    visit = [&](const StoreItem& item, const PeriodItem& kept) { collector.add(item, kept); };
  // The whole categories text is compared with the profile's labels: an appointment in several
  // categories passes only a profile that names just these.
  auto period = fetch_period(
      source, layout.grid,
      [&](TextView categories) { return profileAllowsCategory(settings, categories); }, visit);
  if (!period) return std::nullopt;
  snapshot.period = std::move(*period);
  snapshot.all_hidden = hides_all(snapshot.period, layout);
  if (!marks) snapshot.period.items = {};
  if (names) snapshot.lines = std::move(collector).lines();
  return snapshot;
}

std::optional<MonthSnapshot> take_month_snapshot(StoreSession& session,
                                                 const SettingsRecord& settings,
                                                 const ScreenLayout& screen, int month, int year,
                                                 const MonthDayYear& today) {
  return take_month_snapshot([&] { return session.CalendarItems(); }, settings, screen, month, year,
                             today);
}

MonthLayout::MonthLayout(const MonthSnapshot& snapshot)
    : MonthLayout(snapshot.screen, snapshot.layout) {}

}  // namespace orvello
