// A snapshot of a month to draw in tests, and a store that answers with given items.
#pragma once

#include <array>
#include <atomic>

#include "hosts/headless/recording_canvas.h"
#include "settings/colors.h"
#include "views/month_paint.h"

namespace orvello {

struct TestScreen {
  Size work;
  int dpi;
};

// The two handhelds in both orientations, a desktop window, and a small one.
inline constexpr std::array<TestScreen, 6> kTestScreens = {{{{240, 292}, 96},
                                                            {{320, 212}, 96},
                                                            {{480, 584}, 192},
                                                            {{640, 424}, 192},
                                                            {{1000, 674}, 96},
                                                            {{250, 190}, 96}}};

class MonthFixture {
 public:
  explicit MonthFixture(TestScreen of = kTestScreens[0], bool russian = false)
      : screen(layout_screen(of.work, of.dpi, of.dpi, false)) {
    ResetItemColors(settings, kAllColorGroups);
    settings.locale = russian ? russian_locale() : english_locale();
    LoadMonthNames(settings.month_names, settings.locale);
    settings.icon_cell = of.dpi < kHighResolutionDpi ? 9 : 18;
    settings.builtin_icon_count = 12;
    settings.builtin_icons = {settings.icon_cell * 12, settings.icon_cell, {}};
    settings.builtin_icons.pixels.resize(static_cast<std::size_t>(settings.builtin_icons.width) *
                                         settings.icon_cell);
  }

  // Labels "A", "B" ... for slots 0, 1 ..., each with its own icon.
  void label_slots(int count) {
    for (int slot = 0; slot < count; ++slot) {
      settings.displayicon[slot] = slot;
      settings.displayiconstring[slot] = Text(1, static_cast<char16_t>(u'A' + slot));
    }
  }

  MonthSnapshot snapshot(int month, int year) const {
    MonthSnapshot taken = month_snapshot_without_items(settings, screen, month, year, today);
    taken.period = period;
    return taken;
  }

  void add(CalendarDate start, CalendarDate end, TextView categories = {}, bool all_day = false,
           BusyStatus status = BusyStatus::busy) {
    period.categories.emplace_back(categories);
    const auto index = static_cast<std::int32_t>(period.categories.size()) - 1;
    period.items.push_back({start, end, index, status, all_day, true});
  }

  SettingsRecord settings;
  ScreenLayout screen;
  MonthDayYear today{11, 21, 2026};
  PeriodItems period;
};

inline CalendarDate at(int month, int day, int year, double hour = 0) {
  return joined(day_of(year, month, day), hour / 24);
}

struct DrawnMonth {
  bool finished = false;
  RecordingCanvas canvas;
};

inline DrawnMonth draw_month(const MonthSnapshot& snapshot) {
  DrawnMonth drawn{false, RecordingCanvas(snapshot.screen.work)};
  const std::atomic<int> state{101};
  drawn.finished = DrawMonthView(snapshot, drawn.canvas, state, {});
  return drawn;
}

}  // namespace orvello
