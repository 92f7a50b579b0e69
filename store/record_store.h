// Whole-record access to a store of appointments: what import, export and the command line use
// beside the calendar-store port. User-interface thread.
//
// A read that fails says so and why; "there is none" is a value of its own. A record is answered
// whole or not at all, so that nothing is ever saved from one that was read in part.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "store/appointment_record.h"

namespace orvello {

class RecordStore {
 public:
  virtual ~RecordStore() = default;

  // Everything between begin and commit is one durable transaction; a process that dies in between
  // leaves the store as it was before `begin`. Reads see the transaction's own changes. Without
  // begin, each put or erase is a transaction of its own. Failures: see problem().
  virtual bool begin() = 0;
  virtual bool commit() = 0;
  virtual void rollback() = 0;

  // Reads between these see one state of the store, whoever writes meanwhile; they nest, also in
  // begin and commit. Reading ends as often as it began. A writer waits for it: no questions to a
  // person in between.
  virtual bool begin_read() = 0;
  virtual void end_read() = 0;

  virtual Result<std::optional<std::int32_t>> oid_of_uid(std::string_view uid) = 0;
  virtual Result<std::optional<AppointmentRecord>> load(std::int32_t oid) = 0;
  // Stores a new record (oid 0) or replaces one; returns its oid, 0 on failure.
  virtual std::int32_t put(const AppointmentRecord& record) = 0;
  virtual bool erase(std::int32_t oid) = 0;
  // Oids, in order, of appointments with an occurrence that touches the days [from, to]; all of
  // them without bounds.
  virtual Result<std::vector<std::int32_t>> oids(std::optional<Day> from_day,
                                                 std::optional<Day> to_day) = 0;

  // Zones, a record's residue and foreign components are optional: a device's own store has no
  // place for them. Who uses a store does not ask: what is put there is taken, and what is not kept
  // does not come back.
  virtual bool put_zone(const Zone& zone) = 0;  // replaces one of the same name
  virtual Result<std::optional<Zone>> zone(std::string_view name) = 0;
  // Replaces one of the same key; an empty text removes it.
  virtual bool put_foreign(const ForeignComponent& component) = 0;
  virtual Result<std::vector<ForeignComponent>> foreign() = 0;  // in order of first storing

  // Of the contacts folder. `put_contact` stores a new one (oid 0) or replaces one, and answers its
  // oid, 0 on failure; its card stays as it is, and goes when the contact is erased.
  virtual std::optional<std::vector<StoreContact>> contacts() = 0;  // nothing: failure
  virtual std::int32_t put_contact(const StoreContact& contact) = 0;
  virtual bool erase_contact(std::int32_t oid) = 0;
  // As optional as foreign components.
  virtual bool put_card(const ContactCard& card) = 0;           // replaces the contact's one
  virtual Result<std::vector<ContactCard>> card_names() = 0;    // all, without their texts
  virtual Result<std::string> card_text(std::int32_t oid) = 0;  // empty: it has none

  // Why the last call failed: a sentence that names the file at fault.
  virtual std::string problem() const = 0;
};

// Reads of one state of a store, for as long as this lives. False: the store cannot be read now.
class StoreReading {
 public:
  explicit StoreReading(RecordStore& store) : store_(store), began_(store.begin_read()) {}
  ~StoreReading() {
    if (began_) store_.end_read();
  }
  StoreReading(const StoreReading&) = delete;
  StoreReading& operator=(const StoreReading&) = delete;
  explicit operator bool() const { return began_; }

 private:
  RecordStore& store_;
  bool began_;
};

// One transaction; what is not committed when it ends is taken back, whatever ended it. False: the
// store cannot be written now.
class StoreWriting {
 public:
  explicit StoreWriting(RecordStore& store) : store_(store), open_(store.begin()) {}
  ~StoreWriting() {
    if (open_) store_.rollback();
  }
  StoreWriting(const StoreWriting&) = delete;
  StoreWriting& operator=(const StoreWriting&) = delete;
  explicit operator bool() const { return open_; }
  [[nodiscard]] bool commit() {
    const bool committed = open_ && store_.commit();
    if (committed) open_ = false;
    return committed;
  }

 private:
  RecordStore& store_;
  bool open_;
};

}  // namespace orvello
