// A report list without its window: where rows and columns stand, how far they are scrolled, and
// how they are drawn. All lengths are device pixels, places are counted from the corner of the
// room that a host gives it; lines run from left to right here, a host mirrors.
#pragma once

#include <vector>

#include "draw/report_paint.h"

namespace orvello {

class ReportPane {
 public:
  // What is the host's and not the content's.
  struct Look {
    int bar = 13;        // a scroll bar's width
    int mark_side = 14;  // of a mark's box
    int mark_gap = 6;    // behind it
    int title_gap = 4;   // added to the height of the titles' text
    int line = 1;        // below the titles
    Color title_ground = kWhite, title_text = kBlack, title_line = kBlack;
  };

  void set_look(const Look& look) { look_ = look; }
  // Stands at its top; `canvas` measures what columns without a width need.
  void set_content(ReportContent content, Canvas& canvas);
  void set_room(
      Size room);  // scroll bars included; stays where it was scrolled to, as far as it can
  const ReportContent& content() const { return content_; }
  int row_count() const { return static_cast<int>(content_.rows.size()); }
  bool has_row(int row) const { return row >= 0 && row < row_count(); }

  // The rows' part of the room: below the titles and beside the scroll bars.
  Rect view() const;
  int titles_height() const { return titles_; }
  bool scrolls_down() const { return lowest() > 0; }
  bool scrolls_sideways() const { return sideways_; }
  int rows_height() const { return tops_.back(); }
  int whole_width() const;  // of all columns
  int top() const { return top_; }
  int left() const { return left_; }
  int lowest() const;    // the most that top() can be
  int farthest() const;  // the most that left() can be

  bool set_top(int top);  // false: an end was in the way
  void set_left(int left);
  // What set_top would take to bring a row into sight; a row higher than the view shows its
  // beginning.
  int top_for(int row) const;
  int row_at(Point point) const;  // -1: none, or beside the view
  Rect row_place(int row) const;  // empty: no such row; may lie outside of the view

  void set_mark(int row, ReportMark mark);
  void select(const std::vector<int>& rows);
  bool is_selected(int row) const;
  int first_selected() const { return first_selected_; }  // as they were given; -1: none

  // The whole room but the scroll bars.
  void paint(Canvas& canvas) const;

 private:
  int needed_width(std::size_t column, Canvas& canvas) const;
  bool any_mark() const;
  void keep_within();
  void paint_titles(Canvas& canvas) const;

  Look look_;
  ReportContent content_;
  ReportRowLook row_look_;
  std::vector<int> tops_{0};  // of each row and of what follows the last
  int titles_ = 0;
  Size room_;
  bool sideways_ = false;
  int top_ = 0, left_ = 0;
  std::vector<int> selected_;  // ascending
  int first_selected_ = -1;
};

}  // namespace orvello
