#include "editor/label_list.h"

#include <algorithm>
#include <iterator>

#include "base/letters.h"
#include "settings/category_list.h"
#include "settings/category_text.h"
#include "settings/label_places.h"
#include "settings/new_labels.h"
#include "store/device_labels.h"

namespace orvello {
std::vector<ChooserRow> LabelList::read() const { return rows_of(carried_, carried_); }

std::vector<ChooserRow> LabelList::rows_of(std::vector<Text> labels,
                                           const std::vector<Text>& chosen) const {
  std::vector<Text> listed;
  read_device_labels(context_.volume, context_.platform_generation, context_.session, listed);
  for (const Text& label : listed) labels.push_back(label_of(label));
  return category_rows(std::move(labels), chosen, context_.host.locale);
}

// What is chosen stays, even where the list cannot be read now; but for what was taken out of it.
void LabelList::read_again(std::vector<ChooserRow>& rows, TextView removed) const {
  const std::vector<Text> chosen = labels_of(chosen_categories(rows));
  std::vector<Text> labels = carried_;
  std::copy_if(chosen.begin(), chosen.end(), std::back_inserter(labels),
               [removed](const Text& label) { return label != removed; });
  rows = rows_of(std::move(labels), chosen);
}

bool LabelList::add(TextView typed, std::vector<ChooserRow>& rows) {
  const Text label = label_of(typed);
  if (label.empty()) return false;
  MessageBoxes& boxes = context_.host.boxes;
  if (label.find(u',') != Text::npos) {
    boxes.show(load_string(StringId::box_comma, boxes), load_string(StringId::box_error, boxes),
               BoxIcon::warning);
    return false;
  }
  const Text wanted = in_capitals(label);
  if (std::any_of(rows.begin(), rows.end(),
                  [&](const ChooserRow& row) { return in_capitals(row.name) == wanted; })) {
    boxes.show(u"The category label you entered is already in the Category Database!", u"Error",
               BoxIcon::warning);
    return false;
  }
  if (context_.platform_generation == kListlessGeneration)
    carried_.push_back(label);
  else
    add_label(context_.volume, context_.settings.category_props, label);
  read_again(rows);
  // Who adds a label while choosing wants it.
  const auto added = std::find_if(rows.begin(), rows.end(),
                                  [&](const ChooserRow& row) { return row.name == label; });
  if (added == rows.end()) return false;
  added->chosen = true;
  return true;
}

bool LabelList::remove(TextView typed, std::vector<ChooserRow>& rows) {
  const Text label = label_of(typed);
  if (label == context_.settings.strdefcategory) {
    context_.host.boxes.show(
        u"Cannot remove the selected category, since it is being used as the default category in "
        u"'Settings->Options'",
        u"Error", BoxIcon::warning);
    return false;
  }
  const bool removed = removeCategory(context_.volume, label) == 1;
  if (removed) {
    carried_.erase(std::remove(carried_.begin(), carried_.end(), label), carried_.end());
    forget_label(
        {context_.settings, context_.host.registry, context_.volume, context_.platform_generation},
        label);
  }
  read_again(rows, removed ? TextView(label) : TextView());
  return true;
}

}  // namespace orvello
