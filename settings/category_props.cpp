#include "settings/category_props.h"

namespace orvello {
namespace {

constexpr TextView kNotOpened = u"Error in call to OpenCreateDB";
constexpr TextView kNotRead = u"Failed to read record";

CategoryProp prop_of(const Record& record) {
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

}  // namespace

void loadCategoryProps(const SettingsVolume& volume, std::vector<CategoryProp>& entries) {
  entries.clear();
  const MountedVolume mounted(volume);
  if (!mounted) return;
  std::uint32_t count = 0;
  const OpenDatabase database(
      volume.databases, OpenCreateDB(volume, mounted.id(), kCategoryProps, kCategoryLabel, count));
  if (!database) {
    volume.boxes.show(kNotOpened, u"Error");
    return;
  }
  visit_records(volume, database.handle(), count, kNotRead, [&](const Record& record, RecordId) {
    entries.push_back(prop_of(record));
    return true;
  });
}

void saveCategoryProps(const SettingsVolume& volume, TextView label, std::int32_t value32,
                       std::int16_t value16) {
  const MountedVolume mounted(volume);
  if (!mounted) return;
  std::uint32_t count = 0;
  const OpenDatabase database(
      volume.databases, OpenCreateDB(volume, mounted.id(), kCategoryProps, kCategoryLabel, count));
  if (!database) {
    volume.boxes.show(kNotOpened, u"Error");
    return;
  }
  RecordId found = 0;
  const bool read = visit_records(volume, database.handle(), count, kNotRead,
                                  [&](const Record& record, RecordId id) {
                                    const Text* stored = text_of(record, kCategoryLabel);
                                    if (stored && *stored == label) found = id;
                                    return found == 0;
                                  });
  if (!read) return;
  const RecordProperty color{kCategoryColor, value32}, flag{kCategoryFlag, value16};
  if (found != 0) {
    if (write_reported(volume, database.handle(), found, flag))
      write_reported(volume, database.handle(), found, color);
  } else if (write_reported(volume, database.handle(), found, {kCategoryLabel, Text(label)}) &&
             write_reported(volume, database.handle(), found, color)) {
    write_reported(volume, database.handle(), found, flag);
  }
}

}  // namespace orvello
