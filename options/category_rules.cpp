#include "options/category_rules.h"

#include <algorithm>

#include "base/letters.h"

namespace orvello {

std::vector<CategoryRow> category_page_rows(std::vector<Text> labels,
                                            const std::vector<CategoryProp>& props,
                                            const std::vector<Text>& marked,
                                            const ColorChoices& choices, const Locale& locale) {
  for (Text& label : labels) label = label_of(label);
  labels.erase(std::remove(labels.begin(), labels.end(), Text()), labels.end());
  removeDuplicateLabels(labels);
  const std::vector<CategoryColor> colors = buildCategoryColors(labels, props);
  std::vector<CategoryRow> rows;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const auto choice = choices.find(labels[i]);
    rows.push_back({labels[i], choice == choices.end() ? colors[i] : choice->second,
                    find_category_prop(props, labels[i]) != nullptr,
                    std::find(marked.begin(), marked.end(), labels[i]) != marked.end()});
  }
  std::sort(rows.begin(), rows.end(), [&](const CategoryRow& a, const CategoryRow& b) {
    const int order = locale.compare(a.label, b.label);
    return order != 0 ? order < 0 : a.label < b.label;
  });
  return rows;
}

int row_of_label(const std::vector<CategoryRow>& rows, TextView label) {
  const auto found = std::find_if(rows.begin(), rows.end(),
                                  [&](const CategoryRow& row) { return row.label == label; });
  return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

CategoryName category_name(const std::vector<CategoryRow>& rows, TextView typed, int renamed) {
  using Fault = CategoryName::Fault;
  CategoryName name;
  name.label = label_of(typed);
  const Text capitals = in_capitals(name.label);
  if (name.label.empty()) {
    name.fault = Fault::empty;
  } else if (name.label.find(u',') != Text::npos) {
    name.fault = Fault::comma;
  } else if (capitals == in_capitals(kNoCategory)) {
    name.fault = Fault::reserved;
  } else {
    name.taken = row_of_label(rows, name.label);
    for (int row = 0; name.taken < 0 && row < static_cast<int>(rows.size()); ++row)
      if (row != renamed && in_capitals(rows[static_cast<std::size_t>(row)].label) == capitals)
        name.taken = row;
    if (name.taken >= 0) name.fault = Fault::taken;
  }
  return name;
}

Text fault_text(const CategoryName& name, bool may_merge, Language language) {
  switch (name.fault) {
    case CategoryName::Fault::comma:
      return load_string(StringId::box_comma, language);
    case CategoryName::Fault::reserved:
      return load_string(StringId::box_none_label, language);
    case CategoryName::Fault::taken:
      if (may_merge) break;
      return u"The category label you entered is already in the Category Database!";
    case CategoryName::Fault::none:
    case CategoryName::Fault::empty:
      break;
  }
  return {};
}

}  // namespace orvello
