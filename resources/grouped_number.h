// Large numbers as a person writes them.
#pragma once

#include <cstdint>

#include "calendar/locale_data.h"
#include "resources/strings.h"

namespace orvello {

// "1,234" as the language groups digits, in the locale's own; from 0 up.
Text grouped_number(std::int64_t number, Language language, const LocaleData& locale);

}  // namespace orvello
