// A folder's own properties, which it answers as IItem; only platform generation 3 does.
#pragma once

#include <optional>

#include "store/pim/automation.h"

namespace orvello {

// What the folder tells of changes from now on. Without IItem there is nothing to switch on.
bool switch_on_notifications(const PimObject& folder);

// The labels in use in the folder, comma-separated, into `labels`: nothing where the folder cannot
// tell them by itself. False: failure.
[[nodiscard]] bool read_folder_labels(const PimObject& folder, std::optional<Text>& labels);

}  // namespace orvello
