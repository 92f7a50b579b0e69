// What the Color page and the colour picker know of colours: models, hex text, the palette, and
// which texts a colour would make hard to read. Pure.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "base/color.h"
#include "base/geometry.h"
#include "base/text.h"
#include "resources/strings.h"
#include "settings/color_pairs.h"
#include "settings/colors.h"

namespace orvello {

// Hue 0 to 359 degrees; saturation and brightness 0 to 100 percent.
struct HsvColor {
  int hue = 0;
  int saturation = 0;
  int brightness = 0;
  friend bool operator==(const HsvColor&, const HsvColor&) = default;
};
// A grey has no hue of its own, black no saturation either: those of `before` stay.
HsvColor to_hsv(Color color, const HsvColor& before = {});
Color from_hsv(const HsvColor& hsv);

// "#RRGGBB".
Text hex_of(Color color);
// Six hexadecimal digits, with or without the "#" and blanks around them.
std::optional<Color> color_of_hex(TextView text);

// The named palette: eight hues of six shades each, from pale to deep.
inline constexpr int kPaletteHues = 8, kPaletteShades = 6;
inline constexpr int kPaletteColors = kPaletteHues * kPaletteShades;
const std::array<Color, kPaletteColors>& palette_colors();
Text palette_name(int index, Language language);
int palette_index_of(Color color);  // -1: it has no name

// The palette's cells run down the columns. As many columns as give the largest cells.
struct PaletteGrid {
  explicit PaletteGrid(Size size);
  Rect cell(int index) const;
  int index_at(Point point) const;  // -1: beside them
  // The cell beside; the same one at an edge.
  int moved(int index, int columns, int rows) const;

  Size size;
  int columns = 0, rows = 0;
};

// Below this contrast a text is called hard to read.
inline constexpr double kHardToRead = 3.0;
// The pair of a text and its ground that the slot belongs to with the least contrast, when that is
// too low.
std::optional<ColorPair> hard_to_read(const ItemColors& colors, ColorSlot slot);
// What the slot is best seen with: the ground of a text, else the first text on it, else itself.
ColorSlot partner_of(ColorSlot slot);

// The slots of a group, ascending.
std::vector<ColorSlot> slots_of_group(ColorGroup group);

}  // namespace orvello
