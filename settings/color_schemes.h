// Ready-made sets of all chosen colours.
#pragma once

#include <span>

#include "resources/ids.h"
#include "settings/color_slots.h"

namespace orvello {

struct ColorScheme {
  StringId name;
  ItemColors colors;
};

// The first one is the factory's. In all others each text is read on each of its grounds at a
// contrast of 4.5 at least (7 with high contrast, except on today), and what has to be told apart
// is at 3.
std::span<const ColorScheme> color_schemes();

// What a first start takes on a desktop that is light text on dark.
const ColorScheme& dark_scheme();

// Its position; -1: these colours are nobody's but the person's.
int scheme_of(const ItemColors& colors);

}  // namespace orvello
