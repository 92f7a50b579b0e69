#include "app/profile_menu.h"

#include <algorithm>

#include "resources/ids.h"
#include "settings/profiles.h"
#include "settings/registry_access.h"

namespace orvello {

void ProfileMenu::rebuild() {
  items_.clear();
  items_.push_back({kCommandFirstProfile,
                    load_string(StringId::all_profiles, language_of(host_.locale)), true,
                    settings_.activeprofilename == kAllProfile});
  items_.push_back({});  // the separator keeps the second position
  if (listProfilesInMenu(volume_, settings_.activeprofilename, items_) == 0) items_.resize(1);
  host_.menu_bar.set_menu(kCommandProfileMenu, items_);
}

bool ProfileMenu::select(std::uint32_t command) {
  if (command < kCommandFirstProfile) return false;
  const auto item = std::find_if(items_.begin(), items_.end(),
                                 [&](const MenuItem& one) { return one.command == command; });
  if (item == items_.end()) return false;
  const Text name =
      command == kCommandFirstProfile ? Text(kAllProfile) : cut(item->text, kProfileNameLength);
  const bool changed = name != settings_.activeprofilename;
  settings_.activeprofilename = name;
  WriteTextSetting(host_.registry, u"activeprofilename", name);
  FlushSettings(host_.registry);
  load_active_profile(volume_, settings_);
  rebuild();
  return changed;
}

}  // namespace orvello
