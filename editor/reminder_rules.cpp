#include "editor/reminder_rules.h"

#include <algorithm>
#include <limits>

namespace orvello {
namespace {

int unit_index(int unit) { return std::clamp(unit, 0, 3); }

std::vector<Text> amounts_from(int least, int unit) {
  std::vector<Text> amounts;
  const auto add = [&](int amount) {
    if (amount >= least) amounts.push_back(format(u"%d", amount));
  };
  if (unit_index(unit) == 0)
    for (const int amount : {0, 1, 5, 10, 15, 30, 45}) add(amount);
  else
    for (int amount = 0; amount <= (unit_index(unit) == 3 ? 3 : 6); ++amount) add(amount);
  return amounts;
}

}  // namespace

ShownReminder shown_reminder(std::int32_t minutes) {
  ShownReminder shown{minutes, 0};
  // Divides by the larger unit where that leaves nothing, else by the next smaller one.
  const auto step = [&](int unit) {
    const auto size = static_cast<std::size_t>(unit);
    if (shown.amount < kUnitMinutes[size]) return;
    if (shown.amount % kUnitMinutes[size] != 0) --unit;
    shown.amount /= kUnitMinutes[static_cast<std::size_t>(unit)];
    shown.unit = unit;
  };
  step(3);
  step(2);
  // Not of 100 hours, which would become 100 minutes.
  if (shown.unit == 0) step(1);
  return shown;
}

std::int32_t reminder_minutes(TextView amount, int unit) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  const std::int64_t size = kUnitMinutes[static_cast<std::size_t>(unit_index(unit))];
  const std::int64_t number = std::clamp(leading_number(amount), -kMost / size, kMost / size);
  return static_cast<std::int32_t>(number * size);
}

Text checked_amount(TextView typed) {
  const bool digits = !typed.empty() && typed.find_first_not_of(u"0123456789") == TextView::npos;
  return digits ? Text(typed) : Text(u"1");
}

std::vector<Text> opening_amounts(int unit) { return amounts_from(0, unit); }
std::vector<Text> amounts_of(int unit) { return amounts_from(1, unit); }

}  // namespace orvello
