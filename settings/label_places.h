// What names a category label beside the items that carry it: the device's list, the colours, the
// stored profiles, the icon slots and the default category.
#pragma once

#include <optional>
#include <vector>

#include "ports/registry.h"
#include "settings/settings_record.h"
#include "settings/volume.h"

namespace orvello {

struct LabelPlaces {
  SettingsRecord& settings;
  Registry& registry;
  const SettingsVolume& volume;
  const int& generation;
};

// Takes a label that was removed out of the colours, the profiles and the icon slots, and reads the
// colours and the active profile again.
void forget_label(const LabelPlaces& places, TextView label);

// A label under another name, there and back. Where the other name was there before as well, the
// two become one, and its colour, and its icon, stay. First add() makes a name known, then items
// change, at last settle() takes the other name out: whatever is interrupted, what items carry has
// its colour and shows in its profiles.
class RenamedPlaces {
 public:
  // Looks where the two are. Nothing when something could not be read, which has been shown.
  static std::optional<RenamedPlaces> look(const LabelPlaces& places, TextView label,
                                           TextView name);
  const Text& label() const { return label_; }
  const Text& name() const { return name_; }

  // The name, or the label before `renamed`, is wherever the other is. False after a failure, which
  // has been shown.
  bool add(bool renamed);
  // And the other one is no longer, but for where both were before; what cannot be written has been
  // shown. Reads the colours and the active profile again.
  void settle(bool renamed);

 private:
  struct Profile {
    Text name;
    bool had_label = false, had_name = false;
  };
  RenamedPlaces(const LabelPlaces& places, TextView label, TextView name)
      : places_(places), label_(label), name_(name) {}
  bool look_at_list();
  bool look_at_profiles();
  void look_at_settings();
  bool add_to_list(bool renamed);
  bool add_color(bool renamed);
  void settle_profiles(const Text& gone, bool renamed);
  void settle_settings(bool renamed);

  LabelPlaces places_;
  Text label_, name_;
  bool listed_ = false, name_listed_ = false;
  std::optional<CategoryProp> color_, name_color_;
  std::vector<Profile> profiles_;
  std::vector<int> slots_;  // of icons that were bound to the label
  bool name_had_slot_ = false;
  bool was_default_ = false;
};

}  // namespace orvello
