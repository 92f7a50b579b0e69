#include "settings/pretexts.h"

namespace orvello {
namespace {

// Both changes speak as the saver and both loaders as the list box's, deliberately.
constexpr TextView kSaverNotOpened = u"savePreTextToDB(): Error in call to OpenCreateDB";
constexpr TextView kSaverNotRead = u"savePreTextToDB(): Failed to read record";
constexpr TextView kLoaderNotOpened = u"loadPreTextToLB(): Error in call to OpenCreateDB";
constexpr TextView kLoaderNotRead = u"loadPreTextToLB(): Failed to read record";

// Mounts, opens and hands over the database; false when that failed.
template <typename Operation>
bool with_list(const SettingsVolume& volume, TextView list, TextView not_opened,
               Operation operation) {
  const MountedVolume mounted(volume);
  if (!mounted) return false;
  std::uint32_t count = 0;
  const OpenDatabase database(volume.databases,
                              OpenCreateDB(volume, mounted.id(), list, kPretextText, count));
  if (!database) {
    volume.boxes.show(not_opened, u"Error");
    return false;
  }
  operation(database.handle(), count);
  return true;
}

// The first record with that text, 0 without one; false when the search broke off.
bool find_text(const SettingsVolume& volume, DatabaseHandle database, std::uint32_t count,
               TextView text, RecordId& found) {
  found = 0;
  return visit_records(volume, database, count, kSaverNotRead,
                       [&](const Record& record, RecordId id) {
                         const Text* stored = text_of(record, kPretextText);
                         if (stored && *stored == text) found = id;
                         return found == 0;
                       });
}

}  // namespace

int savePreTextToDB(const SettingsVolume& volume, TextView text, TextView list) {
  RecordId written = 0;
  with_list(volume, list, kSaverNotOpened, [&](DatabaseHandle database, std::uint32_t count) {
    RecordId found = 0;
    if (!find_text(volume, database, count, text, found) || found != 0) return;
    written = volume.databases.write(database, 0, {{kPretextText, Text(text)}});
    reportWriteError(volume, written);
  });
  return written != 0 ? 1 : 0;
}

int deletePreTextFromDB(const SettingsVolume& volume, TextView text, TextView list) {
  bool deleted = false;
  with_list(volume, list, kSaverNotOpened, [&](DatabaseHandle database, std::uint32_t count) {
    RecordId found = 0;
    if (!find_text(volume, database, count, text, found) || found == 0) return;
    deleted = volume.databases.erase(database, found);
    if (!deleted) reportWriteError(volume, 0);
  });
  return deleted ? 1 : 0;
}

void loadPreTextToLB(const SettingsVolume& volume, std::vector<Text>& list_box, TextView list) {
  with_list(volume, list, kLoaderNotOpened, [&](DatabaseHandle database, std::uint32_t count) {
    visit_records(volume, database, count, kLoaderNotRead, [&](const Record& record, RecordId) {
      if (const Text* text = text_of(record, kPretextText)) list_box.push_back(*text);
      return true;
    });
  });
}

void loadPreTextToCB(const SettingsVolume& volume, ChoiceList& combo_box, TextView list) {
  loadPreTextToLB(volume, combo_box.items, list);
}

}  // namespace orvello
