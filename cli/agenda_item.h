// How commands print an occurrence.
#pragma once

#include <string>

#include "calendar/locale_data.h"
#include "ports/calendar_store.h"

namespace orvello {

// One object: see write_agenda_json.
std::string item_json(const StoreItem& item);

// One line, "  9:00-10:00       Subject [Place]", as the Day view labels its row of that day.
std::string item_row(const StoreItem& item, Day day, bool clock24);
// A row is one line, and a blank looks better in it than a sign for what is not shown.
std::string in_one_line(TextView text);

// Of the lines above a day's rows.
Text agenda_date_picture(const LocaleData& locale);

}  // namespace orvello
