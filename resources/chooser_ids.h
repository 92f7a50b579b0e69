// The chooser of categories and attendees, and its controls.
#pragma once

#include "base/geometry.h"
#include "resources/form_ids.h"

namespace orvello {

inline constexpr int kDialogChooser = 142;

inline constexpr int kControlChooserList = 1089;
inline constexpr int kControlLetterBarToggle = 1090;
inline constexpr int kControlLabelBarToggle = 1818;  // of the bar that adds and removes labels
inline constexpr int kControlSelectAll = 1816;
inline constexpr int kControlSelectNone = 1817;
inline constexpr int kControlLetterBar = 1820;
inline constexpr int kControlLabel = 1046;
inline constexpr int kControlAddLabel = 1042;
inline constexpr int kControlRemoveLabel = 1043;

inline constexpr int kLetterCells = 9;

// The list's place in the template, between the bars that are shown.
Rect chooser_list_place(bool letter_bar, bool label_bar);

}  // namespace orvello
