// Which chosen colours meet on the screen: texts on their grounds, and grounds that are told apart.
#pragma once

#include <span>

#include "settings/color_slots.h"

namespace orvello {

struct ColorPair {
  ColorSlot front;
  ColorSlot ground;
};

// Each text slot with each ground that it is written on. Where a text could hardly be read on
// today's ground, the views write it in black or white there.
std::span<const ColorPair> text_pairs();

// Marks and lines beside or on what they have to be seen against.
std::span<const ColorPair> mark_pairs();

}  // namespace orvello
