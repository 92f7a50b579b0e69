// The settings sheet: eight pages, applied in order.
#pragma once

#include "options/options_context.h"

namespace orvello {

// Modal. The sheet's result; one that could not be made has been told.
int ShowSettingsSheet(const OptionsContext& context);

}  // namespace orvello
