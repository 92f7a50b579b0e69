#include "editor/notes_block.h"

namespace orvello {

std::string notes_block(const NotesContent&) { return {}; }
std::optional<NotesContent> read_notes_block(std::string_view) { return std::nullopt; }

}  // namespace orvello
