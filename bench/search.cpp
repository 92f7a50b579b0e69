// A search over a full calendar: bench_search FILE.ics [Google Benchmark's options]. What the form
// does as it opens, and at each letter.
#include "bench/full_calendar.h"
#include "store/text_search.h"

namespace orvello {
namespace {

constexpr CalendarDate kNow = 46332.4;  // 6 November 2026
constexpr std::size_t kShown = 200;

struct SearchBench : FullCalendar {
  bool read(TextIndex& all) {
    std::optional<std::int32_t> last = 0;
    do {
      last = session->calendar_folder()->each_text(
          *last, kNow, [&](const StoreTexts& texts) { all.add(texts); });
    } while (last && *last != 0);
    return last.has_value();
  }
  TextIndex index;
};

SearchBench* bench = nullptr;

void search_read_all(benchmark::State& state) {
  for (auto _ : state) {
    TextIndex index;
    if (!bench->read(index)) state.SkipWithError("the store could not be read");
    benchmark::DoNotOptimize(&index);
  }
}
BENCHMARK(search_read_all)->Unit(benchmark::kMillisecond);

// One of the steps between which a person can do something.
void search_read_step(benchmark::State& state) {
  std::int32_t at = 0;
  for (auto _ : state) {
    TextIndex index;
    at = bench->session->calendar_folder()
             ->each_text(at, kNow, [&](const StoreTexts& texts) { index.add(texts); })
             .value_or(0);
  }
}
BENCHMARK(search_read_step)->Unit(benchmark::kMillisecond);

void search(benchmark::State& state, TextView typed) {
  const TextQuery query(typed);
  std::size_t found = 0;
  for (auto _ : state) found = bench->index.find(query, kNow, kShown).count;
  state.SetLabel(std::to_string(found) + " found");
}
BENCHMARK_CAPTURE(search, one_letter, u"e")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(search, word, u"medical")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(search, words, u"room 7 event 77 home")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(search, nothing, u"eventeventx")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvello

int main(int argc, char** argv) {
  return orvello::run_over_calendar(argc, argv, orvello::bench, [](orvello::SearchBench& calendar) {
    return calendar.open() && calendar.read(calendar.index);
  });
}
