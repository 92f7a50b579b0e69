// A colour as the settings store keeps it: 0x00BBGGRR.
#pragma once

#include <cstdint>

namespace orvello {

using Color = std::uint32_t;

constexpr Color rgb(int red, int green, int blue) {
  return static_cast<Color>((red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16));
}
constexpr int red_of(Color c) { return static_cast<int>(c & 0xFF); }
constexpr int green_of(Color c) { return static_cast<int>((c >> 8) & 0xFF); }
constexpr int blue_of(Color c) { return static_cast<int>((c >> 16) & 0xFF); }

inline constexpr Color kWhite = 0x00FFFFFF;
inline constexpr Color kBlack = 0x00000000;
inline constexpr Color kMagenta = 0x00FF00FF;  // bitmaps use it for "transparent"

}  // namespace orvello
