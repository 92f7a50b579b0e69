// Device-independent bitmap files (.bmp), uncompressed, as icon strips are.
#pragma once

#include <optional>
#include <string_view>

#include "base/image.h"

namespace orvello {

// 1, 4, 8, 16, 24 or 32 bits a pixel, bottom-up or top-down, with a core or an info header. Nothing
// for any other content, for a file that is cut off, and for more than 64 million pixels.
std::optional<Image> read_bitmap(std::string_view bytes);

}  // namespace orvello
