// The labels of an appointment's categories.
#pragma once

#include <vector>

#include "base/text.h"

namespace orvello {

// The pieces between commas without the spaces around them; none that is empty.
inline std::vector<Text> labels_in(TextView categories) {
  std::vector<Text> labels;
  for (const Text& piece : split(categories, u','))
    if (const TextView label = trimmed(piece); !label.empty()) labels.emplace_back(label);
  return labels;
}

}  // namespace orvello
