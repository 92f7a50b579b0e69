// What every benchmark over a full calendar stands on: a store file of its own that holds an .ics
// file, headless ports, and the settings as a fresh device has them.
#pragma once

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "exchange/import.h"
#include "files/input_file.h"
#include "hosts/headless/headless_host.h"
#include "settings/load_settings.h"
#include "store/embedded/embedded_store.h"
#include "store/store_session.h"

namespace orvello {

class FullCalendar {
 public:
  FullCalendar()
      : folder_(std::filesystem::temp_directory_path() /
                ("orvello_bench_" + std::to_string(::getpid()))) {
    std::filesystem::create_directories(folder_);
    const SettingsVolume volume{host.databases, host.boxes, host.files};
    LoadSettings(settings, host.registry, volume, host.clock, host.locale.data(), false);
    load_locale_conventions(settings, host.locale.data());
  }
  ~FullCalendar() {
    session.reset();
    store.reset();
    std::filesystem::remove_all(folder_);
  }

  // The store as a program finds it that has just started.
  bool open() {
    session.reset();
    store.reset();
    auto opened = EmbeddedStore::open((folder_ / "calendar.db").string(), host.clock);
    if (!opened) return false;
    store = std::move(*opened);
    session = std::make_unique<StoreSession>(*store, host.boxes);
    return session->Open(nullptr);
  }

  HeadlessHost host;
  SettingsRecord settings;
  std::unique_ptr<EmbeddedStore> store;
  std::unique_ptr<StoreSession> session;

 private:
  std::filesystem::path folder_;
};

// The whole of main: `bench` is where the benchmarks find their calendar, as Google Benchmark's
// functions take no argument of ours. `Bench` is a FullCalendar; `ready` prepares it.
template <typename Bench, typename Ready>
int run_over_calendar(int argc, char** argv, Bench*& bench, Ready ready) {
  benchmark::Initialize(&argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FILE.ics [Google Benchmark's options]\n", argv[0]);
    return 2;
  }
  Bench calendar;
  if (!calendar.open()) return 1;
  const ImportResult imported =
      import_files({argv[1]}, open_input_file, *calendar.store, calendar.host.clock);
  if (!imported.done || imported.counts.imported == 0) {
    std::fprintf(stderr, "%s: %s holds nothing: %s\n", argv[0], argv[1], imported.failure.c_str());
    return 1;
  }
  bench = &calendar;
  if (!ready(calendar)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  bench = nullptr;
  return 0;
}

}  // namespace orvello
