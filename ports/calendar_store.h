// The device's personal-information store: appointments with recurrence patterns, exceptions and
// recipients, contacts, the folders' category texts, change notifications. User-interface thread
// only. Objects are released by destroying them; all of an application object's objects go before
// it does. Dates are calendar dates in the device's local time.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "calendar/calendar_date.h"
#include "calendar/recurrence_pattern.h"

namespace orvello {

inline constexpr int kFolderCalendar = 9;
inline constexpr int kFolderContacts = 10;
inline constexpr int kFolderTasks = 13;
inline constexpr int kFolderInfrared = 102;

enum class BusyStatus : std::int32_t { free = 0, tentative = 1, busy = 2, out_of_office = 3 };

// What lists and grids read of an appointment. One is shared by all occurrences of a series that
// are not exceptions.
struct AppointmentSummary {
  std::int32_t oid = 0;
  Text subject;
  Text location;
  Text categories;
  bool all_day = false;
  bool has_notes = false;
  bool reminder_set = false;
  bool recurring = false;
  std::int32_t reminder_minutes = 0;
  std::int32_t sensitivity = 0;  // 2: private
  BusyStatus busy_status = BusyStatus::busy;
};

// One item of a collection: an appointment, or one occurrence of a recurring one.
struct StoreItem {
  CalendarDate start = kNoDate;
  CalendarDate end = kNoDate;
  std::shared_ptr<const AppointmentSummary> summary;
  // Above 0 the item stands for so many occurrences of its series on one day, the first of which
  // starts at `start` and the last of which ends at `end`: what more than some thousand rows of one
  // series would show. kUncounted: counting them would take too long.
  std::int64_t many = 0;
  static constexpr std::int64_t kUncounted = -1;
};

// Everything an appointment holds. An all-day item runs from midnight of its first day to 23:59 of
// its last one.
struct AppointmentFields {
  Text subject;
  Text location;
  Text categories;
  Text body;
  std::string body_ink;
  CalendarDate start = kNoDate;
  CalendarDate end = kNoDate;
  bool all_day = false;
  bool reminder_set = false;
  std::int32_t reminder_minutes = 15;
  std::int32_t sensitivity = 0;
  BusyStatus busy_status = BusyStatus::busy;
  friend bool operator==(const AppointmentFields&, const AppointmentFields&) = default;
};

struct StoreRecipient {
  Text name;
  Text address;
  friend bool operator==(const StoreRecipient&, const StoreRecipient&) = default;
};

struct StoreContact {
  std::int32_t oid = 0;
  Text file_as;
  Text first_name, middle_name, last_name;
  Text company;
  Text email[3];
  Text categories;
};

class Appointment;

enum class OccurrenceError { none, not_found, invalid_argument };

// An exception of a series: an occurrence that was deleted, or changed into an appointment.
struct StoreException {
  CalendarDate original_start = 0;
  bool deleted = false;
  CalendarDate start = kNoDate;  // of the changed appointment
};

// The recurrence of an item. An item whose rule no pattern holds answers `fields` with nothing; its
// occurrences and exceptions work all the same.
class StorePattern {
 public:
  virtual ~StorePattern() = default;
  virtual std::optional<RecurrencePattern> fields() const = 0;
  // Takes effect when the item is saved, and drops its exceptions then, as their dates are the old
  // pattern's.
  virtual bool set_fields(const RecurrencePattern& pattern) = 0;
  virtual int exception_count() const = 0;
  virtual std::optional<StoreException> exception(int index) const = 0;  // from 1; nothing: failure
  // The occurrence that starts at this moment (an exception: at its changed start).
  virtual std::unique_ptr<Appointment> occurrence(CalendarDate start, OccurrenceError& error) = 0;
};

class Appointment {
 public:
  virtual ~Appointment() = default;
  virtual std::int32_t oid() const = 0;
  // Fills `fields`; those that cannot be read keep the value they had.
  virtual bool read(AppointmentFields& fields) const = 0;
  virtual void write(const AppointmentFields& fields) = 0;  // kept until `save`
  virtual bool is_recurring() const = 0;
  virtual std::int32_t duration_minutes() const = 0;
  virtual std::unique_ptr<StorePattern> pattern() = 0;  // null: cannot be read; makes one if absent
  virtual void clear_pattern() = 0;
  virtual std::optional<std::vector<StoreRecipient>> recipients() const = 0;
  virtual void set_recipients(const std::vector<StoreRecipient>& recipients) = 0;
  virtual std::unique_ptr<Appointment> copy() = 0;  // unsaved, with no id and no recurrence
  virtual bool save() = 0;    // one durable transaction; an occurrence becomes an exception
  virtual bool remove() = 0;  // likewise; of an occurrence: that one only
  virtual bool send() = 0;    // as a meeting request
};

// A folder's items. Restriction texts are the store's query language: comparisons of [Start] and
// [End] with <N joined by AND; bounds are whole days. A text that cannot be read selects nothing.
class StoreItems {
 public:
  virtual ~StoreItems() = default;
  virtual void set_include_recurrences(bool include) = 0;
  virtual void sort(TextView property, bool descending) = 0;                  // "[Start]"
  virtual std::unique_ptr<StoreItems> restrict_to(TextView restriction) = 0;  // null: failure
  virtual std::optional<StoreItem> find(TextView restriction) = 0;
  virtual std::optional<StoreItem> find_next() = 0;
  virtual int count() = 0;
  virtual std::optional<StoreItem> item(int index) = 0;  // from 1
};

class StoreFolder {
 public:
  virtual ~StoreFolder() = default;
  virtual std::unique_ptr<StoreItems> items() = 0;   // a fresh collection each time
  virtual std::vector<StoreContact> contacts() = 0;  // by file_as; of the contacts folder
  virtual Text category_text() = 0;  // the labels in use in this folder, comma-separated
  // Both local and remote changes are posted from now on; not every generation does so unasked.
  virtual bool enable_notifications() = 0;
};

// Told of changes; on the user-interface thread, from its message loop.
class StoreListener {
 public:
  virtual ~StoreListener() = default;
  virtual void store_changed(std::uint32_t notification) = 0;  // 0x8100-0x8102, 0x8105-0x8107
};

class StoreApplication {
 public:
  virtual ~StoreApplication() = default;
  virtual bool logon(StoreListener* listener) = 0;
  virtual void logoff() = 0;
  virtual std::unique_ptr<StoreFolder> default_folder(int folder) = 0;  // null: failure
  virtual std::unique_ptr<Appointment> item_from_oid(std::int32_t oid) = 0;
  virtual std::unique_ptr<Appointment> create_appointment() = 0;
  virtual bool beam(Appointment& appointment) = 0;
  // Why the last call failed, as a sentence that names the file at fault; empty when unknown.
  virtual Text problem() const = 0;
};

// Reaching the store. The steps are the platform's, so that a session can be told apart from a
// store that is not installed.
class CalendarStore {
 public:
  enum class Registration { done, library_missing, entry_missing, call_failed };
  virtual ~CalendarStore() = default;
  virtual bool initialize() = 0;    // the calling thread may use the store
  virtual void uninitialize() = 0;  // counted
  // `notify`: the second kind of application object, for folder notifications.
  virtual std::unique_ptr<StoreApplication> create_application(bool notify) = 0;
  virtual Registration register_server() = 0;
};

}  // namespace orvello
