#include "editor/drafts.h"

#include "editor/draft_block.h"
#include "settings/program_files.h"

namespace orvello {
namespace {

constexpr TextView kDrafts = u"editordraft";
constexpr PropertyId kDraftLength = 0x000E0003;  // of the block, in bytes
constexpr PropertyId kDraftBlock = 0x000F001F;   // two bytes a unit, the lower one first

// A draft is nobody's wish: a volume that cannot keep it is no reason to disturb a person.
class NoBoxes : public MessageBoxes {
 public:
  BoxAnswer show(TextView, TextView, BoxIcon, BoxButtons, bool) override {
    return BoxAnswer::cancel;
  }
  void beep(Beep) override {}
  Text language() const override { return {}; }
};

Text packed(std::string_view block) {
  Text units((block.size() + 1) / 2, u'\0');
  for (std::size_t i = 0; i < block.size(); ++i) {
    const auto byte = static_cast<unsigned char>(block[i]);
    units[i / 2] = static_cast<char16_t>(units[i / 2] | (i % 2 ? byte << 8 : byte));
  }
  return units;
}

std::optional<std::string> unpacked(TextView units, std::int32_t length) {
  if (length < 0 || units.size() != (static_cast<std::size_t>(length) + 1) / 2) return std::nullopt;
  std::string block(static_cast<std::size_t>(length), '\0');
  for (std::size_t i = 0; i < block.size(); ++i)
    block[i] = static_cast<char>(i % 2 ? units[i / 2] >> 8 : units[i / 2] & 0xFF);
  return block;
}

std::optional<EditorDraft> draft_in(const Record& record) {
  const Text* units = text_of(record, kDraftBlock);
  if (!units) return std::nullopt;
  for (const RecordProperty& property : record) {
    const auto* length = std::get_if<std::int32_t>(&property.value);
    if (property.id != kDraftLength || !length) continue;
    const auto block = unpacked(*units, *length);
    return block ? read_draft_block(*block) : std::nullopt;
  }
  return std::nullopt;
}

bool volume_exists(const SettingsVolume& volume) {
  return FileExists(volume.files, settings_volume_path(volume.files));
}

}  // namespace

bool keep_draft(const SettingsVolume& volume, const EditorDraft& draft) {
  NoBoxes none;
  const SettingsVolume silent{volume.databases, none, volume.files};
  const MountedVolume mounted(silent);
  if (!mounted) return false;
  std::uint32_t count = 0;
  const OpenDatabase database(volume.databases,
                              OpenCreateDB(silent, mounted.id(), kDrafts, 0, count));
  if (!database) return false;
  RecordId kept = 0;
  const bool read =
      each_record(volume.databases, database.handle(), [&](const Record&, RecordId id) {
        kept = id;
        return false;
      });
  const std::string block = draft_block(draft);
  // One record, and one change of it: what is found later is the old one or the new one.
  return read && volume.databases.write(database.handle(), kept,
                                        {{kDraftLength, static_cast<std::int32_t>(block.size())},
                                         {kDraftBlock, packed(block)}}) != 0;
}

std::optional<EditorDraft> kept_draft(const SettingsVolume& volume) {
  NoBoxes none;
  const SettingsVolume silent{volume.databases, none, volume.files};
  if (!volume_exists(volume)) return std::nullopt;
  const MountedVolume mounted(silent);
  if (!mounted) return std::nullopt;
  const OpenDatabase database(volume.databases, volume.databases.open(mounted.id(), kDrafts, 0));
  std::optional<EditorDraft> draft;
  const bool read = database && each_record(volume.databases, database.handle(),
                                            [&](const Record& record, RecordId) {
                                              draft = draft_in(record);
                                              return false;
                                            });
  return read ? draft : std::nullopt;
}

bool forget_draft(const SettingsVolume& volume) {
  NoBoxes none;
  const SettingsVolume silent{volume.databases, none, volume.files};
  if (!volume_exists(volume)) return true;
  const MountedVolume mounted(silent);
  return mounted && (volume.databases.remove(mounted.id(), kDrafts) ||
                     volume.databases.last_error() == DatabaseError::file_not_found);
}

}  // namespace orvello
