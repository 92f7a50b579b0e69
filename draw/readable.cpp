#include "draw/readable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace orvello {
namespace {

constexpr double kLeastContrast = 2.5;

double linear(int channel) {
  static const std::array<double, 256> values = [] {
    std::array<double, 256> made{};
    for (std::size_t i = 0; i < made.size(); ++i) {
      const double c = static_cast<double>(i) / 255.0;
      made[i] = c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    }
    return made;
  }();
  return values[static_cast<std::size_t>(channel)];
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

bool is_dark(Color background) {
  return contrast(background, kWhite) > contrast(background, kBlack);
}

Color visible_on(Color background, Color mark, double least) {
  const Color end = is_dark(background) ? kWhite : kBlack;
  constexpr int kStep = 16;
  Color color = mark;
  for (int share = kStep; contrast(background, color) < least && share <= 256; share += kStep)
    color = mixed(mark, end, share);
  return color;
}

Image visible_on(Color background, Image picture, double least) {
  if (!is_dark(background)) return picture;
  std::map<Color, Color> known{{kMagenta, kMagenta}};
  for (Color& pixel : picture.pixels) {
    const auto [found, fresh] = known.try_emplace(pixel, pixel);
    if (fresh) found->second = visible_on(background, pixel, least);
    pixel = found->second;
  }
  return picture;
}

Color mixed(Color a, Color b, int share) {
  const auto mix = [share](int x, int y) { return (x * (256 - share) + y * share) / 256; };
  return rgb(mix(red_of(a), red_of(b)), mix(green_of(a), green_of(b)), mix(blue_of(a), blue_of(b)));
}

}  // namespace orvello
