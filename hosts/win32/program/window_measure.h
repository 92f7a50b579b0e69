// How quick the window is: what a person does is sent to its controls, and their paints are waited
// for.
#pragma once

#include "hosts/shared/window_host.h"
#include "hosts/win32/message_loop.h"

namespace orvello {

// As WindowHost has them.
std::vector<double> measure_turns(HWND frame, MessageLoop& loop, int count);
EditTimes measure_edits(HWND frame, MessageLoop& loop, int count);

}  // namespace orvello
