// The Year view over a full calendar: bench_year FILE.ics [Google Benchmark's options]. The file is
// imported once, into a store file of its own, and the year shown is 2026.
#include <QGuiApplication>

#include "bench/full_calendar.h"
#include "hosts/qt/qt_surface.h"
#include "views/accessible_counts.h"
#include "views/year_paint.h"

namespace orvello {
namespace {

constexpr int kYear = 2026;

struct YearBench : FullCalendar {
  YearBench() {
    settings.coloryearview = 1;
    screen = layout_screen({480, 588}, 192, 192, true);  // less the menu bar
  }

  ItemsSource source() {
    return [this] { return session->CalendarItems(); };
  }

  ScreenLayout screen;
};

YearBench* bench = nullptr;

// Everything that a visit of another year asks the store.
void year_marks(benchmark::State& state) {
  const std::atomic<int> draw_state{101};  // drawing
  YearMarks marks;
  for (auto _ : state) {
    BuildYearMarks(kYear, bench->source(), {}, draw_state, marks);
    benchmark::DoNotOptimize(marks);
  }
  const auto items = bench->source()();
  items->set_include_recurrences(true);
  int count = 0;
  if (each_item(*items, year_restriction(kYear), [&](const StoreItem&) { ++count; }))
    state.SetLabel(std::to_string(count) + " occurrences");
}
BENCHMARK(year_marks)->Unit(benchmark::kMillisecond);

// What a screen reader asks besides.
void year_day_counts(benchmark::State& state) {
  const auto first = day_of(kYear, 1, 1);
  for (auto _ : state)
    benchmark::DoNotOptimize(count_days(bench->source(), first, first + 364, {})->data());
}
BENCHMARK(year_day_counts)->Unit(benchmark::kMillisecond);

void year_complete_drawing(benchmark::State& state) {
  const YearSnapshot snapshot = take_year_snapshot(*bench->session, bench->settings, bench->screen,
                                                   kYear, {11, 21, kYear}, {11, 22, kYear}, true)
                                    .value();
  QtSurface surface(bench->screen.work);
  const std::atomic<int> draw_state{101};
  for (auto _ : state) {
    if (!DrawYearView(snapshot, surface.canvas(), draw_state, {}))
      state.SkipWithError("the drawing was given up");
    surface.publish();
  }
  state.SetLabel("480x640 at 192 dpi");
}
BENCHMARK(year_complete_drawing)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvello

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  return orvello::run_over_calendar(argc, argv, orvello::bench,
                                    [](orvello::YearBench&) { return true; });
}
