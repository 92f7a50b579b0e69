// Whether there is a display to open a window on.
#pragma once

namespace orvello {

// True when a display server answers, or when the environment chooses a way to show windows that
// needs none. A toolkit ends the process when it finds none, so this is asked first.
bool display_reachable();

}  // namespace orvello
