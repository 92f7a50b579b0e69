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
  RecordPattern(RecordCalendarStore& store, RecordAppointment& item) : store_(store), item_(item) {}

  std::optional<RecurrencePattern> fields() const override;
  bool set_fields(const RecurrencePattern& pattern) override;
  std::optional<int> exception_count() const override;
  std::optional<StoreException> exception(int index) const override;
  std::unique_ptr<Appointment> occurrence(CalendarDate start, OccurrenceError& error) override;

 private:
  RecordCalendarStore& store_;
  RecordAppointment& item_;
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
  void write(const AppointmentFields& fields) override { fields_ = fields; }
  bool is_recurring() const override { return true; }
  std::int32_t duration_minutes() const override;
  std::unique_ptr<StorePattern> pattern() override { return nullptr; }
  void clear_pattern() override {}
  std::optional<std::vector<StoreRecipient>> recipients() const override { return recipients_; }
  void set_recipients(const std::vector<StoreRecipient>& recipients) override;
  std::unique_ptr<Appointment> copy() override;
  bool save() override;
  bool remove() override;
  bool send() override;

 private:
  bool put_exception(bool deleted);
  bool change(const AppointmentRecord& series, AppointmentException& exception) const;
  const AppointmentException* stored_exception(const AppointmentRecord& series) const;

  RecordCalendarStore& store_;
  std::shared_ptr<const AppointmentRecord> series_;
  LocalSeconds original_start_;
  AppointmentFields fields_;
  CalendarDate shown_start_, shown_end_;  // as the store has them
  std::vector<StoreRecipient> recipients_;
};

}  // namespace orvello
