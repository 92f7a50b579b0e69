// Rules of category texts: an item's categories are labels separated by commas.
#pragma once

#include <vector>

#include "settings/settings_record.h"

namespace orvello {

// Pieces between commas, compared after at most one leading blank; letter case counts.
bool categoryTextHasLabel(TextView category_text, TextView label);
int countChar(TextView text, char16_t character);
// Blanks at both ends, not tabs.
void trimSpaces(Text& text);
// Keeps the first of equal labels and the order of the rest.
void removeDuplicateLabels(std::vector<Text>& labels);

struct CategoryColor {
  Color color = 0;
  std::int32_t flag = 0;
  friend bool operator==(const CategoryColor&, const CategoryColor&) = default;
};

// One for each label: what is stored for it, else the next colour of a palette of eight that only
// labels without a stored one use up.
std::vector<CategoryColor> buildCategoryColors(const std::vector<Text>& labels,
                                               const std::vector<CategoryProp>& props);

}  // namespace orvello
