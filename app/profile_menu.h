// The menu of profiles in the menu bar, and the choice from it.
#pragma once

#include <vector>

#include "ports/host.h"
#include "resources/strings.h"
#include "settings/settings_record.h"
#include "settings/volume.h"

namespace orvello {

class ProfileMenu {
 public:
  ProfileMenu(Host& host, const SettingsVolume& volume, SettingsRecord& settings)
      : host_(host), volume_(volume), settings_(settings) {}

  // Fills the bar's menu with the volume's profiles and marks the active one.
  void rebuild();
  // Makes the profile with this command the active one; true when it was another. Nothing happens
  // for a command that the menu does not have.
  bool select(std::uint32_t command);

 private:
  void show_active();

  Host& host_;
  const SettingsVolume& volume_;
  SettingsRecord& settings_;
  std::vector<MenuItem> items_;
};

}  // namespace orvello
