// The menu bar and the menus as data.
#pragma once

#include "ports/menu_bar.h"
#include "resources/strings.h"

namespace orvello {

// Menu bar 103. The profile menu holds "All" alone until the profiles are listed. `strip` is the
// image strip for the screen's density; the bar is `height` pixels high.
MenuBarContent main_menu_bar(Language language, Image strip, int height);

}  // namespace orvello
