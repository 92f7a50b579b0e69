// Which colour stands for an appointment in the Month view: its category's, where that is chosen,
// else one that says how the time is spent.
#pragma once

#include <optional>
#include <vector>

#include "views/month_snapshot.h"

namespace orvello {

class BarColors {
 public:
  // For the categories texts of the snapshot's appointments.
  explicit BarColors(const MonthSnapshot& snapshot);
  Color of(std::int32_t categories, BusyStatus status) const;

 private:
  std::vector<std::optional<Color>> by_categories_;
};

}  // namespace orvello
