// Requests to redraw while the worker draws: bench_redraw FILE.ics [Google Benchmark's options].
// The whole application over the full calendar, without a window; what is measured is the time from
// the last request to the moment at which its drawing can be painted.
#include <QGuiApplication>

#include "app/application.h"
#include "bench/full_calendar.h"
#include "hosts/qt/qt_surface.h"
#include "ports/messages.h"
#include "resources/ids.h"
#include "settings/registry_access.h"

namespace orvello {
namespace {

ScreenInfo double_density() {
  ScreenInfo screen;
  screen.resolution = {480, 640};
  screen.work_area = {0, 0, 480, 640};
  screen.dpi_x = screen.dpi_y = 192;
  return screen;
}

struct RedrawBench : FullCalendar {
  RedrawBench() {
    EnsureSettingsKey(host.registry);
    WriteNumberSetting(host.registry, u"showindicator", 1);
    WriteNumberSetting(host.registry, u"coloryearview", 1);
  }
  ~RedrawBench() {
    if (application) window.send({kMessageClose, 0, {}, 0});
  }
  bool start() {
    Host parts = host.host();
    const Host ports{parts.clock, parts.locale, parts.registry, parts.files, parts.databases,
                     surfaces,    window,       parts.menu_bar, parts.boxes, parts.dialogs,
                     *store,      parts.input,  parts.shell};
    application = std::make_unique<Application>(ports, StartOptions());
    return application->start_up() == StartResult::running && settle();
  }
  // The message loop until nothing is left to draw.
  bool settle() {
    window.pump();
    return application->grid().worker().wait_until_idle(std::chrono::seconds(60));
  }

  HeadlessWindow window{double_density()};
  QtSurfaces surfaces;
  std::unique_ptr<Application> application;
};

RedrawBench* bench = nullptr;

// `requests` messages of the store before the loop gets to them; the clock runs from the last.
void redraw(benchmark::State& state, std::uint32_t view) {
  bench->window.command(view);
  bench->settle();
  const auto requests = state.range(0);
  for (auto _ : state) {
    state.PauseTiming();
    bench->application->grid().request_redraw();
    bench->window.pump();  // the worker draws now
    for (std::int64_t i = 1; i < requests; ++i) bench->window.send({kItemChangedRemote, 0, {}, 0});
    state.ResumeTiming();
    bench->window.send({kItemChangedRemote, 0, {}, 0});
    if (!bench->settle()) state.SkipWithError("the drawing did not end");
  }
  state.SetLabel("the last of " + std::to_string(requests));
}
void redraw_month(benchmark::State& state) { redraw(state, kCommandMonthView); }
void redraw_year(benchmark::State& state) { redraw(state, kCommandYearView); }
BENCHMARK(redraw_month)->Arg(1)->Arg(1000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(redraw_year)->Arg(1)->Arg(1000)->Unit(benchmark::kMillisecond)->UseRealTime();

// A keyboard that moves on while the worker draws: each key is handled and drawn for, or given up.
void redraw_thousand_keys(benchmark::State& state) {
  bench->window.command(kCommandMonthView);
  bench->settle();
  for (auto _ : state) {
    state.PauseTiming();
    for (int i = 0; i < 999; ++i) {
      bench->window.key(i % 2 ? kKeyLeft : kKeyRight);
      bench->window.pump();
    }
    state.ResumeTiming();
    bench->window.key(kKeyLeft);
    if (!bench->settle()) state.SkipWithError("the drawing did not end");
  }
}
BENCHMARK(redraw_thousand_keys)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace orvello

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  return orvello::run_over_calendar(argc, argv, orvello::bench,
                                    [](orvello::RedrawBench& one) { return one.start(); });
}
