// The Month view over a full calendar: bench_month FILE.ics [Google Benchmark's options]. The file
// is imported once, into a store file of its own, and the month shown is November 2026.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <QGuiApplication>
#include <cstdio>
#include <filesystem>

#include "draw/screen_layout.h"
#include "exchange/import.h"
#include "hosts/headless/headless_host.h"
#include "hosts/qt/qt_surface.h"
#include "settings/load_settings.h"
#include "store/embedded/embedded_store.h"
#include "views/month_paint.h"
#include "views/month_snapshot.h"

namespace orvello {
namespace {

constexpr int kMonth = 11, kYear = 2026;

// The program's parts without its window.
struct Bench {
  explicit Bench(const std::string& path) : folder(path) {
    std::filesystem::create_directories(folder);
    auto opened = EmbeddedStore::open(folder + "/calendar.db", host.clock);
    if (opened) store = std::move(*opened);
    const SettingsVolume volume{host.databases, host.boxes, host.files};
    LoadSettings(settings, host.registry, volume, host.clock, host.locale.data(), false);
    load_locale_conventions(settings, host.locale.data());
    settings.showindicator = 1;  // a bar for each appointment, the fullest view
    settings.showdays = 1;
    screen = layout_screen({480, 588}, 192, 192, true);  // less the menu bar
  }
  ~Bench() {
    store.reset();
    std::filesystem::remove_all(folder);
  }

  MonthSnapshot snapshot() {
    return take_month_snapshot(*session, settings, screen, kMonth, kYear, settings.today);
  }

  std::string folder;
  HeadlessHost host;
  std::unique_ptr<EmbeddedStore> store;
  std::unique_ptr<StoreSession> session;
  SettingsRecord settings;
  ScreenLayout screen;
};

Bench* bench = nullptr;  // Google Benchmark's functions take no argument of ours

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
    bench->session.reset();
    bench->store.reset();
    bench->store =
        std::move(*EmbeddedStore::open(bench->folder + "/calendar.db", bench->host.clock));
    bench->session = std::make_unique<StoreSession>(*bench->store, bench->host.boxes);
    bench->session->Open(nullptr);
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

int run(const char* file) {
  Bench parts(std::filesystem::temp_directory_path() /
              ("orvello_bench_" + std::to_string(::getpid())));
  if (!parts.store) return 1;
  const ImportResult imported = import_files({file}, *parts.store, parts.host.clock);
  if (!imported.done || imported.counts.imported == 0) {
    std::fprintf(stderr, "bench_month: %s holds nothing: %s\n", file, imported.failure.c_str());
    return 1;
  }
  parts.session = std::make_unique<StoreSession>(*parts.store, parts.host.boxes);
  if (!parts.session->Open(nullptr)) return 1;
  bench = &parts;
  benchmark::RunSpecifiedBenchmarks();
  parts.session.reset();
  return 0;
}

}  // namespace
}  // namespace orvello

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (argc == 2) return orvello::run(argv[1]);
  std::fprintf(stderr, "usage: bench_month FILE.ics [benchmark options]\n");
  return 2;
}
