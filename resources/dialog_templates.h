// Dialog templates as data. Places are pixels at 96 dpi on a screen 240 pixels wide; rules beside
// them say what becomes of a control where there is more room.
#pragma once

#include <vector>

#include "ports/dialog_template.h"
#include "resources/strings.h"

namespace orvello {

DialogTemplate day_view_dialog(Language language);                 // 106
DialogTemplate notes_dialog(Language language);                    // 108
DialogTemplate day_popup_dialog(Language language);                // 124
DialogTemplate recurrence_dialog(Language language);               // 147
DialogTemplate chooser_dialog(Language language, bool attendees);  // 142
// 149; recurring ones have a choice: one occurrence, it and all that follow where the store can
// part them, or the series.
enum class DeleteChoices { none, two, with_following };
DialogTemplate delete_dialog(Language language, DeleteChoices choices);
DialogTemplate date_dialog(Language language);          // 310
DialogTemplate greeting_dialog(Language language);      // 320
DialogTemplate organizer_dialog(Language language);     // 330
DialogTemplate color_picker_dialog(Language language);  // 340
DialogTemplate search_dialog(Language language);        // 350

// Every dialog in every variant, for the checks.
std::vector<DialogTemplate> all_dialogs(Language language);

}  // namespace orvello
