#include "options/profiles_rules.h"

#include <algorithm>
#include <cstdlib>

#include "options/sorted_texts.h"
#include "settings/category_text.h"

namespace orvello {

Text meant_profile(TextView standing, const std::vector<Text>& names, std::size_t most) {
  if (row_of_text(names, standing) >= 0) return Text(standing);
  Text name(standing);
  trimSpaces(name);
  if (row_of_text(names, name) >= 0) return name;
  name = cut(standing, most);
  trimSpaces(name);
  return name;
}

bool stepped_to_row(TextView before, TextView after, const std::vector<Text>& names) {
  const int from = row_of_text(names, before), to = row_of_text(names, after);
  return from >= 0 && to >= 0 && std::abs(from - to) == 1 && after.size() > 1 &&
         !starts_with(before, after) && !starts_with(after, before);
}

std::vector<int> rows_of_labels(const std::vector<Text>& labels, const std::vector<Text>& wanted) {
  std::vector<int> rows;
  for (std::size_t i = 0; i < labels.size(); ++i)
    if (std::find(wanted.begin(), wanted.end(), labels[i]) != wanted.end())
      rows.push_back(static_cast<int>(i));
  return rows;
}

}  // namespace orvello
