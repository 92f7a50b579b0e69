// The notes pane's page as the bytes that an appointment keeps as its ink: docs/notes-format.md.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ports/notes.h"

namespace orvello {

// Empty for a page of plain text without strokes: such notes are their text alone. Places are kept
// to an eighth of a pixel, pressure to 1/255.
std::string notes_block(const NotesContent& content);
// Nothing for a block of another format or version, or a damaged one.
std::optional<NotesContent> read_notes_block(std::string_view block);

}  // namespace orvello
