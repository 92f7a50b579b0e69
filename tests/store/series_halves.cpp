#include "store/series_halves.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "calendar/rule_days.h"
#include "calendar/rule_text.h"
#include "tests/calendar/rule_random.h"

namespace orvello {
namespace {

constexpr std::int64_t kSpan = 900 * kSecondsPerDay;

std::vector<LocalSeconds> listed(const AppointmentRecord& record, LocalSeconds from,
                                 LocalSeconds to) {
  std::vector<LocalSeconds> found;
  append_instances(recurrence_of(record), from, to, found);
  return found;
}

// Rules of every kind, alone and together, with counts, ends, dates and excluding rules.
AppointmentRecord any_series(RandomRules& random) {
  AppointmentRecord record;
  record.start = random.start();
  record.end = record.start + 3600;
  const auto add = [&](const char* name, int slowest) {
    Rule rule = random.rule(kAllFrequencies[random.number(slowest, 6)]);
    if (random.chance(30)) rule.count = random.number(1, 300);
    if (rule.count == 0 && random.chance(30))
      rule.until = record.start + random.number(1, 800) * kSecondsPerDay;
    record.rules += name + rule_text(rule) + "\n";
  };
  add("RRULE:", random.chance(10) ? 2 : 3);
  if (random.chance(15)) add("RRULE:", 3);
  if (random.chance(15)) add("EXRULE:", 3);
  if (random.chance(30)) {
    record.rules += "RDATE:";
    for (int left = random.number(1, 4); left > 0; --left)
      record.rules +=
          moment_text(record.start + random.number(-20, 600) * 7200LL) + (left > 1 ? "," : "\n");
  }
  if (random.chance(50))
    if (const auto rule = parse_rule(split_bytes(record.rules, '\n')[0].substr(6)))
      if (auto pattern = pattern_from_rule(*rule, record.start, 3600)) {
        record.pattern = std::move(pattern);
        record.rules.clear();
      }
  return record;
}

// Whatever recurrence is divided, the two halves have its instances, each once; and nearly all can
// be divided anywhere.
TEST(SeriesHalves, HaveTheInstancesOfTheWholeBetweenThem) {
  RandomRules random(11);
  int divided = 0, refused = 0, patterns = 0;
  for (int round = 0; round < 700; ++round) {
    const AppointmentRecord whole = any_series(random);
    const auto first = whole.start - 200 * kSecondsPerDay;
    const auto all = listed(whole, first, whole.start + kSpan);
    if (all.size() < 2) continue;
    const auto place = static_cast<std::size_t>(
        random.number(1, static_cast<int>(std::min<std::size_t>(all.size() - 1, 60))));
    const LocalSeconds from = all[place];
    SCOPED_TRACE(whole.rules + " from " + moment_text(whole.start) + " at " + moment_text(from));
    const auto rest = rest_of_series(whole, from, nullptr);
    if (!rest) {
      ++refused;
      continue;
    }
    ++divided;
    patterns += rest->pattern.has_value();
    EXPECT_TRUE(rest->pattern || !whole.pattern);
    const auto at = all.begin() + static_cast<std::ptrdiff_t>(place);
    ASSERT_EQ(listed(*rest, first, whole.start + kSpan), std::vector(at, all.end())) << rest->rules;
    if (!shows_before(whole, from, nullptr)) continue;
    AppointmentRecord early = whole;
    end_series_before(early, from);
    auto before = listed(early, first, whole.start + kSpan);
    for (const AppointmentException& one : early.exceptions) std::erase(before, one.original_start);
    ASSERT_EQ(before, std::vector(all.begin(), at)) << early.rules;
  }
  EXPECT_GT(divided, 500);
  EXPECT_GT(patterns, 150);
  EXPECT_LT(refused, divided / 20);
}

}  // namespace
}  // namespace orvello
