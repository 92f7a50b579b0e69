// How many appointments each day has. User-interface thread, as all access to the store.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "views/period_query.h"

namespace orvello {

// One number for each whole day from `from_day` to `to_day`; an appointment counts once on every
// day that it covers. Nothing when the store could not be read.
std::optional<std::vector<int>> count_days(const ItemsSource& source, Day from_day, Day to_day,
                                           const ProfileTest& passes);

}  // namespace orvello
