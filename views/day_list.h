// The day's list as its rows are drawn: columns, colours by style, pictures, wrapped subjects.
#pragma once

#include "draw/screen_layout.h"
#include "ports/report_list.h"
#include "resources/strings.h"
#include "settings/settings_record.h"
#include "store/day_agenda.h"

namespace orvello {

struct DayListInput {
  const SettingsRecord& settings;
  const ScreenLayout& screen;
  ReportPlace place;     // of the list
  CalendarDate now = 0;  // what has ended before is past
  Language language{};   // of what a screen reader is told
};

// Row i shows the agenda's row i. Where `wrapsubject` asks for it, subjects wider than their column
// are broken into rows below their own first: the agenda grows, and the arrays beside its rows too.
// `measure` is any canvas of the host.
ReportContent day_list_content(DayAgenda& agenda, const DayListInput& input, Canvas& measure);

// The rows that carry an appointment's oid and are one with `row`; just `row` when there is only
// one.
std::vector<int> rows_of_appointment(const DayAgenda& agenda, int row);

}  // namespace orvello
