// The hover label of the Year view: a day's date and first appointments, beside the day's cell.
#pragma once

#include "calendar/locale_data.h"
#include "draw/screen_layout.h"
#include "store/day_agenda.h"

namespace orvello {

inline constexpr int kLabelLines = 4;

// What HoverLabel takes of it.
struct YearLabel {
  Text text;  // lines end with '\n'
  Rect place;
  FontSpec font;
};

// The date, then a line for each appointment, with times in the locale's digits; "+3" in the last
// line stands for those without room. Lines are cut to fit. The label keeps within the work area
// and off the cell.
YearLabel year_label(TextView date_text, const std::vector<CompactRow>& rows, const Rect& cell,
                     const ScreenLayout& screen, const LocaleData& locale, Canvas& canvas);

// Where a box of this size stands beside the cell: above it, out of the pointer's and the hand's
// way, else below, else on a side.
Rect place_beside(const Rect& cell, Size size, Size work, int gap);

}  // namespace orvello
