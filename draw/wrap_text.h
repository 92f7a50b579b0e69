// Breaking text into lines by measuring it, so that what is drawn is what was measured.
#pragma once

#include <unordered_map>
#include <vector>

#include "ports/canvas.h"

namespace orvello {

// How many UTF-16 units of the text's start fit into the width, never half of a surrogate pair and
// at least one character.
std::size_t fitting_units(Canvas& canvas, TextView text, const FontSpec& font, int width);

// How many of the `fitting` units at the text's start stay on a line: up to a blank, which then
// begins the rest, else to behind a hyphen or the like, and all of them where a word has no such
// place.
std::size_t line_units(TextView text, std::size_t fitting);

// The text, or as much of its start as leaves room for the "..." behind it.
Text shortened(Canvas& canvas, TextView text, const FontSpec& font, int width);

// Tells texts that fit for sure from those that have to be measured, by the widths of their
// characters, each measured once: a long list has thousands of texts and a few dozen characters.
class CharacterWidths {
 public:
  CharacterWidths(Canvas& canvas, const FontSpec& font) : canvas_(canvas), font_(font) {}
  bool surely_fits(TextView text, int width);

 private:
  Canvas& canvas_;
  FontSpec font_;
  std::unordered_map<char16_t, int> widths_;
};

// Lines no wider than `width`, broken as line_units says, and at line ends always.
std::vector<Text> word_wrapped(Canvas& canvas, TextView text, const FontSpec& font, int width);

}  // namespace orvello
