// The string table, in Russian and in English.
#pragma once

#include "base/text.h"
#include "resources/ids.h"

namespace orvello {

enum class Language { russian, english };

Text load_string(StringId id, Language language);

}  // namespace orvello
