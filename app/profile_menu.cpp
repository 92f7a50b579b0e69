#include "app/profile_menu.h"

#include <algorithm>

#include "resources/ids.h"
#include "resources/menus.h"
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
  show_active();
}

// What is not shown must not be looked for: a profile that hides something is seen, and named where
// there is room.
void ProfileMenu::show_active() {
  const Text& name = settings_.activeprofilename;
  const bool filters = name != kAllProfile;
  host_.menu_bar.set_button_text(kProfileButton, filters ? name : Text());
  host_.menu_bar.highlight_button(
      kCommandProfileMenu, filters,
      format(load_string(StringId::active_profile, language_of(host_.locale)), name));
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
