// A list in columns whose rows the program colours: what each row shows is decided here, a host
// draws it as it stands. Columns that are wider than the list scroll sideways. Lengths are device
// pixels. User-interface thread.
#pragma once

#include <algorithm>
#include <optional>
#include <vector>

#include "base/color.h"
#include "base/geometry.h"
#include "base/image.h"
#include "base/text.h"
#include "ports/canvas.h"

namespace orvello {

struct ReportColumn {
  int width = 0;  // 0: what its title and its widest cell need
  Align align = Align::left;
  Text title{};  // a list of which any column has one shows them above its rows
  friend bool operator==(const ReportColumn&, const ReportColumn&) = default;
};

// A box in front of a row's first cell; the procedure changes it when the row is tapped.
enum class ReportMark { none, clear, set };

struct ReportRow {
  std::vector<Text> cells;    // one a column
  std::vector<int> pictures;  // in the picture column, side by side: indexes of the content's
  int height = 0;
  Color background = kWhite;
  Color text = kBlack;
  std::optional<Color> first_text;  // of the first cell, where that is another
  bool bold = false;
  // A line feed in a cell begins another line, and all cells begin on the same one; else it is a
  // blank.
  bool lines = false;
  ReportMark mark = ReportMark::none;
  std::optional<Color> line_above;  // a separator along the upper edge
  Text name;                        // for a screen reader; empty: the cells, one after the other
  friend bool operator==(const ReportRow&, const ReportRow&) = default;
};

// Of its highest cell, where that has several; else 1.
inline int lines_of(const ReportRow& row) {
  std::ptrdiff_t most = 0;
  for (const Text& cell : row.cells)
    if (row.lines) most = std::max(most, std::count(cell.begin(), cell.end(), u'\n'));
  return static_cast<int>(most) + 1;
}

struct ReportContent {
  FontSpec font;
  FontSpec bold_font;
  std::vector<ReportColumn> columns;
  int padding = 2;          // left and right of a cell's text
  int picture_column = -1;  // its cells show pictures and no text
  int picture_gap = 0;      // between two pictures
  std::vector<Image> pictures;
  Color background = kWhite;  // of the list, below the rows
  int line_width = 1;         // of the separators
  Color selected_background = kBlack;
  Color selected_text = kWhite;
  std::vector<ReportRow> rows;
};

struct ReportPlace {
  Size size;                 // of the list, its scroll bar included
  int scroll_bar_width = 0;  // what a scroll bar takes away when the rows are higher than the list
  int border = 0;            // a border's width, counted once
};

class ReportList {
 public:
  virtual ~ReportList() = default;
  // Replaces everything; nothing is selected and the list stands at its top.
  virtual void set_content(ReportContent content) = 0;
  virtual ReportPlace place() const = 0;
  // Replaces the selection. The first of them is the row that a screen reader stands on.
  virtual void select(const std::vector<int>& rows) = 0;
  virtual void set_mark(int row, ReportMark mark) = 0;
  // Where a row stands in the main window, scrolled as it is; empty for no such row.
  virtual Rect row_place(int row) const = 0;
  // A point in the list; -1: below the rows, or on the titles, which tell of no press.
  virtual int row_at(Point point) const = 0;
  virtual void scroll_by(int pixels) = 0;  // downwards; stops at both ends
  // Goes on scrolling at this speed, downwards, and slows down by itself; the next press, scrolling
  // or content ends it, and so does 0.
  virtual void glide(int pixels_per_second) = 0;
  virtual bool gliding() const = 0;    // still so while the press that ends it is told
  virtual void show_row(int row) = 0;  // scrolls as little as it takes
};

}  // namespace orvello
