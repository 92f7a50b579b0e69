// Whether there is a display to open a window on.
#pragma once

namespace orvello {

// True when a display server answers, or when the environment chooses a way to show windows that
// needs none. Whether a window can open on it only the toolkit finds out.
bool display_reachable();

// Where the toolkit gives up on the display, which would end the process: starts the program anew
// with the same arguments, without the way of showing windows that the environment chose, or, after
// that was tried, with display_reachable() saying no. Returns when that is not possible.
void start_without_this_display();

}  // namespace orvello
