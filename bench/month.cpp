// The Month view over a full calendar: bench_month FILE.ics [Google Benchmark's options]. The file
// is imported once, into a store file of its own, and the month shown is November 2026.
#include <QGuiApplication>

#include "bench/full_calendar.h"
#include "draw/screen_layout.h"
#include "hosts/qt/qt_surface.h"
#include "views/month_paint.h"
#include "views/month_snapshot.h"

namespace orvello {
namespace {

constexpr int kMonth = 11, kYear = 2026;

struct MonthBench : FullCalendar {
  MonthBench() {
    settings.showindicator = 1;  // a bar for each appointment, the fullest view
    settings.showdays = 1;
    screen = layout_screen({480, 588}, 192, 192, true);  // less the menu bar
  }

  MonthSnapshot snapshot() {
    return take_month_snapshot(*session, settings, screen, kMonth, kYear, settings.today).value();
  }

  ScreenLayout screen;
};

MonthBench* bench = nullptr;

// Everything that a visit of another month asks the store.
void month_three_queries(benchmark::State& state) {
  std::size_t items = 0;
  for (auto _ : state) {
    const MonthSnapshot snapshot = bench->snapshot();
    items = snapshot.period.items.size();
    benchmark::DoNotOptimize(snapshot.period.items.data());
  }
  state.SetLabel(std::to_string(items) + " occurrences");
}
BENCHMARK(month_three_queries)->Unit(benchmark::kMillisecond);

// The first month that a program shows: the store is opened anew each time.
void month_three_queries_just_opened(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    bench->open();
    state.ResumeTiming();
    benchmark::DoNotOptimize(bench->snapshot().period.items.data());
  }
}
BENCHMARK(month_three_queries_just_opened)->Unit(benchmark::kMillisecond);

void month_complete_drawing(benchmark::State& state) {
  const MonthSnapshot snapshot = bench->snapshot();
  QtSurface surface(bench->screen.work);
  const std::atomic<int> draw_state{101};  // drawing
  for (auto _ : state) {
    if (!DrawMonthView(snapshot, surface.canvas(), draw_state, {}))
      state.SkipWithError("the drawing was given up");
    surface.publish();
  }
  state.SetLabel(std::to_string(snapshot.period.items.size()) + " occurrences, 480x640 at 192 dpi");
}
BENCHMARK(month_complete_drawing)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvello

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  return orvello::run_over_calendar(argc, argv, orvello::bench,
                                    [](orvello::MonthBench&) { return true; });
}
