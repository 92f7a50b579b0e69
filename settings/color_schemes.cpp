#include "settings/color_schemes.h"

#include <algorithm>
#include <vector>

#include "settings/colors.h"

namespace orvello {
namespace {

// In the order of the slots: month, day, year, popup schedule, popup notes.
constexpr ColorScheme kMadeSchemes[] = {
    {StringId::scheme_dark,
     {rgb(18, 20, 28),    rgb(224, 226, 234), rgb(28, 30, 38),    rgb(150, 185, 255),
      rgb(46, 50, 62),    rgb(224, 226, 234), rgb(248, 248, 252), rgb(24, 26, 32),
      rgb(30, 32, 40),    rgb(31, 115, 174),  rgb(255, 134, 112), rgb(118, 122, 134),
      rgb(14, 15, 19),    rgb(150, 152, 160), rgb(24, 34, 92),    rgb(255, 255, 255),
      rgb(150, 190, 255), rgb(236, 238, 244), rgb(28, 30, 38),    rgb(40, 43, 54),
      rgb(84, 88, 102),   rgb(255, 170, 150), rgb(178, 180, 188), rgb(28, 30, 38),
      rgb(150, 185, 255), rgb(50, 64, 128),   rgb(255, 255, 255), rgb(24, 26, 32),
      rgb(30, 32, 40),    rgb(248, 248, 252), rgb(255, 140, 80),  rgb(31, 115, 174),
      rgb(40, 54, 120),   rgb(255, 255, 255), rgb(38, 41, 51),    rgb(236, 238, 244),
      rgb(66, 60, 24),    rgb(255, 244, 190)}},
    {StringId::scheme_contrast_dark,
     {rgb(0, 0, 0),       rgb(255, 255, 255), rgb(0, 0, 0),       rgb(255, 255, 0),
      rgb(40, 40, 40),    rgb(255, 255, 255), rgb(255, 255, 255), rgb(0, 0, 0),
      rgb(14, 14, 14),    rgb(21, 115, 209),  rgb(255, 140, 120), rgb(190, 190, 190),
      rgb(0, 0, 0),       rgb(176, 176, 176), rgb(0, 0, 0),       rgb(255, 255, 255),
      rgb(130, 220, 255), rgb(255, 255, 255), rgb(0, 0, 0),       rgb(24, 24, 24),
      rgb(80, 80, 80),    rgb(255, 190, 160), rgb(200, 200, 200), rgb(0, 0, 0),
      rgb(255, 255, 0),   rgb(0, 40, 120),    rgb(255, 255, 255), rgb(0, 0, 0),
      rgb(14, 14, 14),    rgb(255, 255, 255), rgb(255, 150, 90),  rgb(21, 115, 209),
      rgb(0, 40, 120),    rgb(255, 255, 255), rgb(0, 0, 0),       rgb(255, 255, 255),
      rgb(0, 0, 0),       rgb(255, 255, 0)}},
    {StringId::scheme_contrast_light,
     {rgb(0, 0, 0),       rgb(255, 255, 255), rgb(255, 255, 255), rgb(0, 0, 0),
      rgb(225, 225, 225), rgb(0, 0, 0),       rgb(0, 0, 0),       rgb(255, 255, 255),
      rgb(244, 244, 244), rgb(0, 146, 200),   rgb(160, 0, 0),     rgb(90, 90, 90),
      rgb(255, 255, 255), rgb(76, 76, 76),    rgb(0, 0, 60),      rgb(255, 255, 255),
      rgb(0, 0, 120),     rgb(0, 0, 0),       rgb(255, 255, 255), rgb(238, 238, 238),
      rgb(190, 190, 190), rgb(110, 0, 0),     rgb(60, 60, 60),    rgb(255, 255, 255),
      rgb(0, 0, 0),       rgb(0, 0, 0),       rgb(255, 255, 255), rgb(255, 255, 255),
      rgb(244, 244, 244), rgb(0, 0, 0),       rgb(160, 0, 0),     rgb(0, 146, 200),
      rgb(0, 0, 0),       rgb(255, 255, 255), rgb(255, 255, 255), rgb(0, 0, 0),
      rgb(255, 255, 255), rgb(0, 0, 0)}},
    {StringId::scheme_paper,
     {rgb(74, 52, 36),    rgb(255, 248, 236), rgb(250, 244, 230), rgb(110, 58, 20),
      rgb(228, 208, 176), rgb(50, 34, 22),    rgb(30, 20, 12),    rgb(252, 248, 238),
      rgb(246, 237, 219), rgb(196, 104, 34),  rgb(140, 24, 16),   rgb(134, 117, 96),
      rgb(244, 236, 220), rgb(104, 88, 70),   rgb(70, 36, 22),    rgb(255, 246, 230),
      rgb(24, 66, 110),   rgb(44, 30, 20),    rgb(252, 248, 238), rgb(243, 233, 212),
      rgb(206, 188, 156), rgb(140, 26, 16),   rgb(96, 82, 66),    rgb(250, 244, 230),
      rgb(110, 58, 20),   rgb(122, 70, 30),   rgb(255, 248, 236), rgb(252, 248, 238),
      rgb(246, 237, 219), rgb(30, 20, 12),    rgb(150, 26, 18),   rgb(196, 104, 34),
      rgb(74, 52, 36),    rgb(255, 248, 236), rgb(252, 248, 238), rgb(44, 30, 20),
      rgb(255, 240, 186), rgb(60, 42, 10)}},
    {StringId::scheme_sea,
     {rgb(12, 62, 78),    rgb(236, 248, 250), rgb(255, 255, 255), rgb(0, 82, 110),
      rgb(196, 224, 230), rgb(8, 40, 52),     rgb(6, 24, 32),     rgb(255, 255, 255),
      rgb(232, 244, 247), rgb(44, 143, 151),  rgb(140, 20, 52),   rgb(104, 130, 138),
      rgb(236, 242, 240), rgb(82, 98, 104),   rgb(0, 48, 84),     rgb(255, 255, 255),
      rgb(0, 66, 140),    rgb(10, 34, 44),    rgb(236, 247, 250), rgb(212, 232, 238),
      rgb(176, 206, 214), rgb(146, 16, 52),   rgb(68, 88, 96),    rgb(255, 255, 255),
      rgb(0, 82, 110),    rgb(0, 78, 110),    rgb(255, 255, 255), rgb(255, 255, 255),
      rgb(232, 244, 247), rgb(6, 24, 32),     rgb(140, 20, 52),   rgb(44, 143, 151),
      rgb(0, 70, 100),    rgb(255, 255, 255), rgb(246, 252, 252), rgb(10, 34, 44),
      rgb(224, 246, 232), rgb(8, 48, 36)}},
};
constexpr std::size_t kDark = 0;  // of these

ColorScheme factory_scheme() {
  ColorScheme scheme{StringId::scheme_factory, {}};
  for (std::size_t slot = 0; slot < scheme.colors.size(); ++slot)
    scheme.colors[slot] = color_table()[slot].factory;
  return scheme;
}

}  // namespace

std::span<const ColorScheme> color_schemes() {
  static const std::vector<ColorScheme> schemes = [] {
    std::vector<ColorScheme> all{factory_scheme()};
    all.insert(all.end(), std::begin(kMadeSchemes), std::end(kMadeSchemes));
    return all;
  }();
  return schemes;
}

const ColorScheme& dark_scheme() { return kMadeSchemes[kDark]; }

int scheme_of(const ItemColors& colors) {
  const auto schemes = color_schemes();
  const auto found = std::find_if(schemes.begin(), schemes.end(), [&](const ColorScheme& scheme) {
    return scheme.colors == colors;
  });
  return found == schemes.end() ? -1 : static_cast<int>(found - schemes.begin());
}

}  // namespace orvello
