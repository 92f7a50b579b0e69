// The question that a damaged calendar puts to whoever opens the window.
#pragma once

#include "hosts/shared/window_program.h"

namespace orvello {

// Offers the newest good copy, or what can still be read, before there is a window. True when the
// calendar was restored.
bool ask_for_way_back(ProgramSystem& system, const WindowParts& parts);

}  // namespace orvello
