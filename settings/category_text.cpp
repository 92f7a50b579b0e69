#include "settings/category_text.h"

#include <algorithm>

namespace orvello {
namespace {

constexpr std::array<Color, 8> kPalette = {
    rgb(119, 119, 255), rgb(159, 255, 159), rgb(255, 255, 128), rgb(255, 132, 132),
    rgb(255, 128, 255), rgb(255, 176, 98),  rgb(206, 206, 206), rgb(255, 255, 255)};

}  // namespace

bool categoryTextHasLabel(TextView category_text, TextView label) {
  if (category_text.empty()) return false;
  for (std::size_t from = 0; from <= category_text.size();) {
    const std::size_t comma = std::min(category_text.find(u',', from), category_text.size());
    TextView piece = category_text.substr(from, comma - from);
    if (!piece.empty() && piece.front() == u' ') piece.remove_prefix(1);
    if (piece == label) return true;
    from = comma + 1;
  }
  return false;
}

int countChar(TextView text, char16_t character) {
  return static_cast<int>(std::count(text.begin(), text.end(), character));
}

void trimSpaces(Text& text) { text = Text(trimmed(text)); }

void removeDuplicateLabels(std::vector<Text>& labels) {
  std::vector<Text> kept;
  for (Text& label : labels)
    if (std::find(kept.begin(), kept.end(), label) == kept.end()) kept.push_back(std::move(label));
  labels = std::move(kept);
}

std::vector<CategoryColor> buildCategoryColors(const std::vector<Text>& labels,
                                               const std::vector<CategoryProp>& props) {
  std::vector<CategoryColor> colors;
  std::size_t next = 0;
  for (const Text& label : labels) {
    const auto stored = std::find_if(props.begin(), props.end(),
                                     [&](const CategoryProp& prop) { return prop.label == label; });
    if (stored != props.end())
      colors.push_back({static_cast<Color>(stored->color), stored->flag});
    else
      colors.push_back({kPalette[next++ % kPalette.size()], 0});
  }
  return colors;
}

}  // namespace orvello
