#include "draw/readable.h"

#include <algorithm>
#include <cmath>

namespace orvello {
namespace {

constexpr double kLeastContrast = 2.5;

double linear(int channel) {
  const double c = channel / 255.0;
  return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(Color c) {
  return 0.2126 * linear(red_of(c)) + 0.7152 * linear(green_of(c)) + 0.0722 * linear(blue_of(c));
}

}  // namespace

double contrast(Color a, Color b) {
  const double x = luminance(a), y = luminance(b);
  return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
}

Color readable_on(Color background, Color text) {
  if (contrast(background, text) >= kLeastContrast) return text;
  return contrast(background, kBlack) >= contrast(background, kWhite) ? kBlack : kWhite;
}

Color mixed(Color a, Color b, int share) {
  const auto mix = [share](int x, int y) { return (x * (256 - share) + y * share) / 256; };
  return rgb(mix(red_of(a), red_of(b)), mix(green_of(a), green_of(b)), mix(blue_of(a), blue_of(b)));
}

}  // namespace orvello
