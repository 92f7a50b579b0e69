// What the settings sheet's pages need of the program around them.
#pragma once

#include "draw/screen_layout.h"
#include "options/settings_form.h"
#include "ports/host.h"
#include "resources/strings.h"
#include "settings/settings_record.h"
#include "settings/volume.h"
#include "store/operation_context.h"

namespace orvello {

struct OptionsContext {
  Host& host;
  StoreSession& session;
  SettingsRecord& settings;
  const SettingsVolume& volume;
  const ScreenLayout& screen;
  const int& platform_generation;
  EditHistory& history;
  SettingsCommands& commands;

  OperationContext operation() const {
    return {session, host.boxes, host.window, host.files, history};
  }
  Language language() const { return language_of(host.locale); }
};

}  // namespace orvello
