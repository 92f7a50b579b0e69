#include "draw/fit_text.h"

#include <algorithm>

namespace orvello {

FontSpec fitting_font(Canvas& canvas, const std::vector<Text>& texts, int width, int points,
                      int weight, const ScreenLayout& layout) {
  constexpr int kSmallest = 5;
  for (;; --points) {
    const FontSpec font = font_of(points, weight, layout);
    const bool fits = std::all_of(texts.begin(), texts.end(), [&](const Text& text) {
      return canvas.measure(text, font).width <= width;
    });
    if (fits || points <= kSmallest) return font;
  }
}

}  // namespace orvello
