// Dialog templates as data. Places are pixels at 96 dpi on a screen 240 pixels wide.
#pragma once

#include "ports/dialogs.h"
#include "resources/strings.h"

namespace orvello {

DialogTemplate day_view_dialog(Language language);   // 106
DialogTemplate day_popup_dialog(Language language);  // 124
DialogTemplate import_dialog(Language language);     // 300

}  // namespace orvello
