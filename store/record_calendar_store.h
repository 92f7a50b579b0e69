// The calendar-store port over any store of whole records: collections, appointments, patterns and
// notifications are written once, for the store in memory and the one in a file.
#pragma once

#include <cassert>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ports/calendar_store.h"
#include "store/device_time.h"
#include "store/fetch_stop.h"
#include "store/occurrence_list.h"
#include "store/record_store.h"
#include "store/restriction.h"
#include "store/series.h"

namespace orvello {

// What a collection asks for.
struct ItemQuery {
  DayBounds bounds;
  bool occurrences = false;  // of series, each one
  AppointmentFieldSet wanted = AppointmentFieldSet::all();
  FetchStop* stop = nullptr;
  // Whether to give up, for every row: nearly always a glance at a number.
  bool stopped() const { return stop && stop->now(); }
  bool given_up() const { return stop && stop->given_up(); }
};

enum class StoreChange { created, deleted, changed };

// How often a label is in use, by kind of item.
struct CategoryUse {
  Text label;
  int appointments = 0;
  int tasks = 0;
  int contacts = 0;
};

class RecordCalendarStore : public RecordStore, public CalendarStore {
 public:
  explicit RecordCalendarStore(const Clock& clock);

  // A store without a place for zones, residue, foreign components and cards leaves these as they
  // are, and puts records that simplify() has changed: in the device's time, as zones are known for
  // as long as this lives, and without residue. False, with the reason, where no recurrence holds
  // the record so.
  bool put_zone(const Zone& zone) override;
  Result<std::optional<Zone>> zone(std::string_view name) override;
  bool put_foreign(const ForeignComponent&) override { return true; }
  Result<std::vector<ForeignComponent>> foreign() override {
    return std::vector<ForeignComponent>();
  }

  bool put_card(const ContactCard&) override { return true; }
  Result<std::vector<ContactCard>> card_names() override { return std::vector<ContactCard>(); }
  Result<std::string> card_text(std::int32_t) override { return std::string(); }

  // The distinct category texts of a folder's items, each with the number of items that carry it.
  // Nothing: failure.
  virtual std::optional<std::vector<std::pair<Text, int>>> category_texts(int folder) = 0;
  std::optional<std::vector<CategoryUse>> category_use_counts();  // in order of label
  virtual std::optional<Text> category_text(int folder);

  // Delivers what changed since the last call to everyone logged on, own changes and other
  // processes'. The host calls it from its message loop: now and then, and soon after `wake`.
  // True when there was something.
  virtual bool poll();
  void set_wake(std::function<void()> wake) { wake_ = std::move(wake); }

  // How meeting requests and beamed items leave the device; without one, sending fails. What became
  // of one, with the reason, a sentence, where it did not leave; from a text: `failed`, or sent
  // when it is empty.
  struct Sending {
    SendResult result = SendResult::sent;
    std::string reason;
    Sending(SendResult became, std::string why) : result(became), reason(std::move(why)) {}
    Sending(std::string why) : reason(std::move(why)) {
      if (!reason.empty()) result = SendResult::failed;
    }
  };
  using Transport = std::function<Sending(const AppointmentRecord&)>;
  void set_transport(Transport send, Transport beam);
  SendResult send(const AppointmentRecord& record);
  bool beam(const AppointmentRecord& record);

  // CalendarStore; nothing here can fail, a store that can overrides them.
  bool initialize() override { return true; }
  void uninitialize() override {}
  std::unique_ptr<StoreApplication> create_application(bool notify) override;
  Registration register_server() override { return Registration::done; }

  // Runs `work` in a transaction of its own, or as a part of the one that is open. False, and
  // nothing of it stays, when `work` answers false or the store fails.
  bool all_or_nothing(const std::function<bool()>& work);
  // Whether the last failure was another program's lock.
  virtual bool busy() const { return false; }

  // For the port's objects. A query that fails or is stopped may have listed a part.
  virtual bool query(const ItemQuery& query, OccurrenceList& list) = 0;
  virtual bool folder_reachable(int folder) const;
  virtual bool allows_logon() { return true; }
  // Some hundred records, in order of oid: the first of those behind `after`, without device-local
  // times, ink and residue. None: there are no more.
  virtual Result<std::vector<AppointmentRecord>> records_after(std::int32_t after) = 0;
  virtual Result<std::optional<AppointmentRecord>> fetch(std::int32_t oid) { return load(oid); }
  // The stored record; nothing, with the problem, when there is none as well.
  std::optional<AppointmentRecord> existing(std::int32_t oid);
  virtual bool exception_readable() const { return true; }
  virtual bool takes_ink() const { return true; }
  virtual AllDayEnd all_day_end() const { return AllDayEnd::on_last_day; }
  // A pattern was still there when its item went.
  virtual void note_late_pattern() { assert(!"a pattern goes before its item"); }
  // Whether restore() works here. It puts a record back under the number that it had.
  virtual bool restores() const { return false; }
  virtual bool restore(const AppointmentRecord&) { return false; }
  std::unique_ptr<AppointmentState> state_of(std::int32_t oid);  // null: see Appointment::state
  // Keeps the reason for a failure of the port's objects; false.
  bool refuse(std::string reason) { return fail(std::move(reason)), false; }
  // Another number whenever something was changed or forgotten through this object: what was read
  // before, and pointers to zones, hold no longer.
  std::uint64_t state() const { return state_; }
  DeviceTime& time() { return time_; }
  void log_on(const void* application, StoreListener* listener, bool posts);
  void log_off(const void* application);
  void enable_notifications(const void* application);
  // Applications of the first kind are told of changes unless a generation must be asked to.
  void set_posts_unasked(bool posts) { posts_unasked_ = posts; }
  bool posts_unasked() const { return posts_unasked_; }

 protected:
  void note_change(StoreChange change, bool remote);
  virtual bool in_transaction() const = 0;
  void next_state() { ++state_; }
  void fail(std::string reason) { problem_ = std::move(reason); }
  bool simplify(AppointmentRecord& record);

  DeviceTime time_;
  std::string problem_;

 private:
  struct Session {
    StoreListener* listener;
    bool posts;
  };
  std::map<const void*, Session> sessions_;
  std::map<std::string, Zone, std::less<>> met_zones_;  // of a store that keeps none
  bool posts_unasked_ = true;
  unsigned pending_ = 0;  // one bit for each notification
  std::uint64_t state_ = 0;
  std::function<void()> wake_;
  Transport send_, beam_;
};

}  // namespace orvello
