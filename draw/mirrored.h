// Places counted from the other side: what a right-to-left screen makes of a left-to-right one.
#pragma once

#include <cstdint>

#include "base/geometry.h"
#include "ports/messages.h"

namespace orvello {

inline Rect mirrored(const Rect& rect, int width) {
  return {width - rect.right(), rect.y, rect.width, rect.height};
}
// A pixel, not a corner between pixels.
inline Point mirrored(Point pixel, int width) { return {width - 1 - pixel.x, pixel.y}; }
// Of the Left and the Right key the other one; others as they are.
inline std::uint32_t mirrored_key(std::uint32_t key) {
  return key == kKeyLeft ? kKeyRight : key == kKeyRight ? kKeyLeft : key;
}

}  // namespace orvello
