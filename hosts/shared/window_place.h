// Where the window stood last, kept in a small file.
#pragma once

#include <optional>
#include <string>

#include "base/geometry.h"

namespace orvello {

std::optional<Rect> load_window_place(const std::string& path);
bool save_window_place(const std::string& path, const Rect& place);

// The place moved and shrunk so that it lies inside one of the screens: the one that it covers
// most, else the first.
Rect clamp_to_screens(Rect place, const Rect* screens, int count);

}  // namespace orvello
