// A category label under another name, in every appointment and everywhere else that names it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "settings/label_places.h"
#include "store/operation_context.h"

namespace orvello {

// An appointment, or a changed occurrence by its start, and its categories before.
struct LabelledItem {
  std::int32_t oid = 0;
  CalendarDate occurrence = kNoDate;
  Text before;
};

// Whoever carries the label: each series followed by its changed occurrences. Nothing: failure.
std::optional<std::vector<LabelledItem>> items_with_label(StoreSession& session, TextView label);

// How many appointments, or changed occurrences, have the other name now; where some had it before
// the two labels are one. One transaction and one step of the history, which brings everything back
// that named the label. Nothing when nothing was changed, which has been told.
std::optional<int> rename_label(const OperationContext& context, const LabelPlaces& places,
                                TextView label, TextView name);

}  // namespace orvello
