// The notes pane over the appointment editor's form: a page, and a strip of tools above it.
#pragma once

#include <vector>

#include "ports/dialog_template.h"
#include "resources/strings.h"

namespace orvello {

inline constexpr int kNotesBack = 1505;  // to the form
inline constexpr int kNotesPage = 1520;
inline constexpr int kNotesPen = 1521;
inline constexpr int kNotesUndo = 1522;
inline constexpr int kNotesRedo = 1523;
// These give way to each other: the first four while text is typed, the others while it is drawn.
inline constexpr int kNotesBold = 1524;
inline constexpr int kNotesItalic = 1525;
inline constexpr int kNotesUnderline = 1526;
inline constexpr int kNotesList = 1527;
inline constexpr int kNotesEraser = 1528;
inline constexpr int kNotesText = 1529;

// Nobody types more, and nothing that is pasted stops the program. What an item has more of stays.
inline constexpr int kNotesLength = 1 << 18;

// Hidden, for the end of a form's controls, over which they stand: `room` is the form's.
std::vector<ControlTemplate> notes_controls(Language language, const Rect& room,
                                            bool low_resolution = true);

// A form of these alone, as they are seen, for the checks.
DialogTemplate notes_pane_dialog(Language language, bool drawing);

}  // namespace orvello
