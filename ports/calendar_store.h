// The device's personal-information store: appointments with recurrence patterns, exceptions and
// recipients, contacts, the folders' category texts, change notifications. User-interface thread
// only. Objects are released by destroying them; all of an application object's objects go before
// it does. Dates are calendar dates in the device's local time.
//
// Every read may fail, and a failed one is never answered as if there were nothing: an optional
// without a value is a failure where it says so, and a collection, which also answers nothing at
// its end, tells the two apart by failed(). Why is told by StoreApplication::problem().
//
// A store may be objects that are fetched one by one and asked for each property: it reads what is
// named and nothing else, and it can be told to stop.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "base/result.h"
#include "base/text.h"
#include "calendar/calendar_date.h"
#include "calendar/recurrence_pattern.h"
#include "ports/appointment_fields.h"

namespace orvello {

inline constexpr int kFolderCalendar = 9;
inline constexpr int kFolderContacts = 10;
inline constexpr int kFolderTasks = 13;
inline constexpr int kFolderInfrared = 102;

// What lists and grids read of an appointment. One is shared by all occurrences of a series that
// are not exceptions. What StoreItems::want() did not name may be as here.
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

// unreadable: the store failed, and there may well be such an occurrence.
enum class OccurrenceError { none, not_found, invalid_argument, unreadable };

// An exception of a series: an occurrence that was deleted, or changed into an appointment.
struct StoreException {
  CalendarDate original_start = 0;
  bool deleted = false;
  CalendarDate start = kNoDate;  // of the changed appointment
};

// The recurrence of an item, as the device's local time shows it. Goes before its item.
class StorePattern {
 public:
  virtual ~StorePattern() = default;
  // Nothing: no pattern holds the rule, or none does in the device's time (kept in another zone, it
  // may fall on other weekdays here, or on the last days of months). Occurrences and exceptions
  // work all the same, and the times can be changed by Appointment::write.
  virtual Result<std::optional<RecurrencePattern>> fields() const = 0;
  // Where fields() answers nothing: the recurrence lines as RFC 5545 has them ("RRULE:...", one a
  // line), in the item's own time. Empty where there are none to give.
  virtual Text rules() const = 0;
  // Takes effect when the item is saved. Exceptions of days that are occurrences of the new pattern
  // stay, at another time of day too: one that was deleted stays so, one that was changed keeps its
  // change. The others go. The same pattern again changes nothing.
  virtual bool set_fields(const RecurrencePattern& pattern) = 0;
  // How many changed occurrences set_fields(pattern) would let go. Nothing: failure.
  virtual std::optional<int> lost_changes(const RecurrencePattern& pattern) const = 0;
  // The occurrence that starts at this moment and all that follow, as an item of its own that is
  // not saved yet: with their exceptions, recipients and everything else of the series. Saving it
  // ends the series before that moment, in the same transaction, and removing it does just that; a
  // series that would keep nothing is then replaced, or removed. What happened to the series
  // meanwhile is kept; neither is done, with a problem(), where its occurrence is there no longer.
  // Null with OccurrenceError::none: this store, or this recurrence, cannot be divided so.
  virtual std::unique_ptr<Appointment> following(CalendarDate start, OccurrenceError& error) = 0;
  virtual std::optional<int> exception_count() const = 0;                // nothing: failure
  virtual std::optional<StoreException> exception(int index) const = 0;  // from 1; nothing: failure
  // The occurrence that starts at this moment (an exception: at its changed start), else the only
  // one that starts on that day; among several none is meant.
  virtual std::unique_ptr<Appointment> occurrence(CalendarDate start, OccurrenceError& error) = 0;
};

// An item as it is at one moment: fields, pattern, exceptions, recipients, its id and what else the
// store keeps of it. For StoreApplication::restore; may outlive every other object of the store.
class AppointmentState {
 public:
  virtual ~AppointmentState() = default;
  // Whether the other one is the same item in the same state, but for when it was changed last.
  virtual bool same_as(const AppointmentState& other) const = 0;
};

enum class SendResult {
  sent,
  no_recipients,  // nobody to send it to
  no_way,         // this device has no way to send anything
  failed,         // it was tried; see StoreApplication::problem()
};

class Appointment {
 public:
  virtual ~Appointment() = default;
  virtual std::int32_t oid() const = 0;
  // Fills `fields`; those that cannot be read keep the value they had.
  virtual bool read(AppointmentFields& fields) const = 0;
  // Takes the fields that are named in `changed`, until `save` writes them; no other is written, so
  // that what somebody else changed meanwhile stays. Answers those that the store did not take; the
  // others are taken all the same.
  //
  // Ink and body are written together or not at all. Whoever names `ink` gives its plain text in
  // `body`, so that bubbles, searches and exports never show what the pane does not. Ink that is
  // empty leaves the text alone as the notes, and an item without ink opens its text. Not taken is
  // ink of more than kMostInk bytes; ink that would replace other ink than read() has shown, as
  // nobody has seen that; and `body` alone where there is ink. So a block that the program cannot
  // make out is kept: it names neither.
  //
  // Start and end of a series move all of it: `save` fails, and says why, where its recurrence
  // would then be another one.
  [[nodiscard]] virtual AppointmentFieldSet write(const AppointmentFields& fields,
                                                  AppointmentFieldSet changed) = 0;
  virtual bool is_recurring() const = 0;
  virtual std::int32_t duration_minutes() const = 0;
  virtual std::unique_ptr<StorePattern> pattern() = 0;  // null: cannot be read; makes one if absent
  virtual void clear_pattern() = 0;
  virtual std::optional<std::vector<StoreRecipient>> recipients() const = 0;  // nothing: failure
  virtual void set_recipients(const std::vector<StoreRecipient>& recipients) = 0;
  virtual std::unique_ptr<Appointment> copy() = 0;  // unsaved, with no id and no recurrence
  virtual bool save() = 0;        // one durable transaction; an occurrence becomes an exception
  virtual bool remove() = 0;      // likewise; of an occurrence: that one only
  virtual SendResult send() = 0;  // as a meeting request
  // The item as the store has it now, of an occurrence its whole series. Null: it cannot be read,
  // or this store can give none (and no problem()).
  virtual std::unique_ptr<AppointmentState> state() const = 0;
};
inline constexpr std::size_t kMostInk = 20480;

// A folder's items. Restriction texts are the store's query language: comparisons of [Start] and
// [End] with <N joined by AND; bounds are whole days. A text that cannot be read selects nothing,
// an empty one everything. Items come one after the other; nobody asks how many there are. Prefer
// each_item() below, whose answer cannot be overlooked.
class StoreItems {
 public:
  virtual ~StoreItems() = default;
  virtual void set_include_recurrences(bool include) = 0;
  virtual void sort(TextView property, bool descending) = 0;  // "[Start]"
  // The fields that summaries must hold, `body` for has_notes; everything unless told. Start, end,
  // the oid, whether the item recurs and whether it is all-day are always there.
  virtual void want(AppointmentFieldSet fields) = 0;
  // Sorting and restricting may have to fetch everything first: `stop` is asked now and then, and
  // once it answers true the call answers nothing. A restricted collection keeps all these.
  virtual void stop_when(std::function<bool()> stop) = 0;
  virtual std::unique_ptr<StoreItems> restrict_to(TextView restriction) = 0;  // null: failure
  virtual std::optional<StoreItem> find(TextView restriction) = 0;
  virtual std::optional<StoreItem> find_next() = 0;
  // Whether what the last call answered may lack something, since a read broke off or was stopped.
  // A collection that answered nothing and has not failed holds nothing.
  virtual bool failed() const = 0;
  virtual bool given_up() const = 0;  // it was stopped
  virtual AllDayEnd all_day_end() const = 0;
};

// Calls visit(item) for each item that the restriction selects, in the collection's order, until
// visit answers false (it may also answer nothing). False when a read broke off or was stopped, so
// that items may be missing. All-day items end at 23:59 of their last day, whatever the platform's
// form.
template <typename Visit>
[[nodiscard]] bool each_item(StoreItems& items, TextView restriction, Visit visit) {
  const AllDayEnd form = items.all_day_end();
  for (auto item = items.find(restriction); item; item = items.find_next()) {
    if (form != AllDayEnd::on_last_day && item->summary && item->summary->all_day)
      item->end = own_end(item->start, item->end, form);
    if constexpr (std::is_void_v<std::invoke_result_t<Visit, StoreItem&>>)
      visit(*item);
    else if (!visit(*item))
      return true;
  }
  return !items.failed();
}

// The same for all of a collection that restrict_to() answered; null is a failure.
template <typename Visit>
[[nodiscard]] bool each_item(StoreItems* items, Visit visit) {
  return items && each_item(*items, TextView(), visit);
}

// What a search looks in: the texts of an appointment, of a series, or of a changed occurrence.
struct StoreTexts {
  // A series stands at the first of its occurrences that has not ended at the moment asked about,
  // else at its last one; without any it has no dates. All-day items end at 23:59 of their last
  // day, whatever the platform's form.
  StoreItem item;
  bool changed_occurrence = false;  // of the series that came before it
  Text body;
  std::vector<StoreRecipient> recipients;
};

class StoreFolder {
 public:
  virtual ~StoreFolder() = default;
  virtual std::unique_ptr<StoreItems> items() = 0;  // a fresh collection each time
  // Some hundred of the calendar's appointments, in the order of their oids: the first of those
  // behind `after`, of a series with its changed occurrences. Answers the last one's oid, from
  // which to go on, or 0 where there was none any more. Nothing: failure.
  virtual std::optional<std::int32_t> each_text(std::int32_t after, CalendarDate now,
                                                const std::function<void(StoreTexts&)>& visit) = 0;
  // Of the contacts folder, in no order that a person would know: see sorted_contacts(). Nothing:
  // failure.
  virtual std::optional<std::vector<StoreContact>> contacts() = 0;
  // The labels in use in this folder, comma-separated. Nothing: failure.
  virtual std::optional<Text> category_text() = 0;
  // Both local and remote changes are posted from now on; not every generation does so unasked.
  virtual bool enable_notifications() = 0;
};

// Told of changes; on the user-interface thread, from its message loop.
class StoreListener {
 public:
  virtual ~StoreListener() = default;
  virtual void store_changed(std::uint32_t notification) = 0;  // kItem... of messages.h
};

class StoreApplication {
 public:
  virtual ~StoreApplication() = default;
  virtual bool logon(StoreListener* listener) = 0;
  virtual void logoff() = 0;
  virtual std::unique_ptr<StoreFolder> default_folder(int folder) = 0;  // null: failure
  // Null: there is none (and no problem()), or failure.
  virtual std::unique_ptr<Appointment> item_from_oid(std::int32_t oid) = 0;
  virtual std::unique_ptr<Appointment> create_appointment() = 0;
  virtual bool beam(Appointment& appointment) = 0;
  // Everything that `work` saves and removes is one durable transaction, taken back when it answers
  // false or the store fails. False in both cases.
  virtual bool all_or_nothing(const std::function<bool()>& work) = 0;
  // Makes the item what it was, under its old id, whether it has been changed or removed since: one
  // durable transaction. Whatever else happened to the item is lost. False too for the state of
  // another kind of store.
  virtual bool restore(const AppointmentState& state) = 0;
  virtual AllDayEnd all_day_end() const = 0;  // of the items read and written here
  // Why the last call failed, as a sentence that names the file at fault; empty when unknown.
  virtual Text problem() const = 0;
  // Whether it failed because another program holds the store, so that the same may work soon.
  virtual bool busy() const = 0;
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
