// What counting and marking days have in common: the days of an item, and whether it is shown.
#pragma once

#include <algorithm>
#include <unordered_map>

#include "views/period_query.h"

namespace orvello {

// Whole days, the first to the last; none when last < first.
struct DaySpan {
  Day first;
  Day last{-1};
};

// A time of midnight belongs to the day that it begins.
inline DaySpan days_of(const StoreItem& item) {
  // Within the calendar, as a damaged date may lie anywhere.
  const auto day = [](CalendarDate date) {
    return std::clamp(whole_day(date), Day(-1000000), Day(3000000));
  };
  return {day(item.start), day(item.end)};
}

// Appointments share few categories texts: the profile is asked once about each.
class ProfileMemory {
 public:
  explicit ProfileMemory(const ProfileTest& passes) : passes_(passes) {}

  bool passes(const Text& categories) {
    if (!passes_) return true;
    const auto [place, added] = known_.try_emplace(categories, false);
    if (added) place->second = passes_(categories);
    return place->second;
  }

 private:
  const ProfileTest& passes_;
  std::unordered_map<Text, bool> known_;
};

}  // namespace orvello
