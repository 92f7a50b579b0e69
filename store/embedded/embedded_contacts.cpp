// Contacts, the labels in use, and what came with an exchanged file.
#include <algorithm>
#include <cstdlib>

#include "store/embedded/embedded_database.h"
#include "store/embedded/embedded_store.h"

namespace orvello {
namespace {

// Cards stand among the foreign components, as "contact/NUMBER/UID": a calendar of before has a
// place for them, too.
constexpr std::string_view kCardPrefix = "contact/";

std::string card_prefix(std::int32_t oid) {
  return std::string(kCardPrefix) + std::to_string(oid) + "/";
}

// The first key behind all that begin so.
std::string behind(std::string prefix) {
  ++prefix.back();
  return prefix;
}

}  // namespace

std::optional<std::vector<StoreContact>> EmbeddedStore::contacts() {
  problem_.clear();
  std::vector<StoreContact> list;
  auto rows = db_->use(
      "SELECT oid, file_as, first_name, middle_name, last_name, company, email1, email2, email3,"
      " categories FROM contacts ORDER BY file_as, oid");
  const bool whole = rows->each([&](Statement& row) {
    list.push_back({row.small(0),
                    row.text(1),
                    row.text(2),
                    row.text(3),
                    row.text(4),
                    row.text(5),
                    {row.text(6), row.text(7), row.text(8)},
                    row.text(9)});
  });
  if (!whole) return failed(), std::nullopt;
  return list;
}

bool EmbeddedStore::find_contact(std::int32_t oid, Text& categories) {
  bool found = false;
  auto rows = db_->use("SELECT categories FROM contacts WHERE oid = ?1");
  const bool whole = rows->bind(1, oid).each([&](Statement& row) {
    categories = row.text(0);
    found = true;
  });
  if (whole && !found) fail("There is no contact with the number " + std::to_string(oid) + ".");
  return whole && found;
}

std::int32_t EmbeddedStore::put_contact(const StoreContact& contact) {
  std::int32_t oid = contact.oid;
  const bool written = change([&] {
    if (oid != 0) {
      Text old;
      if (!find_contact(oid, old)) return false;
      count_category(kFolderContacts, old, -1);
    }
    count_category(kFolderContacts, contact.categories, 1);
    auto write = db_->use(
        "INSERT OR REPLACE INTO contacts (file_as, first_name, middle_name, last_name, company,"
        " email1, email2, email3, categories, oid) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9,"
        " nullif(?10, 0))");
    write->bind(1, contact.file_as)
        .bind(2, contact.first_name)
        .bind(3, contact.middle_name)
        .bind(4, contact.last_name)
        .bind(5, contact.company);
    for (int i = 0; i < 3; ++i) write->bind(6 + i, contact.email[i]);
    if (!write->bind(9, contact.categories).bind(10, oid).run()) return false;
    if (oid == 0) oid = static_cast<std::int32_t>(db_->last_row());
    return true;
  });
  return written ? oid : 0;
}

bool EmbeddedStore::erase_contact(std::int32_t oid) {
  return change([&] {
    Text old;
    if (!find_contact(oid, old)) return false;
    count_category(kFolderContacts, old, -1);
    return erase_card(oid) && db_->use("DELETE FROM contacts WHERE oid = ?1")->bind(1, oid).run();
  });
}

bool EmbeddedStore::erase_card(std::int32_t oid) {
  const std::string prefix = card_prefix(oid);
  auto erase = db_->use("DELETE FROM foreign_components WHERE key >= ?1 AND key < ?2");
  return erase->bind(1, prefix).bind(2, behind(prefix)).run();
}

bool EmbeddedStore::put_card(const ContactCard& card) {
  return change([&] {
    if (!erase_card(card.oid)) return false;
    auto write = db_->use("INSERT INTO foreign_components (key, text) VALUES (?1, ?2)");
    return write->bind(1, card_prefix(card.oid) + card.uid).bind(2, card.text).run();
  });
}

Result<std::vector<ContactCard>> EmbeddedStore::card_names() {
  problem_.clear();
  std::vector<ContactCard> names;
  const std::string prefix(kCardPrefix);
  auto rows = db_->use("SELECT key FROM foreign_components WHERE key >= ?1 AND key < ?2");
  const bool whole = rows->bind(1, prefix).bind(2, behind(prefix)).each([&](Statement& row) {
    const std::string key = row.string(0);
    const std::size_t slash = std::min(key.find('/', prefix.size()), key.size() - 1);
    names.push_back({static_cast<std::int32_t>(std::atoi(key.c_str() + prefix.size())),
                     key.substr(slash + 1), ""});
  });
  if (!whole) return failure<std::vector<ContactCard>>();
  return names;
}

Result<std::string> EmbeddedStore::card_text(std::int32_t oid) {
  problem_.clear();
  std::string text;
  const std::string prefix = card_prefix(oid);
  auto rows = db_->use("SELECT text FROM foreign_components WHERE key >= ?1 AND key < ?2");
  const bool whole = rows->bind(1, prefix).bind(2, behind(prefix)).each([&](Statement& row) {
    text = row.string(0);
  });
  if (!whole) return failure<std::string>();
  return text;
}

std::optional<std::vector<std::pair<Text, int>>> EmbeddedStore::category_texts(int folder) {
  problem_.clear();
  std::vector<std::pair<Text, int>> list;
  auto rows = db_->use("SELECT text, items FROM category_uses WHERE folder = ?1 ORDER BY text");
  const bool whole = rows->bind(1, folder).each(
      [&](Statement& row) { list.emplace_back(row.text(0), row.small(1)); });
  if (!whole) return failed(), std::nullopt;
  return list;
}

bool EmbeddedStore::put_foreign(const ForeignComponent& component) {
  return change([&] {
    if (component.text.empty())
      return db_->use("DELETE FROM foreign_components WHERE key = ?1")
          ->bind(1, component.key)
          .run();
    auto write = db_->use(
        "INSERT INTO foreign_components (key, text) VALUES (?1, ?2)"
        " ON CONFLICT (key) DO UPDATE SET text = ?2");
    return write->bind(1, component.key).bind(2, component.text).run();
  });
}

Result<std::vector<ForeignComponent>> EmbeddedStore::foreign() {
  problem_.clear();
  std::vector<ForeignComponent> list;
  auto rows = db_->use(
      "SELECT key, text FROM foreign_components WHERE NOT (key >= 'contact/' AND key < 'contact0')"
      " ORDER BY position");
  const bool whole = rows->each([&](Statement& row) {
    list.push_back({row.string(0), row.string(1)});
  });
  if (!whole) return failure<std::vector<ForeignComponent>>();
  return list;
}

}  // namespace orvello
