// The labels of the category mode: the device's own list with those that the appointment carries.
#pragma once

#include "editor/chooser_rules.h"
#include "editor/editor_context.h"

namespace orvello {

class LabelList {
 public:
  // `categories`: what the appointment carries.
  LabelList(const EditorContext& context, TextView categories)
      : context_(context), carried_(labels_of(categories)) {}

  // All labels, those that the appointment carries chosen. A list that cannot be read has been
  // told, and the rows are what could be.
  std::vector<ChooserRow> read() const;
  // What is typed as another label, which is chosen then; `rows` are read again, and what is chosen
  // in them stays so.
  // False: not added, which has been told where there was something to add.
  bool add(TextView typed, std::vector<ChooserRow>& rows);
  // Takes it out of the list; likewise.
  bool remove(TextView typed, std::vector<ChooserRow>& rows);

 private:
  std::vector<ChooserRow> rows_of(std::vector<Text> labels, const std::vector<Text>& chosen) const;
  void read_again(std::vector<ChooserRow>& rows, TextView removed = {}) const;

  const EditorContext& context_;
  std::vector<Text> carried_;  // and those that this device keeps with the appointments alone
};

}  // namespace orvello
