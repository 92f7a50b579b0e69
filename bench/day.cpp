// Opening days of a full calendar: bench_day FILE.ics [Google Benchmark's options]. The file is
// imported once, into a store file of its own; the days are those of November 2026.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "calendar/dates.h"
#include "exchange/import.h"
#include "hosts/headless/headless_host.h"
#include "settings/profiles.h"
#include "store/day_agenda.h"
#include "store/embedded/embedded_store.h"
#include "store/store_session.h"

namespace orvello {
namespace {

struct Bench {
  explicit Bench(const std::string& path) : folder(path) {
    std::filesystem::create_directories(folder);
    open();
    settings.showlocation = settings.categoryiconflag = 1;
  }
  ~Bench() {
    session.reset();
    store.reset();
    std::filesystem::remove_all(folder);
  }
  void open() {
    session.reset();
    store.reset();
    auto opened = EmbeddedStore::open(folder + "/calendar.db", host.clock);
    if (!opened) return;
    store = std::move(*opened);
    session = std::make_unique<StoreSession>(*store, host.boxes);
    session->Open(nullptr);
  }
  DayAgenda agenda(int of_november) {
    return full_agenda(
        session->CalendarItems().get(), day_number(2026, 11, of_november), settings,
        [this](TextView categories) { return profileAllowsCategory(settings, categories); });
  }

  std::string folder;
  HeadlessHost host;
  SettingsRecord settings;
  std::unique_ptr<EmbeddedStore> store;
  std::unique_ptr<StoreSession> session;
};

Bench* bench = nullptr;  // Google Benchmark's functions take no argument of ours

// The query, the rows and the arrays beside them, one day after the other.
void day_agenda(benchmark::State& state) {
  int of_november = 0;
  std::size_t days = 0, rows = 0;
  for (auto _ : state) {
    const DayAgenda agenda = bench->agenda(of_november % 30 + 1);
    ++of_november;
    ++days;
    rows += agenda.rows.size();
    benchmark::DoNotOptimize(agenda.rows.data());
  }
  state.SetLabel(std::to_string(rows / days) + " rows a day");
}
BENCHMARK(day_agenda)->Unit(benchmark::kMillisecond);

// The first day that a program shows, without the opening itself.
void day_agenda_just_opened(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    bench->open();
    state.ResumeTiming();
    benchmark::DoNotOptimize(bench->agenda(6).rows.data());
  }
}
BENCHMARK(day_agenda_just_opened)->Unit(benchmark::kMillisecond);

int run(const char* file) {
  Bench parts(std::filesystem::temp_directory_path() /
              ("orvello_bench_day_" + std::to_string(::getpid())));
  if (!parts.store) return 1;
  const ImportResult imported = import_files({file}, *parts.store, parts.host.clock);
  if (!imported.done || imported.counts.imported == 0) {
    std::fprintf(stderr, "bench_day: %s holds nothing: %s\n", file, imported.failure.c_str());
    return 1;
  }
  bench = &parts;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace
}  // namespace orvello

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (argc == 2) return orvello::run(argv[1]);
  std::fprintf(stderr, "usage: bench_day FILE.ics [benchmark options]\n");
  return 2;
}
