// Rule expansion: one month of a series, far from its start, and whole decades.
#include <benchmark/benchmark.h>

#include "calendar/rule.h"

namespace orvello {
namespace {

constexpr const char* kRules[] = {
    "FREQ=DAILY;INTERVAL=3",
    "FREQ=WEEKLY;BYDAY=MO,WE,FR",
    "FREQ=MONTHLY;BYMONTHDAY=15",
    "FREQ=MONTHLY;BYDAY=2TU",
    "FREQ=YEARLY",
    "FREQ=WEEKLY;INTERVAL=2;BYDAY=TH;COUNT=2000",
    "FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1",
    "FREQ=YEARLY;BYWEEKNO=20;BYDAY=MO",
    "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30",  // never again
};

LocalSeconds midnight(int year, int month) { return midnight_of(day_of(year, month, 1)); }

void expand(benchmark::State& state, LocalSeconds from, LocalSeconds to) {
  const char* text = kRules[state.range(0)];
  const Rule rule = *parse_rule(text);
  const LocalSeconds start = midnight(2006, 1) + 9 * 3600;
  std::vector<LocalSeconds> instances;
  for (auto _ : state) {
    instances.clear();
    append_instances(rule, start, from, to, instances);
    benchmark::DoNotOptimize(instances.data());
  }
  state.SetLabel(text + std::string(", ") + std::to_string(instances.size()) + " instances");
}

void one_month_later(benchmark::State& state) {
  expand(state, midnight(2026, 11), midnight(2026, 12));
}
void sixty_years(benchmark::State& state) { expand(state, midnight(2006, 1), midnight(2066, 1)); }

BENCHMARK(one_month_later)->DenseRange(0, std::size(kRules) - 1);
BENCHMARK(sixty_years)->DenseRange(0, std::size(kRules) - 1)->Unit(benchmark::kMicrosecond);

void parse(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(parse_rule(kRules[6]));
}
BENCHMARK(parse);

}  // namespace
}  // namespace orvello

BENCHMARK_MAIN();
