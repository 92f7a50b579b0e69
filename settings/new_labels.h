// What a category label gets as it comes into being: a colour of its own.
#pragma once

#include <array>
#include <vector>

#include "settings/settings_record.h"
#include "settings/volume.h"

namespace orvello {

// Told apart without red, green or blue cones too, as rows and as bars; black is readable on each.
inline constexpr std::array<Color, 8> kLabelPalette = {
    rgb(232, 192, 82),  rgb(105, 131, 250), rgb(239, 90, 90),   rgb(90, 249, 180),
    rgb(169, 153, 221), rgb(225, 245, 7),   rgb(209, 107, 142), rgb(184, 237, 253)};

// The first of those that the fewest labels have.
Color next_label_color(const std::vector<CategoryProp>& props);

// Stores a colour for each label that has none, and leaves those alone that have one. `props` are
// what is stored then; as they were after a failure, which has been shown: false.
bool give_label_colors(const SettingsVolume& volume, std::vector<CategoryProp>& props,
                       const std::vector<Text>& labels);

// A label of the device's list, old or new, that gets its colour as well. False when the list does
// not have it, which has been shown.
bool add_label(const SettingsVolume& device, std::vector<CategoryProp>& props, TextView label);

}  // namespace orvello
