// A grid of cells that a procedure draws in a custom control: where they stand, and what pen and
// keys do in it. Lengths are the control's device pixels.
#pragma once

#include <cstdint>
#include <optional>

#include "ports/dialog.h"

namespace orvello {

class CellGrid {
 public:
  enum class Act {
    nothing,
    moved,   // the grid is to be drawn again
    chosen,  // another cell has been chosen
    opened   // the chosen one was tapped twice, or taken with a key
  };

  void set_count(int count);
  int chosen() const { return chosen_; }
  void choose(int cell);  // and shows it

  // Cells are at least `side` wide and high. With `wide` ones there are as few columns as show all
  // rows at once, else as many as there is room for.
  void lay_out(Size size, int side, bool wide);
  int columns() const { return columns_; }
  Rect place(int cell) const;      // scrolled as it is; may lie outside
  int cell_at(Point point) const;  // -1: none
  // How much is hidden above, and how long the whole is, for a mark that tells of it.
  int scrolled() const { return top_; }
  int length() const { return rows() * cell_.height; }

  // What an event of the control does. `tremble` is how far a pen may slip in a tap.
  Act handle(const DialogEvent& event, int tremble);

 private:
  int rows() const { return (count_ + columns_ - 1) / columns_; }
  void scroll_to(int top);
  Act pen(const DialogEvent& event, int tremble);
  Act key(std::uint32_t key);

  int count_ = 0, columns_ = 1, chosen_ = 0, top_ = 0;
  Size size_, cell_{1, 1};
  std::optional<Point> pen_;
  bool scrolls_ = false;
};

}  // namespace orvello
