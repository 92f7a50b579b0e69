// What is kept beside each category label: a display colour and a flag.
#pragma once

#include "settings/settings_record.h"
#include "settings/volume.h"

namespace orvello {

inline constexpr TextView kCategoryProps = u"categoryprops";

CategoryProp category_prop_of(const Record& record);

// Replaces `entries`. False after a failure, which has been shown: they are what could be read.
bool loadCategoryProps(const SettingsVolume& volume, std::vector<CategoryProp>& entries);
// One record a label: changes its two numbers in place, or adds the label with them.
// False after a failure, which has been shown.
bool saveCategoryProps(const SettingsVolume& volume, TextView label, std::int32_t value32,
                       std::int16_t value16);
// Labels that have none yet, in the order given. False after a failure, which has been shown.
bool addCategoryProps(const SettingsVolume& volume, const std::vector<CategoryProp>& entries);
// Every record of the label. False after a failure, which has been shown.
bool removeCategoryProps(const SettingsVolume& volume, TextView label);

}  // namespace orvello
