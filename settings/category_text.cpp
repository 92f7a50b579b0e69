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

Text label_of(TextView typed) { return Text(trimmed(cut(trimmed(typed), kLabelLength))); }

std::optional<Text> with_label_renamed(TextView category_text, TextView label, TextView name) {
  std::vector<Text> kept;
  bool carries = false, named = false;
  for (Text& piece : split(category_text, u',')) {
    const Text meant = label_of(piece);
    const bool becomes = meant == label;
    carries = carries || becomes;
    if (becomes || meant == name) {
      if (named) continue;
      named = true;
    }
    if (becomes) piece = Text(piece.front() == u' ' ? 1 : 0, u' ').append(name);
    kept.push_back(std::move(piece));
  }
  if (!carries) return std::nullopt;
  Text text;
  for (const Text& piece : kept) {
    if (!text.empty()) text += u',';
    text += piece;
  }
  return text;
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

const CategoryProp* find_category_prop(const std::vector<CategoryProp>& props, TextView label) {
  const auto found = std::find_if(props.begin(), props.end(),
                                  [&](const CategoryProp& prop) { return prop.label == label; });
  return found == props.end() ? nullptr : &*found;
}

std::optional<Color> used_category_color(const std::vector<CategoryProp>& props, TextView label) {
  const CategoryProp* prop = find_category_prop(props, label);
  if (!prop || !prop->uses_color()) return std::nullopt;
  return static_cast<Color>(prop->color) & kWhite;
}

std::vector<CategoryColor> buildCategoryColors(const std::vector<Text>& labels,
                                               const std::vector<CategoryProp>& props) {
  std::vector<CategoryColor> colors;
  std::size_t next = 0;
  for (const Text& label : labels) {
    if (const CategoryProp* stored = find_category_prop(props, label))
      colors.push_back({static_cast<Color>(stored->color), stored->flag});
    else
      colors.push_back({kPalette[next++ % kPalette.size()], 0});
  }
  return colors;
}

}  // namespace orvello
