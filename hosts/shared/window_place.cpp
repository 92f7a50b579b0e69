#include "hosts/shared/window_place.h"

#include <algorithm>
#include <sstream>

#include "files/input_file.h"
#include "files/replace_file.h"

namespace orvello {

std::optional<Rect> load_window_place(const std::string& path) {
  const auto content = read_whole_file(path, 4096);
  if (!content) return std::nullopt;
  std::istringstream file(*content);
  Rect place;
  constexpr int kFarthest = 1 << 20;
  if (!(file >> place.x >> place.y >> place.width >> place.height)) return std::nullopt;
  if (place.empty() || place.width > kFarthest || place.height > kFarthest ||
      std::abs(place.x) > kFarthest || std::abs(place.y) > kFarthest)
    return std::nullopt;
  return place;
}

bool save_window_place(const std::string& path, const Rect& place) {
  const std::string text = std::to_string(place.x) + " " + std::to_string(place.y) + " " +
                           std::to_string(place.width) + " " + std::to_string(place.height) + "\n";
  return static_cast<bool>(replace_file(path, text));
}

Rect clamp_to_screens(Rect place, const Rect* screens, int count) {
  if (count <= 0) return place;
  const auto shared = [&](const Rect& screen) {
    const Rect part = intersection(place, screen);
    return std::int64_t{part.width} * part.height;
  };
  const Rect& screen =
      *std::max_element(screens, screens + count,
                        [&](const Rect& a, const Rect& b) { return shared(a) < shared(b); });
  place.width = std::min(place.width, screen.width);
  place.height = std::min(place.height, screen.height);
  place.x = std::clamp(place.x, screen.x, screen.right() - place.width);
  place.y = std::clamp(place.y, screen.y, screen.bottom() - place.height);
  return place;
}

}  // namespace orvello
