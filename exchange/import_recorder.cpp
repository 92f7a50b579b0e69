#include "exchange/import_recorder.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "store/record_appointment.h"

namespace orvello {
namespace {

// Who changes an appointment later, changes this time as well.
class ChangeTime : public AppointmentState {
 public:
  ChangeTime(std::int32_t oid, UtcSeconds modified) : oid_(oid), modified_(modified) {}
  bool same_as(const AppointmentState& other) const override {
    const auto* state = dynamic_cast<const RecordState*>(&other);
    return state && state->record.oid == oid_ && state->record.modified == modified_;
  }

 private:
  std::int32_t oid_;
  UtcSeconds modified_;
};

bool same_contact(const StoreContact& a, const StoreContact& b) {
  const auto values = [](const StoreContact& c) {
    return std::tie(c.oid, c.file_as, c.first_name, c.middle_name, c.last_name, c.company,
                    c.email[0], c.email[1], c.email[2], c.categories);
  };
  return values(a) == values(b);
}

class ImportBeside : public EditStep::Beside {
 public:
  ImportBeside(RecordStore& store, ImportRecorder::Others others)
      : store_(store), others_(std::move(others)) {}

  std::optional<bool> is_now(bool after) override {
    const auto foreign = foreign_is_now(after);
    return foreign && *foreign ? contacts_are_now(after) : foreign;
  }

  bool bring(bool after) override {
    for (const ImportRecorder::Foreign& one : others_.foreign)
      if (!store_.put_foreign({one.key, after ? one.after : one.before})) return false;
    for (const auto& [oid, contact] : others_.contacts)
      if (!bring_contact(oid, contact, after)) return false;
    return true;
  }

  // A contact that was removed comes back under no number.
  bool can_redo() const override { return others_.contacts.empty(); }

 private:
  std::optional<bool> foreign_is_now(bool after) {
    if (others_.foreign.empty()) return true;
    const auto stored = store_.foreign();
    if (!stored) return std::nullopt;
    std::map<std::string, const std::string*> now;
    for (const ForeignComponent& one : *stored) now[one.key] = &one.text;
    return std::all_of(others_.foreign.begin(), others_.foreign.end(), [&](const auto& one) {
      const std::string& wanted = after ? one.after : one.before;
      const auto found = now.find(one.key);
      return found == now.end() ? wanted.empty() : *found->second == wanted;
    });
  }

  std::optional<bool> contacts_are_now(bool after) {
    if (others_.contacts.empty() || !after) return true;
    const auto stored = store_.contacts();
    if (!stored) return std::nullopt;
    return std::all_of(others_.contacts.begin(), others_.contacts.end(), [&](const auto& entry) {
      return std::any_of(stored->begin(), stored->end(), [&](const StoreContact& contact) {
        return same_contact(contact, entry.second.after);
      });
    });
  }

  bool bring_contact(std::int32_t oid, const ImportRecorder::Contact& contact, bool after) {
    if (after) return false;
    if (!contact.before) return store_.erase_contact(oid);
    return store_.put_contact(*contact.before) != 0 && store_.put_card(contact.card_before);
  }

  RecordStore& store_;
  ImportRecorder::Others others_;
};

}  // namespace

// What is too much to be remembered is not remembered in part either.
void ImportRecorder::give_up() {
  whole_ = false;
  items_ = {};
  others_ = {};
}

// The item before it is changed, which it then may be. Null: nothing is remembered any more.
ImportRecorder::Item* ImportRecorder::touch(std::int32_t oid) {
  if (!whole_) return nullptr;
  if (const auto known = items_.find(oid); known != items_.end()) return &known->second;
  const bool room = items_.size() < most_ && ++states_ <= EditHistory::kMostStates;
  auto stored = room ? store_.load(oid) : Result<std::optional<AppointmentRecord>>(std::nullopt);
  if (!stored || !*stored) return give_up(), nullptr;
  Item item{std::make_shared<RecordState>(std::move(**stored)), std::nullopt};
  return &items_.emplace(oid, std::move(item)).first->second;
}

std::int32_t ImportRecorder::put(const AppointmentRecord& record) {
  if (record.oid != 0) {
    if (Item* item = touch(record.oid)) item->modified = record.modified;
    return store_.put(record);
  }
  const std::int32_t oid = store_.put(record);
  if (whole_ && items_.size() >= most_) give_up();
  if (whole_ && oid != 0) items_[oid] = {nullptr, record.modified};
  return oid;
}

bool ImportRecorder::erase(std::int32_t oid) {
  if (Item* item = touch(oid)) {
    item->modified.reset();
    if (!item->before) items_.erase(oid);
  }
  return store_.erase(oid);
}

bool ImportRecorder::know_foreign() {
  if (foreign_before_) return true;
  const auto stored = store_.foreign();
  if (!stored) return give_up(), false;
  foreign_before_.emplace();
  for (const ForeignComponent& one : *stored) foreign_before_->emplace(one.key, one.text);
  return true;
}

bool ImportRecorder::put_foreign(const ForeignComponent& component) {
  if (others_.foreign.size() >= most_) give_up();
  if (whole_ && know_foreign()) {
    const auto [place, added] = foreign_places_.try_emplace(component.key, others_.foreign.size());
    if (added) {
      const auto known = foreign_before_->find(component.key);
      others_.foreign.push_back(
          {component.key, known == foreign_before_->end() ? "" : known->second, ""});
    }
    others_.foreign[place->second].after = component.text;
  }
  return store_.put_foreign(component);
}

bool ImportRecorder::know_contacts() {
  if (contacts_before_) return true;
  const auto stored = store_.contacts();
  const auto cards = stored ? store_.card_names() : std::vector<ContactCard>();
  if (!stored || !cards) return give_up(), false;
  contacts_before_.emplace();
  for (const StoreContact& one : *stored) contacts_before_->emplace(one.oid, one);
  for (const ContactCard& card : *cards) card_uids_.emplace(card.oid, card.uid);
  return true;
}

std::int32_t ImportRecorder::put_contact(const StoreContact& contact) {
  const bool remembers = whole_ && know_contacts();
  Contact touched{std::nullopt, {}, contact};
  if (remembers && contact.oid != 0 && !others_.contacts.contains(contact.oid)) {
    const auto known = contacts_before_->find(contact.oid);
    if (known != contacts_before_->end()) touched.before = known->second;
    auto text = store_.card_text(contact.oid);
    if (!text) give_up();
    if (text) touched.card_before = {contact.oid, card_uids_[contact.oid], std::move(*text)};
  }
  const std::int32_t oid = store_.put_contact(contact);
  if (!remembers || !whole_ || oid == 0) return oid;
  touched.after.oid = oid;
  const auto [place, added] = others_.contacts.try_emplace(oid, touched);
  if (!added) place->second.after = touched.after;
  return oid;
}

EditStep ImportRecorder::step() {
  EditStep step;
  if (!whole_ || others_.contacts.size() > most_) {
    step.give_up();
    return step;
  }
  for (auto& [oid, item] : items_)
    step.add(oid, item.before,
             item.modified ? std::make_shared<ChangeTime>(oid, *item.modified) : nullptr);
  if (!others_.foreign.empty() || !others_.contacts.empty())
    step.add_beside(std::make_unique<ImportBeside>(store_, std::move(others_)));
  return step;
}

}  // namespace orvello
