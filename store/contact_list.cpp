#include "store/contact_list.h"

#include <algorithm>

namespace orvello {

std::optional<std::vector<StoreContact>> sorted_contacts(StoreFolder& folder,
                                                         const Locale& locale) {
  auto contacts = folder.contacts();
  if (!contacts) return std::nullopt;
  std::sort(contacts->begin(), contacts->end(), [&](const auto& a, const auto& b) {
    const int order = locale.compare(a.file_as, b.file_as);
    return order != 0 ? order < 0 : a.oid < b.oid;
  });
  return contacts;
}

}  // namespace orvello
