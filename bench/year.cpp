// The Year view over a full calendar: bench_year FILE.ics [Google Benchmark's options]. The file is
// imported once, into a store file of its own, and the year shown is 2026.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <QGuiApplication>
#include <cstdio>
#include <filesystem>

#include "exchange/import.h"
#include "hosts/headless/headless_host.h"
#include "hosts/qt/qt_surface.h"
#include "settings/load_settings.h"
#include "store/embedded/embedded_store.h"
#include "views/accessible_counts.h"
#include "views/year_paint.h"

namespace orvello {
namespace {

constexpr int kYear = 2026;

// The program's parts without its window.
struct YearBench {
  explicit YearBench(const std::string& path) : folder(path) {
    std::filesystem::create_directories(folder);
    auto opened = EmbeddedStore::open(folder + "/calendar.db", host.clock);
    if (opened) store = std::move(*opened);
    const SettingsVolume volume{host.databases, host.boxes, host.files};
    LoadSettings(settings, host.registry, volume, host.clock, host.locale.data(), false);
    load_locale_conventions(settings, host.locale.data());
    settings.coloryearview = 1;
    screen = layout_screen({480, 588}, 192, 192, true);  // less the menu bar
  }
  ~YearBench() {
    session.reset();
    store.reset();
    std::filesystem::remove_all(folder);
  }

  ItemsSource source() {
    return [this] { return session->CalendarItems(); };
  }

  std::string folder;
  HeadlessHost host;
  std::unique_ptr<EmbeddedStore> store;
  std::unique_ptr<StoreSession> session;
  SettingsRecord settings;
  ScreenLayout screen;
};

YearBench* bench = nullptr;  // Google Benchmark's functions take no argument of ours

// Everything that a visit of another year asks the store.
void year_marks(benchmark::State& state) {
  const std::atomic<int> draw_state{101};  // drawing
  YearMarks marks;
  for (auto _ : state) {
    BuildYearMarks(kYear, bench->source(), {}, 0, draw_state, marks);
    benchmark::DoNotOptimize(marks);
  }
  const auto items = bench->source()()->restrict_to(year_restriction(kYear));
  items->set_include_recurrences(true);
  state.SetLabel(std::to_string(items->count()) + " occurrences");
}
BENCHMARK(year_marks)->Unit(benchmark::kMillisecond);

// What a screen reader asks besides.
void year_day_counts(benchmark::State& state) {
  const auto first = WholeDayNumber(1, 1, kYear);
  for (auto _ : state)
    benchmark::DoNotOptimize(count_days(bench->source(), first, first + 364, {}, 0).data());
}
BENCHMARK(year_day_counts)->Unit(benchmark::kMillisecond);

void year_complete_drawing(benchmark::State& state) {
  const YearSnapshot snapshot = take_year_snapshot(*bench->session, bench->settings, bench->screen,
                                                   kYear, {11, 21, kYear}, {11, 22, kYear}, true);
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

int run(const char* file) {
  YearBench parts(std::filesystem::temp_directory_path() /
                  ("orvello_bench_" + std::to_string(::getpid())));
  if (!parts.store) return 1;
  const ImportResult imported = import_files({file}, *parts.store, parts.host.clock);
  if (!imported.done || imported.counts.imported == 0) {
    std::fprintf(stderr, "bench_year: %s holds nothing: %s\n", file, imported.failure.c_str());
    return 1;
  }
  parts.session = std::make_unique<StoreSession>(*parts.store, parts.host.boxes);
  if (!parts.session->Open(nullptr)) return 1;
  bench = &parts;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace
}  // namespace orvello

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (argc == 2) return orvello::run(argv[1]);
  std::fprintf(stderr, "usage: bench_year FILE.ics [benchmark options]\n");
  return 2;
}
