// The colour picker: a palette of names, or sliders with a hex field. It remembers which.
#pragma once

#include <functional>
#include <optional>

#include "options/options_context.h"

namespace orvello {

struct ColorQuestion {
  Text title;   // what the colour is for
  Color color;  // as it is
  // What Reset takes; without it there is nothing to reset to.
  std::optional<Color> factory{};
  // How a colour is tried: letters in `partner` on it, or in it on `partner`. Without: it alone.
  std::optional<Color> partner{};
  bool is_text = false;
  // What speaks against a colour; empty: nothing.
  std::function<Text(Color)> warning{};
};

// Modal. Nothing when it was cancelled.
std::optional<Color> choose_color(const OptionsContext& context, const ColorQuestion& question);

}  // namespace orvello
