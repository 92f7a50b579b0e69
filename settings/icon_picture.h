// Icons by number, and by the category label that they stand for.
#pragma once

#include "base/image.h"
#include "settings/settings_record.h"

namespace orvello {

// Icon numbers run through the built-in strip and then through the user's; empty past both.
Image icon_picture(const SettingsRecord& settings, int number);

// The picture of the first display-icon slot bound to this label; empty without one.
Image category_icon(const SettingsRecord& settings, TextView label);

}  // namespace orvello
