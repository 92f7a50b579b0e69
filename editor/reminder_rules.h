// The reminder of an appointment as the form shows it: an amount of units.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/text.h"

namespace orvello {

inline constexpr std::array<TextView, 4> kReminderUnits = {u"minute(s)", u"hour(s)", u"day(s)",
                                                           u"week(s)"};
inline constexpr std::array<std::int32_t, 4> kUnitMinutes = {1, 60, 1440, 10080};
inline constexpr std::int32_t kMostReminderMinutes = 64800;

struct ShownReminder {
  std::int32_t amount = 0;
  int unit = 0;  // index of kReminderUnits
  friend bool operator==(const ShownReminder&, const ShownReminder&) = default;
};

// In the largest unit, by steps that each drop what does not divide: 1470 minutes are 24 hours,
// deliberately.
ShownReminder shown_reminder(std::int32_t minutes);
// What the amount's text and the unit mean; the most that there is rather than too much.
std::int32_t reminder_minutes(TextView amount, int unit);
// "1" in place of what is not made of digits alone.
Text checked_amount(TextView typed);

// The amounts offered when the form opens, and after the person chose another unit. Only the first
// have a zero, deliberately.
std::vector<Text> opening_amounts(int unit);
std::vector<Text> amounts_of(int unit);

}  // namespace orvello
