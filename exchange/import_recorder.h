// A store that remembers what an import does to it, so that it can be taken back as one step.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "store/edit_history.h"
#include "store/record_limits.h"

namespace orvello {

// Hands every call on to `store`, which outlives the step. Of new appointments it keeps the number
// and the time of their last change, so that a large import costs nothing; of those that it updates
// what they were. Zones stay when an import is taken back: they show nothing by themselves.
class ImportRecorder : public RecordStore, public RecordLimits {
 public:
  // Of more than so many items nothing is kept, and neither of many updated ones.
  explicit ImportRecorder(RecordStore& store, std::size_t most = EditHistory::kMostItems)
      : store_(store), most_(most) {}

  // What was done, after it was committed.
  EditStep step();

  bool begin() override { return store_.begin(); }
  bool commit() override { return store_.commit(); }
  void rollback() override { store_.rollback(); }
  bool begin_read() override { return store_.begin_read(); }
  void end_read() override { store_.end_read(); }
  Result<std::optional<std::int32_t>> oid_of_uid(std::string_view uid) override {
    return store_.oid_of_uid(uid);
  }
  Result<std::optional<AppointmentRecord>> load(std::int32_t oid) override {
    return store_.load(oid);
  }
  std::int32_t put(const AppointmentRecord& record) override;
  bool erase(std::int32_t oid) override;
  Result<std::vector<std::int32_t>> oids(std::optional<Day> from_day,
                                         std::optional<Day> to_day) override {
    return store_.oids(from_day, to_day);
  }
  bool put_zone(const Zone& zone) override { return store_.put_zone(zone); }
  Result<std::optional<Zone>> zone(std::string_view name) override { return store_.zone(name); }
  bool put_foreign(const ForeignComponent& component) override;
  Result<std::vector<ForeignComponent>> foreign() override { return store_.foreign(); }
  std::optional<std::vector<StoreContact>> contacts() override { return store_.contacts(); }
  std::int32_t put_contact(const StoreContact& contact) override;
  bool erase_contact(std::int32_t oid) override { return store_.erase_contact(oid); }
  bool put_card(const ContactCard& card) override { return store_.put_card(card); }
  Result<std::vector<ContactCard>> card_names() override { return store_.card_names(); }
  Result<std::string> card_text(std::int32_t oid) override { return store_.card_text(oid); }
  std::string problem() const override { return store_.problem(); }
  bool has_place_for(const AppointmentRecord& record) override {
    return orvello::has_place_for(store_, record);
  }

  // Before and after; of a text empty, of a contact nothing: there is none.
  struct Foreign {
    std::string key, before, after;
  };
  struct Contact {
    std::optional<StoreContact> before;
    ContactCard card_before;
    StoreContact after;
  };
  struct Others {
    std::vector<Foreign> foreign;  // in the order of first storing
    std::map<std::int32_t, Contact> contacts;
  };

 private:
  struct Item {
    EditStep::State before;              // null: made by the import
    std::optional<UtcSeconds> modified;  // nothing: removed by it
  };
  Item* touch(std::int32_t oid);
  bool know_foreign();
  bool know_contacts();
  void give_up();

  RecordStore& store_;
  std::size_t most_;
  std::size_t states_ = 0;
  bool whole_ = true;
  std::unordered_map<std::int32_t, Item> items_;
  Others others_;
  std::optional<std::map<std::string, std::string>> foreign_before_;
  std::map<std::string, std::size_t> foreign_places_;
  std::optional<std::map<std::int32_t, StoreContact>> contacts_before_;
  std::map<std::int32_t, std::string> card_uids_;
};

}  // namespace orvello
