#include "settings/new_labels.h"

#include <algorithm>

#include "settings/category_list.h"
#include "settings/category_props.h"
#include "settings/category_text.h"

namespace orvello {

Color next_label_color(const std::vector<CategoryProp>& props) {
  const auto bearers = [&](Color color) {
    return std::count_if(props.begin(), props.end(), [color](const CategoryProp& prop) {
      return static_cast<Color>(prop.color) == color;
    });
  };
  return *std::min_element(kLabelPalette.begin(), kLabelPalette.end(),
                           [&](Color a, Color b) { return bearers(a) < bearers(b); });
}

bool give_label_colors(const SettingsVolume& volume, std::vector<CategoryProp>& props,
                       const std::vector<Text>& labels) {
  if (labels.empty()) return true;
  std::vector<CategoryProp> stored;
  if (!loadCategoryProps(volume, stored)) return false;
  const std::size_t known = stored.size();
  for (const Text& each : labels) {
    const Text label = label_of(each);
    if (label.empty() || find_category_prop(stored, label)) continue;
    stored.push_back({label, static_cast<std::int32_t>(next_label_color(stored)), 0});
  }
  const auto first = stored.begin() + static_cast<std::ptrdiff_t>(known);
  if (first != stored.end() && !addCategoryProps(volume, {first, stored.end()})) return false;
  props = std::move(stored);
  return true;
}

bool add_label(const SettingsVolume& device, std::vector<CategoryProp>& props, TextView label) {
  if (add_to_list(device, label) == CategoryAddition::failed) return false;
  give_label_colors(device, props, {Text(label)});
  return true;
}

}  // namespace orvello
