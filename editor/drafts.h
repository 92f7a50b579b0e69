// What is being typed into the editor, kept so that a process that dies loses none of it.
#pragma once

#include <optional>

#include "settings/volume.h"
#include "store/appointment_form.h"

namespace orvello {

struct EditorDraft {
  AppointmentForm opened;  // as it was when the editor was opened
  AppointmentForm form;    // with what was typed
};

// Replaces the one that is kept. False, and nothing is shown, when it could not be written.
bool keep_draft(const SettingsVolume& volume, const EditorDraft& draft);
// Nothing when there is none, or none that can be read.
std::optional<EditorDraft> kept_draft(const SettingsVolume& volume);
bool forget_draft(const SettingsVolume& volume);

}  // namespace orvello
