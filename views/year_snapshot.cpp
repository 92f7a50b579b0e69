#include "views/year_snapshot.h"

#include "settings/profiles.h"
#include "views/draw_control.h"

namespace orvello {

YearSnapshot year_snapshot_without_marks(const SettingsRecord& settings, const ScreenLayout& screen,
                                         int year, const MonthDayYear& today,
                                         const MonthDayYear& selected, bool focus_visible) {
  YearSnapshot snapshot;
  snapshot.screen = screen;
  snapshot.year = year;
  snapshot.today = today;
  snapshot.selected = selected;
  snapshot.focus_visible = focus_visible;
  snapshot.firstdayofweek = settings.firstdayofweek;
  snapshot.coloryearview = settings.coloryearview;
  snapshot.colors = settings.item_colors;
  snapshot.month_names = settings.month_names;
  snapshot.short_names = settings.locale.short_month_names;
  snapshot.day_letters = day_letters(settings.firstdayofweek, settings.locale);
  snapshot.locale = settings.locale;
  snapshot.arrows =
      turn_arrows(screen, settings.locale, snapshot.color(ColorSlot::year_header_background));
  snapshot.grid = BuildYearGrid(year, today, settings.firstdayofweek);
  return snapshot;
}

std::optional<YearSnapshot> take_year_snapshot(const ItemsSource& source,
                                               const SettingsRecord& settings,
                                               const ScreenLayout& screen, int year,
                                               const MonthDayYear& today,
                                               const MonthDayYear& selected, bool focus_visible) {
  YearSnapshot snapshot =
      year_snapshot_without_marks(settings, screen, year, today, selected, focus_visible);
  if (settings.coloryearview != 1) return snapshot;
  // No drawing is under way that a newer request could make stale: the request is what takes this.
  const std::atomic<int> undisturbed{kDrawing};
  const MarksOutcome outcome = BuildYearMarks(
      year, source,
      [&](TextView categories) { return profileAllowsCategory(settings, categories); }, undisturbed,
      snapshot.marks);
  if (outcome != MarksOutcome::finished) return std::nullopt;
  return snapshot;
}

std::optional<YearSnapshot> take_year_snapshot(StoreSession& session,
                                               const SettingsRecord& settings,
                                               const ScreenLayout& screen, int year,
                                               const MonthDayYear& today,
                                               const MonthDayYear& selected, bool focus_visible) {
  return take_year_snapshot([&] { return session.CalendarItems(); }, settings, screen, year, today,
                            selected, focus_visible);
}

YearLayout::YearLayout(const YearSnapshot& snapshot)
    : YearLayout(snapshot.screen, snapshot.year, snapshot.firstdayofweek, !snapshot.note.empty()) {}

}  // namespace orvello
