// The calendar store of the device itself, over the platform's personal-information objects.
// Everything above whole records is the core's; here a record is an item with its pattern, its
// exceptions and its recipients, and the views' collections are the platform's own.
//
// What the platform has no place for is not kept: zones and what a file said beside the fields;
// UIDs are, in a file of this program's own. A recurrence that no pattern holds is refused. Nor has
// it transactions: what was written of one is taken back, in reverse, when it fails or is given up.
// That holds while this process and the store do; a process that dies in between leaves a part. Of
// one item without exceptions nothing is ever half written, since the platform takes it whole.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "store/pim/pim_items.h"
#include "store/pim/pim_record.h"
#include "store/pim/pim_uids.h"
#include "store/record_calendar_store.h"
#include "store/record_limits.h"

namespace orvello {

// The window to which the platform posts its notifications; tells each message that it gets.
class PimWindow {
 public:
  virtual ~PimWindow() = default;
  virtual std::intptr_t handle() const = 0;
  // Sends it a message behind those that wait already.
  virtual void post(std::uint32_t message) = 0;
};
using MakePimWindow =
    std::function<std::unique_ptr<PimWindow>(std::function<void(std::uint32_t)> told)>;

struct PimPlatform {
  int generation = 0;  // as the program counts them; 3 stores whole days to the next midnight
  // With a window changes are told from the message loop, without poll(); without one nobody hears
  // of other programs' changes.
  MakePimWindow make_window{};
  std::string uids{};  // the file for them; "": they are forgotten at the end
};

class PimApplication;

class PimStore : public RecordCalendarStore, public RecordLimits {
 public:
  PimStore(const Clock& clock, PimPlatform platform);
  ~PimStore() override;

  bool initialize() override;
  void uninitialize() override;
  std::unique_ptr<StoreApplication> create_application(bool notify) override;
  Registration register_server() override;

  // RecordStore, over the application that is logged on; without one everything fails.
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
  std::optional<std::vector<StoreContact>> contacts() override;
  std::int32_t put_contact(const StoreContact& contact) override;
  bool erase_contact(std::int32_t oid) override;
  std::string problem() const override { return problem_; }

  std::optional<std::vector<std::pair<Text, int>>> category_texts(int folder) override;
  std::optional<Text> category_text(int folder) override;
  bool query(const ItemQuery& query, OccurrenceList& list) override;
  Result<std::vector<AppointmentRecord>> records_after(std::int32_t after) override;
  bool busy() const override;
  bool takes_ink() const override { return form_.ink; }
  AllDayEnd all_day_end() const override { return form_.all_day_end; }
  bool restores() const override { return true; }
  bool restore(const AppointmentRecord& record) override;
  // Of recurrences patterns, and the dates that the platform knows.
  bool has_place_for(const AppointmentRecord& record) override;

  // For its applications and folders.
  PimCaller& caller() { return caller_; }
  std::intptr_t notified_window();
  void opened(PimApplication& application);
  void closed(PimApplication& application);
  std::unique_ptr<StoreItems> items_of(const PimObject& folder);
  bool beam(const PimObject& item);
  // Null where there is none; without a value: failure.
  std::optional<PimObject> item(std::int32_t oid);
  void cannot_read();
  void forget_problem() { problem_.clear(); }

 protected:
  bool in_transaction() const override { return writing_; }

 private:
  // What one write of a transaction changed.
  struct Written {
    std::int32_t oid = 0;
    std::optional<AppointmentRecord> before;  // nothing: it was made
  };

  bool cannot_write();
  bool refused_write(std::string reason);
  std::optional<PimObject> folder(int number);
  std::optional<PimObject> folder_items(int number);
  std::optional<AppointmentRecord> record_of(const PimObject& item, std::int32_t oid, bool ink);
  void look_for_ink(const PimObject& item);
  std::optional<PimObject> made_item(PimKind kind, std::int32_t type);
  std::optional<PimObject> contact_item(std::int32_t oid);  // 0: a new one
  bool simplify_all(AppointmentRecord& record);
  bool fit(AppointmentRecord& record);
  std::int32_t put_new(const AppointmentRecord& record);
  std::int32_t put_existing(const AppointmentRecord& record);
  bool bring_back(const AppointmentRecord& before);
  bool take_back(const Written& written);
  bool remove(std::int32_t oid);
  void name(std::int32_t oid, const AppointmentRecord& record);
  void write_uids();
  void note(StoreChange change);
  void told(std::uint32_t message);
  Sending send_item(const AppointmentRecord& record);

  PimPlatform platform_;
  PimForm form_;
  PimCaller caller_;
  PimNumbers numbers_;
  PimUids uids_;
  std::unique_ptr<PimWindow> window_;
  bool delivery_posted_ = false;
  int hosts_apartments_ = 0;           // initializations that found the thread ready
  std::vector<PimApplication*> open_;  // logged on, in that order
  std::unordered_map<std::int32_t, UtcSeconds> modified_;  // what this program wrote, and when
  bool writing_ = false;
  bool spoilt_ = false;  // a write of the transaction failed: it cannot be committed
  std::vector<Written> written_;
  std::vector<StoreChange> changes_;    // of the transaction, not told yet
  std::vector<std::int32_t> all_oids_;  // of a walk over all texts, which began with them
};

}  // namespace orvello
