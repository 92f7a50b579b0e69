// The two lists of ready-made texts that the appointment editor offers.
#pragma once

#include "calendar/date_text.h"
#include "settings/volume.h"

namespace orvello {

inline constexpr TextView kSubjectPretexts = u"subjectpretext";
inline constexpr TextView kLocationPretexts = u"locationpretext";

// 1 when a record was written, 0 when the list has that very text already or on a failure.
int savePreTextToDB(const SettingsVolume& volume, TextView text, TextView list);
// Deletes the first such text in sort order; 1 when there was one.
int deletePreTextFromDB(const SettingsVolume& volume, TextView text, TextView list);
// Append the texts in sort order. False when they could not all be read, which has been shown.
bool loadPreTextToLB(const SettingsVolume& volume, std::vector<Text>& list_box, TextView list);
bool loadPreTextToCB(const SettingsVolume& volume, ChoiceList& combo_box, TextView list);

}  // namespace orvello
