// How the cost of queries grows with a calendar: bench_growth ORVELLO FOLDER [MOST]
//
// Makes calendars of 1,000 to MOST (1,000,000) events below FOLDER, once all single ones and once
// series of which all but a hundred have ended, and prints a table: the day's list, the month's
// three queries and the year's marks, first on a store just opened and then again; and the
// program's agenda of a month as a whole process. November 2026 is shown.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "calendar/dates.h"
#include "hosts/headless/headless_host.h"
#include "store/day_agenda.h"
#include "store/embedded/embedded_store.h"
#include "store/store_session.h"
#include "views/period_query.h"
#include "views/year_marks.h"

namespace orvello {
namespace {

constexpr int kAlive = 100;  // series without end
constexpr int kTimes = 9;    // of each measurement; the median is shown

using Timer = std::chrono::steady_clock;

template <typename Work>
double milliseconds(Work work) {
  const auto begin = Timer::now();
  work();
  return std::chrono::duration<double, std::milli>(Timer::now() - begin).count();
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

AppointmentRecord event(int number, bool series) {
  AppointmentRecord record;
  record.uid = std::to_string(number) + "@growth";
  record.fields.subject = to_utf16("Event " + std::to_string(number));
  record.fields.location = to_utf16("Room " + std::to_string(number % 17));
  record.fields.categories = u"Work";
  // Spread evenly over the days of 2006 to 2026, those that end over 2006 to 2025.
  const Day day = day_of(2006, 1, 1) + number * 7919LL % (365 * (series ? 20 : 22));
  record.start = midnight_of(day) + number % 48 * 1800;
  record.end = record.start + 3600;
  if (series) record.rules = number < kAlive ? "RRULE:FREQ=WEEKLY" : "RRULE:FREQ=WEEKLY;COUNT=5";
  return record;
}

bool fill(const std::string& path, const Clock& clock, int events, bool series) {
  auto store = EmbeddedStore::open(path, clock);
  if (!store || !(*store)->begin()) return false;
  for (int i = 0; i < events; ++i)
    if ((*store)->put(event(i, series)) == 0) return false;
  return (*store)->commit();
}

struct Opened {
  Opened(const std::string& path, HeadlessHost& host) {
    auto opened = EmbeddedStore::open(path, host.clock);
    if (!opened) return;
    store = std::move(*opened);
    session = std::make_unique<StoreSession>(*store, host.boxes);
    session->Open(nullptr);
  }
  std::size_t day(int of_november) {
    const auto rows = compact_agenda(session->CalendarItems().get(), day_of(2026, 11, of_november),
                                     true, [](TextView) { return true; });
    return rows ? rows->size() : 0;
  }
  std::size_t month() {
    const auto found = fetch_period([this] { return session->CalendarItems(); },
                                    MonthGridRange(11, 2026, 1, 1), {});
    return found ? found->items.size() : 0;
  }
  void year() {
    const std::atomic<int> undisturbed{101};
    YearMarks marks;
    BuildYearMarks(
        2026, [this] { return session->CalendarItems(); }, {}, undisturbed, marks);
  }
  std::unique_ptr<EmbeddedStore> store;
  std::unique_ptr<StoreSession> session;
};

void measure(const std::string& program, const std::string& folder, int events, bool series) {
  HeadlessHost host;
  const std::string path = folder + "/calendar.db";
  std::vector<double> first_day, day, first_month, month, first_year, year, agenda;
  std::size_t rows = 0, occurrences = 0;
  for (int time = 0; time < kTimes; ++time) {
    Opened a(path, host), b(path, host), c(path, host);
    if (!a.session || !b.session || !c.session) return;
    first_day.push_back(milliseconds([&] { rows = a.day(6); }));
    a.day(7);  // reads some weeks around it
    day.push_back(milliseconds([&] { a.day(8 + time); }));
    first_month.push_back(milliseconds([&] { occurrences = b.month(); }));
    month.push_back(milliseconds([&] { b.month(); }));
    first_year.push_back(milliseconds([&] { c.year(); }));
    year.push_back(milliseconds([&] { c.year(); }));
    const std::string command =
        "'" + program + "' agenda 2026-11-01 2026-11-30 --data '" + folder + "' > /dev/null";
    agenda.push_back(milliseconds([&] {
      if (std::system(command.c_str()) != 0) std::fprintf(stderr, "%s failed\n", command.c_str());
    }));
  }
  std::printf("| %s | %d | %zu | %zu | %.2f | %.2f | %.2f | %.2f | %.2f | %.2f | %.0f |\n",
              series ? "series" : "single", events, rows, occurrences, median(first_day),
              median(day), median(first_month), median(month), median(first_year), median(year),
              median(agenda));
  std::fflush(stdout);
}

int run(const std::string& program, const std::string& folder, int most) {
  std::puts(
      "| events | number | a day's rows | a month's occurrences | first day ms | next day | first "
      "month | again | first year | again | agenda, whole process |\n"
      "| --- | ---: | ---: | ---: | ---: | ---: | ---: | ---: | ---: | ---: | ---: |");
  const HeadlessClock clock;
  for (const bool series : {false, true})
    for (int events = 1000; events <= most; events *= 10) {
      const std::string place =
          folder + (series ? "/series-" : "/single-") + std::to_string(events);
      std::filesystem::create_directories(place);
      if (!std::filesystem::exists(place + "/calendar.db") &&
          !fill(place + "/calendar.db", clock, events, series))
        return std::fprintf(stderr, "%s cannot be filled\n", place.c_str()), 1;
      measure(program, place, events, series);
    }
  return 0;
}

}  // namespace
}  // namespace orvello

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: bench_growth ORVELLO FOLDER [MOST]\n");
    return 2;
  }
  return orvello::run(argv[1], argv[2], argc > 3 ? std::atoi(argv[3]) : 1000000);
}
