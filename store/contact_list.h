// The contacts as a person looks for them.
#pragma once

#include <optional>
#include <vector>

#include "ports/calendar_store.h"
#include "ports/locale.h"

namespace orvello {

// Of the contacts folder, by file_as in the locale's order; namesakes by number. Nothing when the
// store could not be read.
std::optional<std::vector<StoreContact>> sorted_contacts(StoreFolder& folder, const Locale& locale);

}  // namespace orvello
