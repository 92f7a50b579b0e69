// The import's forms: what files would bring, and how far a long one has come.
#pragma once

#include "ports/dialog_template.h"
#include "resources/strings.h"

namespace orvello {

DialogTemplate import_dialog(Language language);                    // 300
DialogTemplate progress_dialog(TextView title, Language language);  // 360

// How the two lists of the import's form share it with so many rows in the first, `low` where the
// form has little height: the places in the template.
struct ImportLists {
  Rect files, items;
};
ImportLists import_lists(int rows, bool low);

}  // namespace orvello
