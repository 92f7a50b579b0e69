// The agenda of some days: each occurrence that touches them, by start.
#pragma once

#include <cstdint>
#include <iosfwd>

#include "base/result.h"
#include "ports/registry.h"
#include "settings/settings_record.h"
#include "settings/volume.h"
#include "store/record_calendar_store.h"

namespace orvello {

// The settings that the text form follows: the clock and the active profile.
void load_agenda_settings(SettingsRecord& settings, Registry& registry,
                          const SettingsVolume& volume, const LocaleData& locale);

// Both write one state of the store, a part of the days at a time: memory does not hold what a
// crowded year comes to. They fail when the store cannot be read; nothing is written then, unless
// what came before was more than some megabytes. `out` failing ends them early.

// For people: grouped by day, labelled as the Day view labels its rows and in its order. An
// occurrence of several days stands under each of them. What the active profile hides is left out;
// one other than "All" is named in the first line.
Result<bool> write_agenda_text(RecordCalendarStore& store, Day from, Day to,
                               const SettingsRecord& settings, std::ostream& out);

// For programs, whatever the profile: one array of objects: oid, start, end, allDay, subject,
// location, categories, recurring, busyStatus ("free", "tentative", "busy" or "outOfOffice"),
// private, reminderMinutes. One that stands for many of one day's occurrences of a series also has
// occurrences: how many, null where they were not counted. Times are local; of an all-day item they
// are dates, the end being the day after its last.
Result<bool> write_agenda_json(RecordCalendarStore& store, Day from, Day to, std::ostream& out);

}  // namespace orvello
