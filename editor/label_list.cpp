#include "editor/label_list.h"

#include <algorithm>

#include "editor/letters.h"
#include "settings/category_list.h"

namespace orvello {
namespace {

constexpr int kListlessGeneration = 3;  // labels are what the items carry

}  // namespace

Text label_of(TextView typed) { return Text(trimmed(cut(trimmed(typed), kLabelLength))); }

std::vector<ChooserRow> LabelList::read() const {
  std::vector<Text> labels;
  readCategoryList(
      context_.volume, context_.platform_generation,
      [this](int number) -> std::optional<Text> {
        const auto folder = context_.session.folder(number);
        if (!folder) return std::nullopt;
        return folder->category_text();
      },
      labels);
  for (Text& label : labels) label = label_of(label);
  labels.insert(labels.end(), carried_.begin(), carried_.end());
  return category_rows(std::move(labels), carried_, context_.host.locale);
}

void LabelList::read_again(std::vector<ChooserRow>& rows) const {
  const std::vector<Text> chosen = labels_of(chosen_categories(rows));
  rows = read();
  for (ChooserRow& row : rows)
    row.chosen = std::find(chosen.begin(), chosen.end(), row.name) != chosen.end();
}

bool LabelList::add(TextView typed, std::vector<ChooserRow>& rows) {
  const Text label = label_of(typed);
  if (label.empty()) return false;
  MessageBoxes& boxes = context_.host.boxes;
  if (label.find(u',') != Text::npos) {
    boxes.show(u"A category label cannot contain a comma!", u"Error", BoxIcon::warning);
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
    addCategory(context_.volume, label);
  read_again(rows);
  // Who adds a label while choosing wants it.
  for (ChooserRow& row : rows) row.chosen = row.chosen || row.name == label;
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
  if (removeCategory(context_.volume, label) == 1)
    carried_.erase(std::remove(carried_.begin(), carried_.end(), label), carried_.end());
  read_again(rows);
  return true;
}

}  // namespace orvello
