// The recurrence of a stored appointment, and one occurrence of it.
#pragma once

#include <memory>
#include <optional>

#include "ports/calendar_store.h"
#include "store/record_appointment.h"
#include "store/series.h"

namespace orvello {

class RecordPattern : public StorePattern {
 public:
  RecordPattern(RecordCalendarStore& store, RecordAppointment& item);
  ~RecordPattern() override;
  RecordPattern(const RecordPattern&) = delete;
  RecordPattern& operator=(const RecordPattern&) = delete;

  Result<std::optional<RecurrencePattern>> fields() const override;
  Text rules() const override;
  bool set_fields(const RecurrencePattern& pattern) override;
  std::optional<int> lost_changes(const RecurrencePattern& pattern) const override;
  std::unique_ptr<Appointment> following(CalendarDate start, OccurrenceError& error) override;
  std::optional<int> exception_count() const override;
  std::optional<StoreException> exception(int index) const override;
  std::unique_ptr<Appointment> occurrence(CalendarDate start, OccurrenceError& error) override;

 private:
  std::optional<SeriesOccurrence> find(CalendarDate start, OccurrenceError& error);

  RecordCalendarStore& store_;
  RecordAppointment& item_;
  std::shared_ptr<int> patterns_;  // the item's; there even if the item is not
  // Made once for the many questions of one operation, and again when something has changed.
  std::shared_ptr<const AppointmentRecord> source_;
  std::optional<Series> series_;
};

class RecordOccurrence : public Appointment {
 public:
  RecordOccurrence(RecordCalendarStore& store, std::shared_ptr<const AppointmentRecord> series,
                   const SeriesOccurrence& occurrence);

  std::int32_t oid() const override { return series_->oid; }
  bool read(AppointmentFields& fields) const override;
  AppointmentFieldSet write(const AppointmentFields& fields, AppointmentFieldSet changed) override;
  bool is_recurring() const override { return true; }
  std::int32_t duration_minutes() const override;
  std::unique_ptr<StorePattern> pattern() override { return nullptr; }
  void clear_pattern() override {}
  std::optional<std::vector<StoreRecipient>> recipients() const override;
  void set_recipients(const std::vector<StoreRecipient>& recipients) override;
  std::unique_ptr<Appointment> copy() override;
  bool save() override;
  bool remove() override;
  SendResult send() override;
  std::unique_ptr<AppointmentState> state() const override;

 private:
  bool put_exception(bool deleted);
  bool change(const AppointmentRecord& series, AppointmentException& exception) const;
  const AppointmentException* stored_exception(const AppointmentRecord& series) const;
  const AppointmentFields& stored_fields(const AppointmentRecord& series) const;
  const std::vector<StoreRecipient>& stored_recipients(const AppointmentRecord& series) const;
  AppointmentFields fields() const;

  RecordCalendarStore& store_;
  std::shared_ptr<const AppointmentRecord> series_;
  LocalSeconds original_start_;
  AppointmentFields shown_;  // as the store had it
  FieldChanges changes_;
  std::optional<std::vector<StoreRecipient>> recipients_;  // those to be saved
};

}  // namespace orvello
