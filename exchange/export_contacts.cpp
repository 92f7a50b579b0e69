#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "exchange/card_reader.h"
#include "exchange/export.h"

namespace orvello {

Result<std::string> export_contacts(RecordStore& store) {
  using Exported = Result<std::string>;
  StoreReading reading(store);
  auto contacts = reading ? store.contacts() : std::nullopt;
  if (!contacts) return Exported::failure(store.problem());
  const auto cards = store.card_names();
  if (!cards) return Exported::failure(cards.reason());
  std::sort(contacts->begin(), contacts->end(),
            [](const auto& a, const auto& b) { return a.oid < b.oid; });
  std::unordered_map<std::int32_t, std::string> uids;
  for (const ContactCard& card : *cards) uids.emplace(card.oid, card.uid);
  std::string out;
  std::unordered_set<std::int32_t> there;
  for (const StoreContact& contact : *contacts) {
    there.insert(contact.oid);
    const auto kept = store.card_text(contact.oid);
    if (!kept) return Exported::failure(kept.reason());
    out += card_of(contact, uids[contact.oid], *kept);
  }
  // What a damaged file has lost of its contacts may stand on their cards.
  for (const ContactCard& card : *cards) {
    if (there.contains(card.oid)) continue;
    const auto kept = store.card_text(card.oid);
    if (!kept) return Exported::failure(kept.reason());
    append_lines(out, *kept);
  }
  return out;
}

}  // namespace orvello
