#include "cli/imported_labels.h"

#include <algorithm>
#include <iterator>

namespace orvello {
namespace {

// In order; nothing when they could not be read.
std::optional<std::vector<Text>> labels_in_use(RecordCalendarStore& store) {
  const auto uses = store.category_use_counts();
  if (!uses) return std::nullopt;
  std::vector<Text> labels;
  for (const CategoryUse& use : *uses) labels.push_back(use.label);
  return labels;
}

}  // namespace

ImportedLabels::ImportedLabels(RecordCalendarStore& store)
    : store_(store), before_(labels_in_use(store)) {}

std::vector<Text> ImportedLabels::fresh() const {
  std::vector<Text> fresh;
  const auto now = before_ ? labels_in_use(store_) : std::nullopt;
  if (now)
    std::set_difference(now->begin(), now->end(), before_->begin(), before_->end(),
                        std::back_inserter(fresh));
  return fresh;
}

}  // namespace orvello
