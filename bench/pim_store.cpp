// What the device's own store costs over its stand-in, in milliseconds: 20,000 appointments, of
// which 5,000 recur. Usage: pim_figures
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

#include "hosts/headless/headless_ports.h"
#include "store/day_agenda.h"
#include "store/store_session.h"
#include "views/period_query.h"

#include "store/pim/pim_store.h"
#include "tests/store/pim/pim_server.h"

namespace orvello::test {
namespace {

double now_in_ms() {
  LARGE_INTEGER count, frequency;
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&frequency);
  return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// The middle of seven runs, with what one of them asked of the server.
void print_figure(const char* what, const std::function<std::size_t()>& work) {
  std::vector<double> times;
  std::size_t items = 0;
  int gets = 0, calls = 0, seen = 0;
  for (int i = 0; i < 7; ++i) {
    gets = standin().gets(), calls = standin().calls(), seen = standin().calls_of(L"Start");
    const double begin = now_in_ms();
    items = work();
    times.push_back(now_in_ms() - begin);
  }
  std::sort(times.begin(), times.end());
  seen = standin().calls_of(L"Start") - seen;
  std::printf(
      "%-16s %8.1f ms  %6u shown, %6d items fetched, %d properties (%.1f an item), "
      "%d calls\n",
      what, times[3], static_cast<unsigned>(items), seen, standin().gets() - gets,
      seen == 0 ? 0.0 : 1.0 * (standin().gets() - gets) / seen, standin().calls() - calls);
}

bool every_label(TextView) { return true; }

int run_figures() {
  HeadlessClock clock;
  HeadlessBoxes boxes;
  standin().keep_released(false);
  PimStore store(clock, {2, {}});
  StoreSession session(store, boxes);
  if (!session.Open(nullptr)) return 1;
  const double begin = now_in_ms();
  standin().fill(20000, 5000);
  std::printf("filled in %.0f ms\n", now_in_ms() - begin);
  const auto source = [&] { return session.CalendarItems(); };
  const MonthGrid grid = MonthGridRange(7, 2026, 1, 1);
  print_figure("month", [&] {
    const auto found = fetch_period(source, grid, every_label);
    return found ? found->items.size() : 0;
  });
  print_figure("day", [&] {
    const auto agenda = full_agenda(source().get(), Day(46205), SettingsRecord(), every_label);
    return agenda.rows.size();
  });
  // How soon a slow store lets go once it is told to stop.
  standin().be_slow(1);
  int looks = 0;
  double asked = 0;
  const auto items = source();
  items->stop_when([&] {
    if (++looks == 20) asked = now_in_ms();
    return looks >= 20;
  });
  const bool whole = each_item(*items, u"[Start] >= <46190", [](const StoreItem&) {});
  std::printf("%s %.1f ms after it was told to, at 1 ms a call\n",
              whole ? "not stopped" : "stopped", now_in_ms() - asked);
  return 0;
}

}  // namespace
}  // namespace orvello::test

int main() { return orvello::test::run_figures(); }
