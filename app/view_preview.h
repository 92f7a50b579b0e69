// A view as it would be with given settings, drawn at once onto any canvas.
#pragma once

#include "app/application_state.h"
#include "base/image.h"
#include "ports/clock.h"
#include "resources/strings.h"
#include "settings/settings_record.h"
#include "store/store_session.h"

namespace orvello {

struct PreviewInput {
  const SettingsRecord& settings;
  const ApplicationState& state;  // the date shown, today, the screen's density
  StoreSession& session;
  const Clock& clock;
  Language language;
  const Image& today_picture;
};

// Fills the canvas. False when the appointments could not be read: a grid is drawn without them, a
// day says so.
bool draw_preview(ViewMode view, const PreviewInput& input, Canvas& canvas);

}  // namespace orvello
