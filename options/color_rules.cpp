#include "options/color_rules.h"

#include <algorithm>
#include <cmath>

#include "draw/readable.h"

namespace orvello {
namespace {

// By hue, each from pale to deep.
constexpr std::array<Color, kPaletteColors> kPalette = {
    rgb(255, 255, 255), rgb(224, 224, 224), rgb(190, 190, 190),
    rgb(128, 128, 128), rgb(72, 72, 72),    rgb(0, 0, 0),  //
    rgb(255, 228, 225), rgb(255, 182, 176), rgb(240, 128, 120),
    rgb(226, 30, 36),   rgb(160, 16, 28),   rgb(92, 8, 20),  //
    rgb(255, 236, 217), rgb(255, 208, 158), rgb(244, 170, 96),
    rgb(239, 124, 16),  rgb(170, 84, 10),   rgb(98, 48, 8),  //
    rgb(255, 250, 214), rgb(255, 240, 150), rgb(248, 220, 84),
    rgb(255, 208, 0),   rgb(156, 126, 0),   rgb(92, 74, 0),  //
    rgb(226, 246, 222), rgb(182, 230, 172), rgb(122, 200, 116),
    rgb(32, 164, 56),   rgb(16, 112, 40),   rgb(8, 66, 24),  //
    rgb(218, 246, 246), rgb(162, 228, 228), rgb(92, 196, 200),
    rgb(0, 160, 168),   rgb(0, 108, 116),   rgb(0, 62, 70),  //
    rgb(222, 236, 255), rgb(172, 206, 255), rgb(112, 160, 240),
    rgb(24, 92, 214),   rgb(12, 58, 150),   rgb(6, 28, 92),  //
    rgb(240, 228, 252), rgb(216, 188, 246), rgb(176, 136, 226),
    rgb(132, 60, 196),  rgb(92, 32, 144),   rgb(52, 16, 88),
};

constexpr StringId kGrays[kPaletteShades] = {StringId::palette_white,  StringId::palette_gray_1,
                                             StringId::palette_gray_2, StringId::palette_gray_3,
                                             StringId::palette_gray_4, StringId::palette_black};
constexpr StringId kHues[kPaletteHues - 1] = {StringId::palette_red,    StringId::palette_orange,
                                              StringId::palette_yellow, StringId::palette_green,
                                              StringId::palette_cyan,   StringId::palette_blue,
                                              StringId::palette_violet};
constexpr StringId kShades[kPaletteShades] = {StringId::palette_pale, StringId::palette_light,
                                              StringId::palette_soft, StringId::palette_full,
                                              StringId::palette_dark, StringId::palette_deep};

int rounded(double value) { return static_cast<int>(std::lround(value)); }

int digit_of(char16_t letter) {
  if (letter >= u'0' && letter <= u'9') return letter - u'0';
  if (letter >= u'a' && letter <= u'f') return letter - u'a' + 10;
  if (letter >= u'A' && letter <= u'F') return letter - u'A' + 10;
  return -1;
}

}  // namespace

HsvColor to_hsv(Color color, const HsvColor& before) {
  const int red = red_of(color), green = green_of(color), blue = blue_of(color);
  const int most = std::max({red, green, blue}), range = most - std::min({red, green, blue});
  HsvColor hsv = before;
  hsv.brightness = rounded(most * 100 / 255.0);
  if (most > 0) hsv.saturation = rounded(range * 100.0 / most);
  if (range == 0) return hsv;
  double sixth = 0;
  if (most == red)
    sixth = static_cast<double>(green - blue) / range;
  else if (most == green)
    sixth = 2 + static_cast<double>(blue - red) / range;
  else
    sixth = 4 + static_cast<double>(red - green) / range;
  hsv.hue = (rounded(sixth * 60) + 360) % 360;
  return hsv;
}

Color from_hsv(const HsvColor& hsv) {
  const double top = hsv.brightness * 255 / 100.0, sixth = hsv.hue / 60.0;
  const double range = top * hsv.saturation / 100;
  const auto part = [&](double shift) {
    const double place = std::fmod(sixth + shift, 6.0);
    return rounded(top - range * std::clamp(std::min(place, 4 - place), 0.0, 1.0));
  };
  return rgb(part(5), part(3), part(1));
}

Text hex_of(Color color) {
  constexpr TextView kDigits = u"0123456789ABCDEF";
  Text text = u"#";
  for (const int part : {red_of(color), green_of(color), blue_of(color)}) {
    text += kDigits[static_cast<std::size_t>(part >> 4)];
    text += kDigits[static_cast<std::size_t>(part & 15)];
  }
  return text;
}

std::optional<Color> color_of_hex(TextView text) {
  while (!text.empty() && text.front() == u' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == u' ') text.remove_suffix(1);
  if (!text.empty() && text.front() == u'#') text.remove_prefix(1);
  if (text.size() != 6) return std::nullopt;
  int value = 0;
  for (const char16_t letter : text) {
    const int digit = digit_of(letter);
    if (digit < 0) return std::nullopt;
    value = value * 16 + digit;
  }
  return rgb(value >> 16, value >> 8, value);
}

const std::array<Color, kPaletteColors>& palette_colors() { return kPalette; }

Text palette_name(int index, Language language) {
  const auto hue = static_cast<std::size_t>(index / kPaletteShades);
  const auto shade = static_cast<std::size_t>(index % kPaletteShades);
  if (hue == 0) return load_string(kGrays[shade], language);
  const Text name = load_string(kHues[hue - 1], language);
  return format(load_string(kShades[shade], language), name);
}

int palette_index_of(Color color) {
  const auto found = std::find(kPalette.begin(), kPalette.end(), color);
  return found == kPalette.end() ? -1 : static_cast<int>(found - kPalette.begin());
}

PaletteGrid::PaletteGrid(Size room) : size(room) {
  int largest = -1;
  for (const int wide : {8, 12, 16, 24, 6}) {
    const int side = std::min(size.width / wide, size.height / (kPaletteColors / wide));
    if (side <= largest) continue;
    largest = side;
    columns = wide;
    rows = kPaletteColors / wide;
  }
}

Rect PaletteGrid::cell(int index) const {
  const int column = index / rows, row = index % rows;
  const int x = size.width * column / columns, y = size.height * row / rows;
  return {x, y, size.width * (column + 1) / columns - x, size.height * (row + 1) / rows - y};
}

int PaletteGrid::index_at(Point point) const {
  for (int i = 0; i < kPaletteColors; ++i)
    if (cell(i).contains(point)) return i;
  return -1;
}

int PaletteGrid::moved(int index, int by_columns, int by_rows) const {
  const int column = index / rows + by_columns, row = index % rows + by_rows;
  if (column < 0 || column >= columns || row < 0 || row >= rows) return index;
  return column * rows + row;
}

std::optional<ColorPair> hard_to_read(const ItemColors& colors, ColorSlot slot) {
  const auto contrast_of = [&](const ColorPair& pair) {
    return contrast(colors[static_cast<std::size_t>(pair.front)],
                    colors[static_cast<std::size_t>(pair.ground)]);
  };
  std::optional<ColorPair> worst;
  for (const ColorPair& pair : text_pairs()) {
    if (pair.front != slot && pair.ground != slot) continue;
    if (contrast_of(pair) < (worst ? contrast_of(*worst) : kHardToRead)) worst = pair;
  }
  return worst;
}

ColorSlot partner_of(ColorSlot slot) {
  for (const ColorPair& pair : text_pairs())
    if (pair.front == slot) return pair.ground;
  for (const ColorPair& pair : text_pairs())
    if (pair.ground == slot) return pair.front;
  return slot;
}

std::vector<ColorSlot> slots_of_group(ColorGroup group) {
  std::vector<ColorSlot> slots;
  for (int slot = 0; slot < kColorSlots; ++slot)
    if (color_table()[static_cast<std::size_t>(slot)].group == group)
      slots.push_back(ColorSlot{slot});
  return slots;
}

}  // namespace orvello
