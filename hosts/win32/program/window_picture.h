// What a window shows, as a picture: also of one that nobody has seen.
#pragma once

#include <windows.h>

#include "base/image.h"

namespace orvello {

// The client area with all windows in it; empty when the platform has no memory for it.
Image window_picture(HWND window);

}  // namespace orvello
