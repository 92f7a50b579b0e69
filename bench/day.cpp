// Opening days of a full calendar: bench_day FILE.ics [Google Benchmark's options]. The file is
// imported once, into a store file of its own; the days are those of November 2026.
#include "bench/full_calendar.h"
#include "calendar/dates.h"
#include "settings/profiles.h"
#include "store/day_agenda.h"

namespace orvello {
namespace {

struct DayBench : FullCalendar {
  DayBench() { settings.showlocation = settings.categoryiconflag = 1; }

  DayAgenda agenda(int of_november) {
    return full_agenda(
        session->CalendarItems().get(), day_of(2026, 11, of_november), settings,
        [this](TextView categories) { return profileAllowsCategory(settings, categories); });
  }
};

DayBench* bench = nullptr;

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

}  // namespace
}  // namespace orvello

int main(int argc, char** argv) {
  return orvello::run_over_calendar(argc, argv, orvello::bench,
                                    [](orvello::DayBench&) { return true; });
}
