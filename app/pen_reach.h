// How far a pen may go until it means something: in proportion to the view and the density.
#pragma once

#include <algorithm>
#include <cstdlib>

namespace orvello {

struct PenReach {
  int slack = 6;  // pixels that a hand trembles
  int turn = 40;  // pixels aside that turn the page

  static PenReach of(int view_width, int dpi) {
    const int slack = std::max(6, dpi / 16);
    return {slack, std::clamp(view_width / 6, 3 * slack, 2 * dpi)};
  }
  // The pages that a drag this far turns: 1 to the next, -1 back, 0 for one too short or too steep.
  int turned_by(int dx, int dy) const {
    if (std::abs(dx) < turn || std::abs(dx) <= 2 * std::abs(dy)) return 0;
    return dx < 0 ? 1 : -1;
  }
};

}  // namespace orvello
