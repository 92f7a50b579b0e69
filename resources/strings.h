// The string table, in Russian and in English.
#pragma once

#include "base/text.h"
#include "ports/locale.h"
#include "resources/ids.h"

namespace orvello {

enum class Language { russian, english };

Language language_of(const Locale& locale);

Text load_string(StringId id, Language language);

}  // namespace orvello
