// Appointments over a store of records. An object remembers what was changed through it and applies
// just that to the record as it then stands, so that an item saved after one of its occurrences, or
// after another process's change, takes nothing back.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "ports/calendar_store.h"
#include "store/field_changes.h"
#include "store/record_calendar_store.h"

namespace orvello {

class RecordAppointment : public Appointment {
 public:
  RecordAppointment(RecordCalendarStore& store, AppointmentRecord record);
  // What follows in a series from one occurrence on, not saved yet: see StorePattern::following.
  static std::unique_ptr<RecordAppointment> following(RecordCalendarStore& store,
                                                      const AppointmentRecord& series,
                                                      LocalSeconds from, OccurrenceError& error);
  ~RecordAppointment() override;

  std::int32_t oid() const override { return record_.oid; }
  bool read(AppointmentFields& fields) const override;
  AppointmentFieldSet write(const AppointmentFields& fields, AppointmentFieldSet changed) override;
  bool is_recurring() const override;
  std::int32_t duration_minutes() const override;
  std::unique_ptr<StorePattern> pattern() override;
  void clear_pattern() override;
  std::optional<std::vector<StoreRecipient>> recipients() const override;
  void set_recipients(const std::vector<StoreRecipient>& recipients) override;
  std::unique_ptr<Appointment> copy() override;
  bool save() override;
  bool remove() override;
  SendResult send() override;
  std::unique_ptr<AppointmentState> state() const override;

  // For its pattern: the record as it now stands, with an unsaved pattern. Read again only after a
  // change, as a series may have thousands of exceptions. Null when it is gone or cannot be read.
  std::shared_ptr<const AppointmentRecord> current() const;
  void set_pattern(const RecurrencePattern& pattern);
  std::optional<int> lost_changes(const RecurrencePattern& pattern) const;
  // How many of its patterns there are.
  const std::shared_ptr<int>& patterns() const { return patterns_; }

 private:
  bool changed() const { return !changes_.empty() || pattern_ || clears_pattern_ || recipients_; }
  AppointmentFields fields() const;
  // The record as the store has it now, a new one as it was made. Nothing, with the problem, where
  // it cannot be read or is not there any more.
  std::optional<AppointmentRecord> stored() const;
  // Each is false, with the reason, when a zone could not be read or the change does not fit.
  bool apply(AppointmentRecord& record) const;
  bool apply_fields(AppointmentRecord& record) const;
  bool apply_times(AppointmentRecord& record, const AppointmentFields& before) const;
  bool apply_pattern(AppointmentRecord& record, const AppointmentRecord& before) const;
  std::int32_t put(AppointmentRecord& record) const;
  std::optional<AppointmentRecord> shortened() const;

  // Where a series is to be divided when this is saved.
  struct Division {
    std::int32_t series = 0;
    LocalSeconds from;
  };

  RecordCalendarStore& store_;
  AppointmentRecord record_;  // as last read or saved
  std::optional<Division> division_;
  FieldChanges changes_;
  std::optional<RecurrencePattern> pattern_;
  bool clears_pattern_ = false;
  std::optional<std::vector<StoreRecipient>> recipients_;
  mutable std::shared_ptr<const AppointmentRecord> current_;
  mutable std::uint64_t current_state_;  // the store's when `current_` was made
  std::shared_ptr<int> patterns_ = std::make_shared<int>(0);
};

struct RecordState : AppointmentState {
  explicit RecordState(AppointmentRecord as_it_was) : record(std::move(as_it_was)) {}
  bool same_as(const AppointmentState& other) const override;
  AppointmentRecord record;
};

}  // namespace orvello
