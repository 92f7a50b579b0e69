// A draft of the editor as bytes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "editor/drafts.h"

namespace orvello {

std::string draft_block(const EditorDraft& draft);
// Nothing for one of another version, or a damaged one.
std::optional<EditorDraft> read_draft_block(std::string_view block);

}  // namespace orvello
