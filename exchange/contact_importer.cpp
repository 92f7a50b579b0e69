#include "exchange/contact_importer.h"

#include <functional>
#include <unordered_set>

#include "exchange/importer.h"

namespace orvello {

// Once for all files, with the first card.
bool ContactImporter::know_contacts() {
  if (known_ || failed_) return known_;
  const auto names = store_.card_names();
  failed_ |= !names;
  const auto contacts = names ? store_.contacts() : std::nullopt;
  failed_ |= !contacts;
  if (failed_) return false;
  std::unordered_set<std::int32_t> named, there;
  for (const StoreContact& contact : *contacts) there.insert(contact.oid);
  for (const ContactCard& card : *names) {
    if (!there.contains(card.oid)) continue;
    oids_.emplace(card.uid, card.oid);
    named.insert(card.oid);
  }
  for (const StoreContact& contact : *contacts)
    if (!named.contains(contact.oid)) unnamed_.emplace(made_up_card_uid(contact), contact.oid);
  return known_ = true;
}

bool ContactImporter::is_as_stored(const std::string& uid, std::string_view text) {
  const auto known = oids_.find(uid);
  if (known == oids_.end() || known->second == 0) return false;
  const auto stored = store_.card_text(known->second);
  failed_ |= !stored;
  return stored && *stored == text;
}

// Namesakes without a UID are told apart by their order, unless one is there as it was.
std::optional<std::string> ContactImporter::place_of_nameless(const std::string& made_up,
                                                              std::string_view text) {
  const std::size_t hash = std::hash<std::string_view>()(text);
  std::optional<std::string> free;
  for (int number = 1; !failed_; ++number) {
    const std::string one = number == 1 ? made_up : made_up + "#" + std::to_string(number);
    const auto taken = taken_.find(one);
    if (taken != taken_.end()) {
      if (taken->second.text == hash) return std::nullopt;
      continue;
    }
    const bool stored = oids_.contains(one), same = stored && is_as_stored(one, text);
    if (!free || same) free = one;
    if (!stored || same) break;
  }
  return free;
}

// Different people of one UID are told apart by their names.
std::optional<std::string> ContactImporter::place_of(const StoreContact& contact,
                                                     const std::string& uid,
                                                     std::string_view text) {
  const std::string made_up = made_up_card_uid(contact);
  if (uid.empty()) return place_of_nameless(made_up, text);
  const std::size_t hash = std::hash<std::string_view>()(text);
  auto taken = taken_.find(uid);
  if (taken == taken_.end() || taken->second.file_as == contact.file_as)
    return taken != taken_.end() && taken->second.text == hash ? std::nullopt : std::optional(uid);
  const std::string other = uid + "#" + made_up.substr(0, made_up.find('@'));
  taken = taken_.find(other);
  return taken != taken_.end() && taken->second.text == hash ? std::nullopt : std::optional(other);
}

void ContactImporter::put(StoreContact& contact, const std::string& uid, std::string_view text,
                          int line, ImportCounts& counts, ProblemList& problems) {
  const Taken taken{std::hash<std::string_view>()(text), contact.file_as};
  auto known = oids_.find(uid);
  if (known == oids_.end()) {
    const auto unnamed = unnamed_.find(made_up_card_uid(contact));
    if (unnamed != unnamed_.end()) {
      known = oids_.emplace(uid, unnamed->second).first;
      unnamed_.erase(unnamed);
    }
  }
  const bool exists = known != oids_.end();
  if (exists) contact.oid = known->second;
  const bool as_stored = watcher_ && !writes_ && is_as_stored(uid, text);
  if (writes_) {
    contact.oid = store_.put_contact(contact);
    failed_ |= contact.oid == 0 || !store_.put_card({contact.oid, uid, std::string(text)});
  }
  if (failed_) return;
  oids_[uid] = contact.oid;
  const bool replaces = !taken_.insert_or_assign(uid, taken).second;
  ++(replaces ? counts.skipped : exists ? counts.updated : counts.imported);
  if (watcher_ && !replaces) watcher_->put(contact, !exists, as_stored);
  if (replaces) problems.add(line, "a card of the same UID came before; this one takes its place");
}

void ContactImporter::import_card(std::string_view text, int line, ImportCounts& counts,
                                  ProblemList& problems) {
  if (!know_contacts()) return;
  ParsedCard card;
  const bool whole = card.parse(text, line);
  for (const int garbage : card.garbage()) problems.add(garbage, "line is no property; left out");
  auto contact = whole ? read_contact(card) : std::nullopt;
  if (!contact) {
    problems.add(line, whole ? "card without a name; left out" : "card cannot be read; left out");
    ++counts.skipped;
  } else if (const auto uid = place_of(*contact, card_uid(card), text)) {
    put(*contact, *uid, text, line, counts, problems);
  } else if (!failed_) {
    problems.add(line, "the same card came before; left out");
    ++counts.skipped;
  }
}

}  // namespace orvello
