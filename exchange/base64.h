// Bytes as base64.
#pragma once

#include <string>
#include <string_view>

namespace orvello {

std::string to_base64(std::string_view bytes);
std::string from_base64(std::string_view text);  // skips what is no base64

}  // namespace orvello
