#include "views/grid_page.h"

#include "settings/profiles.h"
#include "views/accessible_counts.h"

namespace orvello {

bool GridPage::passes_profile(TextView categories) const {
  return profileAllowsCategory(settings_, categories);
}

Text GridPage::profile_note(Language language) const {
  return format(load_string(StringId::profile_hides_all, language), settings_.activeprofilename);
}

DayCount GridPage::counted(Day from_day, Day to_day) const {
  auto counts = count_days([this] { return session_.CalendarItems(); }, from_day, to_day,
                           [this](TextView categories) { return passes_profile(categories); });
  if (counts) return day_count_of(std::move(*counts), from_day);
  return [](const MonthDayYear&) { return kUnreadableCount; };
}

}  // namespace orvello
