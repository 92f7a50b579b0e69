// A report's rows onto a canvas, for a picture of a list: a list that is used is the host's
// control.
#pragma once

#include "ports/report_list.h"

namespace orvello {

// From the first row on, as far as the place goes; its background below them.
void draw_report(const ReportContent& content, const Rect& place, Canvas& canvas);

}  // namespace orvello
