// The settings sheet's pages, in the order of their tabs.
#pragma once

#include "ports/dialog_template.h"
#include "resources/strings.h"

namespace orvello {

// What an upright handheld's screen leaves below title and tabs.
inline constexpr int kSettingsPageWidth = 240, kSettingsPageHeight = 236;

DialogTemplate display_page_dialog(Language language);   // 107
DialogTemplate options_page_dialog(Language language);   // 141
DialogTemplate pretext_page_dialog(Language language);   // 150
DialogTemplate profiles_page_dialog(Language language);  // 128
DialogTemplate times_page_dialog(Language language);     // 109
DialogTemplate color_page_dialog(Language language);     // 105
DialogTemplate category_page_dialog(Language language);  // 119
DialogTemplate icons_page_dialog(Language language);     // 121

DialogTemplate icon_choice_dialog(Language language);  // of the Icons page

// All of them.
std::vector<DialogTemplate> settings_pages(Language language);

}  // namespace orvello
