#include "store/device_labels.h"

#include "settings/category_list.h"

namespace orvello {

bool read_device_labels(const SettingsVolume& volume, int platform_generation,
                        StoreSession& session, std::vector<Text>& labels) {
  const auto folder_text = [&session](int number) -> std::optional<Text> {
    const auto folder = session.folder(number);
    if (!folder) return std::nullopt;
    return folder->category_text();
  };
  return readCategoryList(volume, platform_generation, folder_text, labels);
}

}  // namespace orvello
