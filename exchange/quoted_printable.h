// Values as vCalendar 1.0 and vCard 2.1 write them, which newer files have now and then as well.
#pragma once

#include <string>
#include <string_view>

#include "exchange/content_line.h"

namespace orvello {

bool is_quoted_printable(const Property& property);
std::string from_quoted_printable(std::string_view text);

// The value as UTF-8, where only ";", "," and "\" are ever escaped, and a line end as "\n".
std::string plain_text(const Property& property);

}  // namespace orvello
