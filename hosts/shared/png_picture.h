// Pictures as PNG, for systems that bring nothing to write them with.
#pragma once

#include <optional>
#include <string>

#include "base/image.h"

namespace orvello {

// The whole file. Pixels of the colour `clear` are left out of the picture.
std::string png_picture(const Image& image, std::optional<Color> clear = std::nullopt);

}  // namespace orvello
