// The rows of the Category page, and which names a category may have.
#pragma once

#include <map>
#include <vector>

#include "ports/locale.h"
#include "resources/strings.h"
#include "settings/category_text.h"

namespace orvello {

struct CategoryRow {
  Text label;
  CategoryColor color;
  bool stored = false;  // it has a record of its own
  bool marked = false;  // for removal, once nothing uses it any more
  bool uses_color() const { return (color.flag & kCategoryColorUnused) == 0; }
  friend bool operator==(const CategoryRow&, const CategoryRow&) = default;
};

// What was chosen on the page and is not confirmed yet.
using ColorChoices = std::map<Text, CategoryColor>;

// The device's labels in the locale's order, each once and none empty.
std::vector<CategoryRow> category_page_rows(std::vector<Text> labels,
                                            const std::vector<CategoryProp>& props,
                                            const std::vector<Text>& marked,
                                            const ColorChoices& choices, const Locale& locale);
// -1: there is none.
int row_of_label(const std::vector<CategoryRow>& rows, TextView label);

struct CategoryName {
  enum class Fault { none, empty, comma, reserved, taken };
  Fault fault = Fault::none;
  Text label;      // what is meant by what was typed
  int taken = -1;  // the row that has the name, whatever its letters' case
};
// `renamed`: the row whose new name it would be, which may change the case of its letters; or -1.
CategoryName category_name(const std::vector<CategoryRow>& rows, TextView typed, int renamed);
// Empty where there is nothing to say, and where a row that has the name may take another one in.
Text fault_text(const CategoryName& name, bool may_merge, Language language);

}  // namespace orvello
