// Templates of the appointment editor and of its question about series.
#pragma once

#include "ports/dialog_template.h"
#include "resources/editor_ids.h"
#include "resources/strings.h"

namespace orvello {

DialogTemplate editor_dialog(Language language, bool low_resolution = true);
// Where a time's line and edit stand: behind its date, and in the place of that.
Rect time_place(int control);
Rect lone_time_place(int control);
// `following`: with "this and all that follow".
DialogTemplate series_question_dialog(Language language, bool following);

}  // namespace orvello
