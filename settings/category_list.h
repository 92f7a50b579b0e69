// The device's own list of category labels, which appointments, tasks and contacts share. Nothing
// stays open between calls; failures are shown. Labels are cut to 29 characters.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "settings/volume.h"

namespace orvello {

// Of the platform: labels are what the items of the folders carry, and no list is kept.
inline constexpr int kListlessGeneration = 3;

// In the device's object store, not on the settings volume.
inline constexpr TextView kCategoriesDatabase = u"Categories Database";
inline constexpr PropertyId kListLabel = 0x4001001F;
inline constexpr PropertyId kListNumber = 0x40020002;
inline constexpr PropertyId kListActive = 0x40030002;        // 1; 0: marked for removal
inline constexpr PropertyId kListAppointments = 0x40040002;  // how many use the label
inline constexpr PropertyId kListTasks = 0x40050002;
inline constexpr PropertyId kListContacts = 0x40060002;

// The comma-separated labels of a folder of the personal-information store; nothing when they could
// not be read.
using FolderText = std::function<std::optional<Text>(int folder)>;

// Replaces `entries`. Generation 3 asks the folders and gives each label once, the others read the
// record database as it stands, with labels marked for removal. False when something could not be
// read, which has been shown; `entries` has the rest.
bool readCategoryList(const SettingsVolume& device, int generation, const FolderText& folder_text,
                      std::vector<Text>& entries);

// Deletes a label that nothing uses. One in use is marked for removal if the person agrees. 1 when
// the database was changed.
int removeCategory(const SettingsVolume& device, TextView label);

// 1 when the label was there already, 0 otherwise: also when it could not be added.
int addCategory(const SettingsVolume& device, TextView label);
// The same, told apart.
enum class CategoryAddition { added, present, failed };
CategoryAddition add_to_list(const SettingsVolume& device, TextView label);

// Gives a label of the list another name, which none has yet, at its place. 1 when that was done.
int renameCategory(const SettingsVolume& device, TextView label, TextView name);
// Deletes a label whose uses have gone, without a question. False after a failure, which has been
// shown.
bool eraseCategory(const SettingsVolume& device, TextView label);
// Those that were marked for removal. Shows nothing.
std::vector<Text> marked_categories(const SettingsVolume& device);

// The number that a new label gets, from the records that are there.
class CategoryNumbers {
 public:
  void count(const Record& record);
  std::int16_t next() const;

 private:
  bool empty_ = true;
  std::optional<std::int32_t> largest_;
};

}  // namespace orvello
