#include "settings/pretexts.h"

namespace orvello {
namespace {

// Both changes speak as the saver and both loaders as the list box's, deliberately.
constexpr TextView kSaverNotOpened = u"savePreTextToDB(): Error in call to OpenCreateDB";
constexpr TextView kSaverNotRead = u"savePreTextToDB(): Failed to read record";
constexpr TextView kLoaderNotOpened = u"loadPreTextToLB(): Error in call to OpenCreateDB";
constexpr TextView kLoaderNotRead = u"loadPreTextToLB(): Failed to read record";

// Mounts, opens and hands over the database; false when that or the operation failed.
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
  return operation(database.handle());
}

// The first record with that text, 0 without one; false when the search broke off.
[[nodiscard]] bool find_text(const SettingsVolume& volume, DatabaseHandle database, TextView text,
                             RecordId& found) {
  found = 0;
  return visit_records(volume, database, kSaverNotRead, [&](const Record& record, RecordId id) {
    const Text* stored = text_of(record, kPretextText);
    if (stored && *stored == text) found = id;
    return found == 0;
  });
}

}  // namespace

int savePreTextToDB(const SettingsVolume& volume, TextView text, TextView list) {
  const auto save = [&](DatabaseHandle database) {
    RecordId found = 0;
    if (!find_text(volume, database, text, found) || found != 0) return false;
    const RecordId written = volume.databases.write(database, 0, {{kPretextText, Text(text)}});
    reportWriteError(volume, written);
    return written != 0;
  };
  return with_list(volume, list, kSaverNotOpened, save) ? 1 : 0;
}

int deletePreTextFromDB(const SettingsVolume& volume, TextView text, TextView list) {
  const auto erase = [&](DatabaseHandle database) {
    RecordId found = 0;
    if (!find_text(volume, database, text, found) || found == 0) return false;
    const bool deleted = volume.databases.erase(database, found);
    if (!deleted) reportWriteError(volume, 0);
    return deleted;
  };
  return with_list(volume, list, kSaverNotOpened, erase) ? 1 : 0;
}

bool loadPreTextToLB(const SettingsVolume& volume, std::vector<Text>& list_box, TextView list) {
  return with_list(volume, list, kLoaderNotOpened, [&](DatabaseHandle database) {
    return visit_records(volume, database, kLoaderNotRead, [&](const Record& record, RecordId) {
      if (const Text* text = text_of(record, kPretextText)) list_box.push_back(*text);
      return true;
    });
  });
}

bool loadPreTextToCB(const SettingsVolume& volume, ChoiceList& combo_box, TextView list) {
  return loadPreTextToLB(volume, combo_box.items, list);
}

}  // namespace orvello
