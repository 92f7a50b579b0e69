// Six days in two rows of a view, as a screen reader asks for them.
#pragma once

#include "base/text.h"
#include "ports/accessibility.h"

namespace orvello {

class CellView : public AccessibleView {
 public:
  AccessibleGrid accessible_grid() override {
    ++asked;
    AccessibleGrid grid{u"November 2026", 3, {}, buttons};
    for (int i = 0; i < 6; ++i)
      grid.cells.push_back({i == nameless ? Text() : u"Day " + to_utf16(std::to_string(i)),
                            {(i % 3) * 80, (i / 3) * 100, 80, 100},
                            i == selected});
    return grid;
  }
  std::vector<Text> accessible_items(int cell) override {
    if (cell == 4) return {u"Dentist", u"Lunch"};
    return {};
  }
  void choose_accessible(int cell) override { chosen = cell; }
  int selected = 2, chosen = -1, asked = 0;
  int nameless = -1, buttons = 0;  // a cell without a name, and how many of the last are no days
};

}  // namespace orvello
