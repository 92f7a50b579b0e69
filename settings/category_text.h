// Rules of category texts: an item's categories are labels separated by commas.
#pragma once

#include <optional>
#include <vector>

#include "settings/settings_record.h"

namespace orvello {

// Pieces between commas, compared after at most one leading blank; letter case counts.
bool categoryTextHasLabel(TextView category_text, TextView label);
int countChar(TextView text, char16_t character);
// What a person, or a file, means as a label: without blanks around it, and no longer than one.
Text label_of(TextView typed);
// The text with the label under another name, at its place and not twice. Pieces are labels as
// label_of() has them. Nothing where the text does not carry it.
std::optional<Text> with_label_renamed(TextView category_text, TextView label, TextView name);
// Blanks at both ends, not tabs.
void trimSpaces(Text& text);
// Keeps the first of equal labels and the order of the rest.
void removeDuplicateLabels(std::vector<Text>& labels);

struct CategoryColor {
  Color color = 0;
  std::int32_t flag = 0;
  friend bool operator==(const CategoryColor&, const CategoryColor&) = default;
};

// The first one of this label; null without one.
const CategoryProp* find_category_prop(const std::vector<CategoryProp>& props, TextView label);
// The colour in which views show what bears this label: nothing where none is stored or used.
std::optional<Color> used_category_color(const std::vector<CategoryProp>& props, TextView label);

// One for each label: what is stored for it, else the next colour of a palette of eight that only
// labels without a stored one use up.
std::vector<CategoryColor> buildCategoryColors(const std::vector<Text>& labels,
                                               const std::vector<CategoryProp>& props);

}  // namespace orvello
