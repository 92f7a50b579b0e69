// The colours of all that the host draws by itself: one set for light desktops, one for dark ones.
#pragma once

#include "ports/form_colors.h"

namespace orvello {

struct LookColors : FormColors {
  Color hover{};        // the ground of what the pointer is over
  Color edge{};         // of a field
  Color accent_down{};  // the accent, pressed
  Color warning{};      // of a heading
  Color error{};
};

inline constexpr LookColors kLightColors{FormColors{},     rgb(236, 237, 244), rgb(134, 136, 150),
                                         rgb(40, 40, 200), rgb(138, 80, 0),    rgb(153, 0, 0)};

inline constexpr LookColors kDarkColors{
    {rgb(30, 31, 38), rgb(42, 44, 54), rgb(236, 237, 243), rgb(170, 173, 188), rgb(71, 74, 88),
     rgb(169, 184, 255), rgb(58, 64, 98), rgb(18, 20, 46)},
    rgb(51, 54, 67),
    rgb(127, 130, 147),
    rgb(198, 208, 255),
    rgb(240, 185, 90),
    rgb(255, 156, 148)};

}  // namespace orvello
