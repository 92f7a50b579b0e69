#include "settings/label_places.h"

#include <algorithm>

#include "settings/category_list.h"
#include "settings/category_props.h"
#include "settings/category_text.h"
#include "settings/profiles.h"
#include "settings/program_files.h"
#include "settings/registry_access.h"
#include "settings/setting_table.h"

namespace orvello {
namespace {

constexpr TextView kIconLabel = u"displayiconstring%d";

bool contains(const std::vector<Text>& labels, TextView label) {
  return std::find(labels.begin(), labels.end(), label) != labels.end();
}

bool save_color(const LabelPlaces& places, TextView label, const CategoryProp& prop) {
  return saveCategoryProps(places.volume, label, prop.color, static_cast<std::int16_t>(prop.flag));
}

void bind_slot(const LabelPlaces& places, int slot, TextView label) {
  places.settings.displayiconstring[static_cast<std::size_t>(slot)] = Text(label);
  save_setting(places.registry, places.settings, kIconLabel, slot);
}

// None where the volume is not there yet.
std::optional<std::vector<Text>> profiles_of(const LabelPlaces& places) {
  if (!FileExists(places.volume.files, settings_volume_path(places.volume.files)))
    return std::vector<Text>();
  return stored_profiles(places.volume);
}

void read_again(const LabelPlaces& places) {
  std::vector<CategoryProp> props;
  if (loadCategoryProps(places.volume, props)) places.settings.category_props = std::move(props);
  load_active_profile(places.volume, places.settings);
  FlushSettings(places.registry);
}

}  // namespace

void forget_label(const LabelPlaces& places, TextView label) {
  removeCategoryProps(places.volume, label);
  for (const Text& profile : profiles_of(places).value_or(std::vector<Text>()))
    remove_profile_label(places.volume, profile, label);
  for (int slot = 0; slot < kDisplayIconSlots; ++slot)
    if (places.settings.displayiconstring[static_cast<std::size_t>(slot)] == label)
      bind_slot(places, slot, {});
  read_again(places);
}

std::optional<RenamedPlaces> RenamedPlaces::look(const LabelPlaces& places, TextView label,
                                                 TextView name) {
  RenamedPlaces renamed(places, label, name);
  std::vector<CategoryProp> props;
  if (!renamed.look_at_list() || !loadCategoryProps(places.volume, props) ||
      !renamed.look_at_profiles())
    return std::nullopt;
  if (const CategoryProp* prop = find_category_prop(props, label)) renamed.color_ = *prop;
  if (const CategoryProp* prop = find_category_prop(props, name)) renamed.name_color_ = *prop;
  renamed.look_at_settings();
  return renamed;
}

bool RenamedPlaces::look_at_list() {
  if (places_.generation == kListlessGeneration) return true;
  std::vector<Text> labels;
  if (!readCategoryList(places_.volume, places_.generation, {}, labels)) return false;
  listed_ = contains(labels, label_);
  name_listed_ = contains(labels, name_);
  return true;
}

bool RenamedPlaces::look_at_profiles() {
  const auto names = profiles_of(places_);
  if (!names) return false;
  for (const Text& profile : *names) {
    std::vector<Text> labels;
    if (!loadProfile(places_.volume, profile, labels)) return false;
    if (contains(labels, label_)) profiles_.push_back({profile, true, contains(labels, name_)});
  }
  return true;
}

void RenamedPlaces::look_at_settings() {
  const auto& bound = places_.settings.displayiconstring;
  for (int slot = 0; slot < kDisplayIconSlots; ++slot)
    if (bound[static_cast<std::size_t>(slot)] == label_) slots_.push_back(slot);
  name_had_slot_ = std::find(bound.begin(), bound.end(), name_) != bound.end();
  was_default_ = places_.settings.strdefcategory == label_;
}

bool RenamedPlaces::add(bool renamed) {
  const Text& added = renamed ? name_ : label_;
  const auto there = profiles_of(places_);
  if (!there || !add_color(renamed)) return false;
  for (const Profile& profile : profiles_) {
    if ((renamed && profile.had_name) || !contains(*there, profile.name)) continue;
    std::vector<Text> labels;
    if (!loadProfile(places_.volume, profile.name, labels) ||
        (!contains(labels, added) && !add_profile_label(places_.volume, profile.name, added)))
      return false;
  }
  return add_to_list(renamed);
}

// A colour that was chosen meanwhile goes back with the name.
bool RenamedPlaces::add_color(bool renamed) {
  if (!color_) return true;
  if (renamed) return name_color_ || save_color(places_, name_, *color_);
  std::vector<CategoryProp> props;
  if (!loadCategoryProps(places_.volume, props)) return false;
  const CategoryProp* now = name_color_ ? nullptr : find_category_prop(props, name_);
  return save_color(places_, label_, now ? *now : *color_);
}

// A label keeps its place in the device's list, unless the other one has its own.
bool RenamedPlaces::add_to_list(bool renamed) {
  if (!listed_) return true;
  std::vector<Text> labels;
  const Text &added = renamed ? name_ : label_, &other = renamed ? label_ : name_;
  if (!readCategoryList(places_.volume, places_.generation, {}, labels)) return false;
  if (contains(labels, added)) return true;
  if (name_listed_)
    addCategory(places_.volume, added);
  else
    renameCategory(places_.volume, other, added);
  return true;
}

void RenamedPlaces::settle(bool renamed) {
  const Text& gone = renamed ? label_ : name_;
  if (color_ && (renamed || !name_color_)) removeCategoryProps(places_.volume, gone);
  settle_profiles(gone, renamed);
  settle_settings(renamed);
  if (listed_ && (renamed || !name_listed_) && add_to_list(renamed))
    eraseCategory(places_.volume, gone);
  read_again(places_);
}

void RenamedPlaces::settle_profiles(const Text& gone, bool renamed) {
  const auto names = profiles_of(places_);
  for (const Profile& profile : profiles_)
    if ((renamed || !profile.had_name) && names && contains(*names, profile.name))
      remove_profile_label(places_.volume, profile.name, gone);
}

void RenamedPlaces::settle_settings(bool renamed) {
  const Text bound = !renamed ? label_ : name_had_slot_ ? Text() : name_;
  const Text before = renamed ? label_ : name_had_slot_ ? Text() : name_;
  for (const int slot : slots_)
    if (places_.settings.displayiconstring[static_cast<std::size_t>(slot)] == before)
      bind_slot(places_, slot, bound);
  if (!was_default_ || places_.settings.strdefcategory != (renamed ? label_ : name_)) return;
  places_.settings.strdefcategory = renamed ? name_ : label_;
  save_setting(places_.registry, places_.settings, u"strdefcategory");
}

}  // namespace orvello
