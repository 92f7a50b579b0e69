// What the editor and its companions need of the program around them.
#pragma once

#include "draw/screen_layout.h"
#include "ports/host.h"
#include "resources/strings.h"
#include "settings/settings_record.h"
#include "settings/volume.h"
#include "store/operation_context.h"

namespace orvello {

struct EditorContext {
  Host& host;
  StoreSession& session;
  SettingsRecord& settings;  // `shown` is the date selected in the views
  const SettingsVolume& volume;
  const ScreenLayout& screen;
  const int& platform_generation;
  EditHistory& history;

  OperationContext operation() const {
    return {session, host.boxes, host.window, host.files, history};
  }
  Language language() const { return language_of(host.locale); }
};

}  // namespace orvello
