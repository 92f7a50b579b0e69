#include "settings/category_props.h"

namespace orvello {
namespace {

constexpr TextView kNotOpened = u"Error in call to OpenCreateDB";
constexpr TextView kNotRead = u"Failed to read record";

// Mounts, opens and hands over the database; false when that or the operation failed.
template <typename Operation>
bool with_props(const SettingsVolume& volume, Operation operation) {
  const MountedVolume mounted(volume);
  if (!mounted) return false;
  std::uint32_t count = 0;
  const OpenDatabase database(
      volume.databases, OpenCreateDB(volume, mounted.id(), kCategoryProps, kCategoryLabel, count));
  if (database) return operation(database.handle());
  volume.boxes.show(kNotOpened, u"Error");
  return false;
}

}  // namespace

CategoryProp category_prop_of(const Record& record) {
  CategoryProp prop;
  for (const RecordProperty& property : record) {
    if (const auto* label = std::get_if<Text>(&property.value)) {
      if (property.id == kCategoryLabel) prop.label = cut(*label, kLabelLength);
    } else if (const auto* color = std::get_if<std::int32_t>(&property.value)) {
      if (property.id == kCategoryColor) prop.color = *color;
    } else if (const auto* flag = std::get_if<std::int16_t>(&property.value)) {
      if (property.id == kCategoryFlag) prop.flag = *flag;
    }
  }
  return prop;
}

bool loadCategoryProps(const SettingsVolume& volume, std::vector<CategoryProp>& entries) {
  entries.clear();
  return with_props(volume, [&](DatabaseHandle database) {
    return visit_records(volume, database, kNotRead, [&](const Record& record, RecordId) {
      entries.push_back(category_prop_of(record));
      return true;
    });
  });
}

bool saveCategoryProps(const SettingsVolume& volume, TextView label, std::int32_t value32,
                       std::int16_t value16) {
  return with_props(volume, [&](DatabaseHandle database) {
    RecordId found = 0;
    const auto find = [&](const Record& record, RecordId id) {
      const Text* stored = text_of(record, kCategoryLabel);
      if (stored && *stored == label) found = id;
      return found == 0;
    };
    if (!visit_records(volume, database, kNotRead, find)) return false;
    const auto write = [&](const RecordProperty& property) {
      return write_reported(volume, database, found, property);
    };
    const RecordProperty color{kCategoryColor, value32}, flag{kCategoryFlag, value16};
    if (found != 0) return write(flag) && write(color);
    return write({kCategoryLabel, Text(label)}) && write(color) && write(flag);
  });
}

bool addCategoryProps(const SettingsVolume& volume, const std::vector<CategoryProp>& entries) {
  return with_props(volume, [&](DatabaseHandle database) {
    for (const CategoryProp& entry : entries) {
      const RecordId written =
          volume.databases.write(database, 0,
                                 {{kCategoryLabel, entry.label},
                                  {kCategoryColor, entry.color},
                                  {kCategoryFlag, static_cast<std::int16_t>(entry.flag)}});
      reportWriteError(volume, written);
      if (written == 0) return false;
    }
    return true;
  });
}

bool removeCategoryProps(const SettingsVolume& volume, TextView label) {
  return with_props(volume, [&](DatabaseHandle database) {
    return erase_labelled(volume, database, kNotRead, label);
  });
}

}  // namespace orvello
