// One icon out of both strips.
#pragma once

#include <optional>

#include "options/options_context.h"

namespace orvello {

// Modal: the number of the icon that was chosen, `shown` to begin with. Nothing: cancelled.
std::optional<int> choose_icon(const OptionsContext& context, int shown);

}  // namespace orvello
