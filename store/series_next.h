// Where a series stands: at what comes next of it.
#pragma once

#include "store/series.h"

namespace orvello {

// The first occurrence that has not ended at `now`, as the device shows both, else the last one.
// Nothing where all are deleted.
std::optional<StoreItem> next_or_last(const Series& series, LocalSeconds now, DeviceTime& time,
                                      SeriesScratch& scratch);

}  // namespace orvello
