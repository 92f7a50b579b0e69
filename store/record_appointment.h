// Appointments over a store of records. An object remembers what was changed through it and applies
// just that to the record as it then stands, so that an item saved after one of its occurrences, or
// after another process's change, takes nothing back.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "ports/calendar_store.h"
#include "store/record_calendar_store.h"

namespace orvello {

class RecordAppointment : public Appointment {
 public:
  RecordAppointment(RecordCalendarStore& store, AppointmentRecord record);

  std::int32_t oid() const override { return record_.oid; }
  bool read(AppointmentFields& fields) const override;
  void write(const AppointmentFields& fields) override;
  bool is_recurring() const override;
  std::int32_t duration_minutes() const override;
  std::unique_ptr<StorePattern> pattern() override;
  void clear_pattern() override;
  std::optional<std::vector<StoreRecipient>> recipients() const override;
  void set_recipients(const std::vector<StoreRecipient>& recipients) override;
  std::unique_ptr<Appointment> copy() override;
  bool save() override;
  bool remove() override;
  bool send() override;

  // For its pattern: the record as it now stands, with an unsaved pattern. Read again only after a
  // change, as a series may have thousands of exceptions. Null when it is gone or cannot be read.
  std::shared_ptr<const AppointmentRecord> current() const;
  void set_pattern(const RecurrencePattern& pattern);

 private:
  bool changed() const { return fields_ || pattern_ || clears_pattern_ || recipients_; }
  // Each is false when a zone could not be read.
  bool apply(AppointmentRecord& record) const;
  bool apply_fields(AppointmentRecord& record) const;
  bool apply_pattern(AppointmentRecord& record) const;

  RecordCalendarStore& store_;
  AppointmentRecord record_;  // as last read or saved
  std::optional<AppointmentFields> fields_;
  std::optional<RecurrencePattern> pattern_;
  bool clears_pattern_ = false;
  std::optional<std::vector<StoreRecipient>> recipients_;
  mutable std::shared_ptr<const AppointmentRecord> current_;
  mutable std::uint64_t current_state_;  // the store's when `current_` was made
};

// The pattern in the device's time, where the record's zone shows it on the same days. Nothing when
// the zone could not be read.
std::optional<RecurrencePattern> device_pattern(const AppointmentRecord& record, DeviceTime& time);

}  // namespace orvello
