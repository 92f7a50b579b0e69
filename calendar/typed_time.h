// A time of day as a person types it. Where ParseTimeText makes a time of any text, this one takes
// only what can be meant as one.
#pragma once

#include <optional>

#include "base/text.h"
#include "calendar/calendar_date.h"
#include "calendar/locale_data.h"

namespace orvello {

// 9, 930, 0930, 9:30, 9.30, 9h30, "9 30", 9p, "9:30 pm", "9 p.m.", also with the locale's separator
// and halves of the day. Nothing for everything else: what is no time (25:99, 9:75, noon), and what
// may be one of two (9:5, 24:00).
std::optional<CalendarDate> typed_time(TextView typed, const LocaleData& locale);

}  // namespace orvello
