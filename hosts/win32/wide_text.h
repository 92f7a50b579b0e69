// Between the core's UTF-16 and the platform's wide characters, which are the same units.
#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

namespace orvello {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

// With its terminator, as long as the text lives.
inline const wchar_t* wide(const Text& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}
inline Text from_wide(std::wstring_view text) { return Text(text.begin(), text.end()); }

}  // namespace orvello
