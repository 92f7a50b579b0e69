// The texts of whole records, for searches.
#pragma once

#include <functional>

#include "store/record_calendar_store.h"

namespace orvello {

// As StoreFolder::each_text.
std::optional<std::int32_t> each_record_text(RecordCalendarStore& store, std::int32_t after,
                                             LocalSeconds now,
                                             const std::function<void(StoreTexts&)>& visit);

}  // namespace orvello
