// What an import would bring, item by item, and what it brought.
#pragma once

#include <unordered_map>
#include <vector>

#include "exchange/importer.h"

namespace orvello {

struct ImportItem {
  enum class Change { added, changed, unchanged, cancelled };
  Change change = Change::added;
  bool contact = false;  // without a start
  bool all_day = false;
  bool recurring = false;
  LocalSeconds start;  // as the device shows it; of a series, its first
  Text subject;        // a contact's name
};

// Watches a preview.
class ImportList : public ImportWatcher {
 public:
  void put(const AppointmentRecord& record, bool fresh, const AppointmentRecord* earlier) override;
  void cancelled(const AppointmentRecord& record) override;
  void put(const StoreContact& contact, bool fresh, bool as_stored) override;

  // In the order of their starts, contacts behind them by their names.
  std::vector<ImportItem> take_items();

 private:
  ImportItem& place_of(const AppointmentRecord& record);

  std::vector<ImportItem> items_;
  std::unordered_map<std::size_t, std::size_t> places_;  // by the UID's hash
};

// Watches an import.
class FreshAppointments : public ImportWatcher {
 public:
  void put(const AppointmentRecord& record, bool fresh, const AppointmentRecord*) override {
    if (fresh) oids_.push_back(record.oid);
  }
  void cancelled(const AppointmentRecord&) override {}
  void put(const StoreContact&, bool, bool) override {}

  // The first day from `today` on that shows one of them; nothing without, or when the store could
  // not tell.
  std::optional<Day> first_day(RecordStore& store, Day today);

 private:
  std::vector<std::int32_t> oids_;
};

}  // namespace orvello
