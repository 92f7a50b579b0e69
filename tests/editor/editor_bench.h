// A device in memory with what the editor's dialogs need of the program.
#pragma once

#include "editor/editor_context.h"
#include "hosts/headless/headless_host.h"
#include "tests/settings/settings_fixture.h"

namespace orvello {

struct EditorBench {
  EditorBench() {
    EnsureSettingsKey(device.registry);
    settings.timeformat = 1;
    settings.firstdayofweek = 1;
  }
  Messages boxes_shown() { return take_messages(device.boxes); }
  // The person in front of the next dialog.
  void person(std::function<void(HeadlessDialog&)> acts) {
    device.dialogs.person = std::move(acts);
  }

  HeadlessHost device;
  Host host = device.host();
  StoreSession session{device.store, device.boxes};
  SettingsRecord settings;
  SettingsVolume volume{device.databases, device.boxes, device.files};
  ScreenLayout screen = layout_screen({240, 320}, 96, 96, false);
  int generation = 2;
  EditHistory history{session};
  EditorContext context{host, session, settings, volume, screen, generation, history};
};

}  // namespace orvello
