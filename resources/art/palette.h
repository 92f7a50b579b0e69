// The letters of the pixel maps. Few colours, shared by all pictures and in keeping with the
// views' own: deep blue, warm yellow, signal red and beige.
#pragma once

#include <optional>

#include "base/color.h"

namespace orvello::art {

constexpr std::optional<Color> color_of(char letter) {
  switch (letter) {
    case '.':
      return kMagenta;
    case 'K':
      return rgb(28, 28, 48);  // outline: dark enough for white and for tinted cells
    case 'W':
      return kWhite;
    case 'E':
      return rgb(231, 231, 206);  // beige
    case 's':
      return rgb(198, 198, 214);  // silver
    case 'S':
      return rgb(123, 123, 140);  // grey
    case 'B':
      return rgb(9, 9, 165);  // deep blue
    case 'b':
      return rgb(66, 115, 222);  // blue
    case 'c':
      return rgb(165, 214, 255);  // sky
    case 'L':
      return rgb(181, 198, 222);  // line blue
    case 'Y':
      return rgb(255, 214, 57);  // warm yellow
    case 'y':
      return rgb(255, 255, 132);  // note paper
    case 'o':
      return rgb(239, 140, 33);  // orange
    case 'R':
      return rgb(247, 0, 0);  // signal red
    case 'r':
      return rgb(165, 0, 24);  // dark red
    case 'P':
      return rgb(255, 156, 181);  // pink
    case 'V':
      return rgb(132, 66, 173);  // violet
    case 'G':
      return rgb(33, 140, 57);  // green
    case 'g':
      return rgb(132, 206, 82);  // leaf
    case 'N':
      return rgb(132, 82, 33);  // brown
    case 'n':
      return rgb(222, 173, 107);  // tan
    case 'k':
      return rgb(255, 206, 165);  // skin
    default:
      return std::nullopt;
  }
}

}  // namespace orvello::art
