// A report's rows onto a canvas: of a list that is used, and for a picture of one.
#pragma once

#include <vector>

#include "ports/report_list.h"

namespace orvello {

// What a row's content does not say about how it is drawn. Lengths are device pixels.
struct ReportRowLook {
  std::vector<int> widths;  // one a column
  int mark_side = 0;        // of a mark's box; 0: no row has one
  int mark_width = 0;       // the box and the gap behind it
};

// One line: line ends and tabs are blanks.
Text report_line(TextView cell);

int pictures_width(const ReportContent& content, const ReportRow& row);

// Clipped to the canvas's clip alone; cells end at the box.
void draw_report_row(const ReportContent& content, const ReportRow& row, const Rect& box,
                     const ReportRowLook& look, bool selected, Canvas& canvas);

// From the first row on, as far as the place goes; its background below them.
void draw_report(const ReportContent& content, const Rect& place, Canvas& canvas);

}  // namespace orvello
