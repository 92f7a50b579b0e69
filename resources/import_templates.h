// The import's forms: what files would bring, and how far a long one has come.
#pragma once

#include "ports/dialog_template.h"
#include "resources/strings.h"

namespace orvello {

DialogTemplate import_dialog(Language language);                    // 300
DialogTemplate progress_dialog(TextView title, Language language);  // 360

// How the import's form is shared, in the template's places: so many lines of counts, and so many
// rows of calendars and problems, which have no list of their own without any. `low` where the form
// has little height.
struct ImportPlaces {
  Rect counts, files, items;
};
ImportPlaces import_places(int lines, int rows, bool low);

}  // namespace orvello
