// The rows of a day's popup: a time and a subject each, in as many lines as they need.
#pragma once

#include "draw/screen_layout.h"
#include "ports/report_list.h"
#include "settings/settings_record.h"
#include "store/day_agenda.h"

namespace orvello {

struct DayPopupList {
  const std::vector<CompactRow>& rows;
  const SettingsRecord& settings;
  const ScreenLayout& screen;
};

// As wide as the rows are in one line each, with room for a scroll bar.
int natural_popup_width(const DayPopupList& list, Canvas& measure);

// One row each. `room` is the list's width and the height from which on it scrolls.
ReportContent day_popup_content(const DayPopupList& list, Size room, Canvas& measure);

int rows_height(const ReportContent& content);

}  // namespace orvello
