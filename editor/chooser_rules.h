// What the chooser's list holds, what is chosen in it, and how letters lead through it.
#pragma once

#include <array>
#include <vector>

#include "ports/calendar_store.h"
#include "ports/locale.h"
#include "resources/chooser_ids.h"

namespace orvello {

// One row: a label, or a person with one of their addresses.
struct ChooserRow {
  Text name;
  Text address{};
  Text company{};
  StoreRecipient recipient{};  // what attends if the row is chosen
  bool chosen = false;
  friend bool operator==(const ChooserRow&, const ChooserRow&) = default;
};

// The pieces of a category text as labels are kept: trimmed, no longer than a label, none twice.
std::vector<Text> labels_of(TextView categories);
// The labels in the locale's order, each once and none empty; those of `chosen` are.
std::vector<ChooserRow> category_rows(std::vector<Text> labels, const std::vector<Text>& chosen,
                                      const Locale& locale);
// The chosen rows' labels with commas between them.
Text chosen_categories(const std::vector<ChooserRow>& rows);

// A row for each address of each contact. Those who attend already and are no contact, or another
// one by now, stand above them, so that nobody is lost by looking at the list.
std::vector<ChooserRow> attendee_rows(const std::vector<StoreContact>& contacts,
                                      const std::vector<StoreRecipient>& attendees);
// Each once, also one whom two contacts name.
std::vector<StoreRecipient> chosen_attendees(const std::vector<ChooserRow>& rows);

// Nine cells of three symbols. A list in which more rows begin with a Cyrillic letter than with any
// other is led through by those.
class LetterBar {
 public:
  void set_rows(const std::vector<ChooserRow>& rows);
  TextView label(int cell) const;
  // The symbol that a tap on a cell picks: its first, then the next with each further tap.
  char16_t tap(int cell);
  int cell() const { return cell_; }      // the last one that was tapped; -1: none
  int symbol() const { return symbol_; }  // 0-2 in it

 private:
  bool cyrillic_ = false;
  int cell_ = -1, symbol_ = 0;
};

// The first row whose name begins with the letter; with '#' the first that begins with none. -1:
// there is no such row.
int first_row_of(const std::vector<ChooserRow>& rows, char16_t symbol);

}  // namespace orvello
