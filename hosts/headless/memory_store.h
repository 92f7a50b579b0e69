// The calendar store in memory: what the embedded store does, without a file, and able to fail on
// demand.
#pragma once

#include <cassert>
#include <map>
#include <string>
#include <vector>

#include "store/record_calendar_store.h"

namespace orvello {

class MemoryStore : public RecordCalendarStore {
 public:
  explicit MemoryStore(const Clock& clock);
  ~MemoryStore() override { assert(late_patterns == 0); }

  // What is to fail from now on, until it is set back.
  struct Faults {
    bool initialize = false;
    int create_application = 0;  // the next so many calls
    Registration registration = Registration::done;
    bool logon = false;
    bool folder = false;
    bool fetch = false;
    bool save = false;
    bool exception = false;
    bool ink = false;         // no ink is taken
    bool contacts = false;    // they cannot be read
    bool state = false;       // this store gives none and restores nothing
    std::string send{};       // why nothing leaves the device
    int read = 0;             // the so-manieth single read from now on; each is counted down
    bool unreadable = false;  // all of them
    int call = 0;             // the so-manieth single read or write from now on, likewise
    bool busy = false;        // what busy() answers
    std::string reason;       // what problem() then says
  };
  Faults faults;

  // What was asked of the store, for tests of the order of steps.
  int initialized = 0;  // initialize less uninitialize
  int applications_created = 0;
  int queries = 0;
  int reads = 0;   // rows, zones, exceptions, recipients, contacts, labels, notes: each one
  int writes = 0;  // with the beginnings and ends of transactions
  int registrations = 0;
  // Properties of items that queries read, as a store of objects would ask each object for them.
  int properties = 0;
  int late_patterns = 0;  // that were still there when their item went; none at the end

  // As which platform it stores the ends of all-day items.
  AllDayEnd all_day_form = AllDayEnd::on_last_day;
  std::vector<AppointmentRecord> sent, beamed;

  // Whether it keeps zones, residue, foreign components and cards; a device's own store does not.
  bool keeps_all = true;
  // All that it holds, to look at and to put back.
  struct Contents {
    std::map<std::int32_t, AppointmentRecord> records;
    std::map<std::int32_t, StoreContact> contacts;
    std::map<std::int32_t, ContactCard> cards;
    std::map<std::string, Zone, std::less<>> zones;
    std::vector<ForeignComponent> foreign;
    std::int32_t next_oid = 1;
  };
  const Contents& contents() const { return contents_; }
  void put_back(Contents contents);

  // The labels a folder answers in place of those in use (the tasks folder has no items here).
  void set_category_text(int folder, Text text) { category_texts_[folder] = std::move(text); }

  bool begin() override;
  bool commit() override;
  void rollback() override;
  bool begin_read() override { return true; }
  void end_read() override {}
  Result<std::optional<std::int32_t>> oid_of_uid(std::string_view uid) override;
  Result<std::optional<AppointmentRecord>> load(std::int32_t oid) override;
  std::int32_t put(const AppointmentRecord& record) override;
  bool erase(std::int32_t oid) override;
  Result<std::vector<std::int32_t>> oids(std::optional<Day> from_day,
                                         std::optional<Day> to_day) override;
  bool put_zone(const Zone& zone) override;
  Result<std::optional<Zone>> zone(std::string_view name) override;
  bool put_foreign(const ForeignComponent& component) override;
  Result<std::vector<ForeignComponent>> foreign() override;
  std::string problem() const override { return problem_; }
  bool busy() const override { return faults.busy; }

  std::optional<std::vector<StoreContact>> contacts() override;
  std::int32_t put_contact(const StoreContact& contact) override;
  bool erase_contact(std::int32_t oid) override;
  bool put_card(const ContactCard& card) override;
  Result<std::vector<ContactCard>> card_names() override;
  Result<std::string> card_text(std::int32_t oid) override;
  std::optional<std::vector<std::pair<Text, int>>> category_texts(int folder) override;
  std::optional<Text> category_text(int folder) override;

  bool initialize() override;
  void uninitialize() override { --initialized; }
  std::unique_ptr<StoreApplication> create_application(bool notify) override;
  Registration register_server() override;

  bool query(const ItemQuery& query, OccurrenceList& list) override;
  Result<std::vector<AppointmentRecord>> records_after(std::int32_t after) override;
  bool folder_reachable(int folder) const override;
  bool allows_logon() override;
  Result<std::optional<AppointmentRecord>> fetch(std::int32_t oid) override;
  bool exception_readable() const override { return !faults.exception; }
  bool takes_ink() const override { return !faults.ink; }
  AllDayEnd all_day_end() const override { return all_day_form; }
  void note_late_pattern() override { ++late_patterns; }
  bool restores() const override { return !faults.state; }
  bool restore(const AppointmentRecord& record) override;

 protected:
  bool in_transaction() const override { return before_.has_value(); }

 private:
  // One elementary read. False: it fails, and problem() says so.
  bool read(int count = 1);
  bool read_whole(const AppointmentRecord& record);
  OccurrenceList::Summary summary_of(const AppointmentFields& fields, std::int32_t oid,
                                     bool recurring, AppointmentFieldSet wanted);
  std::int32_t put(const AppointmentRecord& record, bool back);
  bool call_fails() { return faults.call > 0 && --faults.call == 0; }
  bool may_write();
  bool spoil();
  void note(StoreChange change);

  Contents contents_;
  std::optional<Contents> before_;    // as it was at `begin`
  bool spoilt_ = false;               // a write of the transaction failed: it cannot be committed
  std::vector<StoreChange> changes_;  // of the transaction
  std::map<int, Text> category_texts_;
};

}  // namespace orvello
