#include "editor/drafts.h"

namespace orvello {

bool keep_draft(const SettingsVolume&, const EditorDraft&) { return true; }
std::optional<EditorDraft> kept_draft(const SettingsVolume&) { return std::nullopt; }
bool forget_draft(const SettingsVolume&) { return true; }

}  // namespace orvello
