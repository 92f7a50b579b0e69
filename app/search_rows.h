// What the search's list shows: two rows for each that was found, or some words where there is
// nothing to show.
#pragma once

#include "draw/screen_layout.h"
#include "ports/form_colors.h"
#include "ports/report_list.h"
#include "resources/strings.h"
#include "settings/settings_record.h"
#include "store/text_search.h"

namespace orvello {

struct SearchLook {
  const SettingsRecord& settings;
  const ScreenLayout& screen;  // the forms'
  FormColors colors;
  Language language;
  ReportPlace place;  // of the list
};

struct SearchRows {
  ReportContent content;
  std::vector<int> hits;  // which hit a row belongs to; -1: none
};

SearchRows search_rows(const TextHits& found, const SearchLook& look);

// The words, in as many rows as they need.
SearchRows search_notice(const Text& words, const SearchLook& look, Canvas& measure);

// "Fri Nov 6, 2026, 9:00-10:00, repeats", without the number of this year.
Text hit_date(const TextHit& hit, const SettingsRecord& settings, Language language);

}  // namespace orvello
