#include "store/record_pattern.h"

#include <algorithm>
#include <cmath>

namespace orvello {

std::optional<RecurrencePattern> RecordPattern::fields() const {
  const AppointmentRecord record = item_.current();
  if (!record.pattern) return std::nullopt;
  return device_pattern(record, store_.time());
}

bool RecordPattern::set_fields(const RecurrencePattern& pattern) {
  item_.set_pattern(pattern);
  return true;
}

int RecordPattern::exception_count() const {
  return static_cast<int>(item_.current().exceptions.size());
}

std::optional<StoreException> RecordPattern::exception(int index) const {
  const AppointmentRecord record = item_.current();
  if (!store_.exception_readable() || index < 1 ||
      index > static_cast<int>(record.exceptions.size()))
    return std::nullopt;
  const auto& stored = record.exceptions[static_cast<std::size_t>(index - 1)];
  auto& time = store_.time();
  StoreException exception;
  exception.original_start =
      to_calendar_date(time.shown(stored.original_start, time.zone(record.zone)));
  exception.deleted = stored.deleted;
  if (!stored.deleted) exception.start = stored.fields.start;
  return exception;
}

std::unique_ptr<Appointment> RecordPattern::occurrence(CalendarDate start, OccurrenceError& error) {
  AppointmentRecord record = item_.current();
  error = OccurrenceError::invalid_argument;
  if (!record.recurring() || !std::isfinite(start) || start >= kNoDate || start < kFirstDay)
    return nullptr;
  error = OccurrenceError::not_found;
  auto& time = store_.time();
  const auto found = occurrence_at(make_series(record, time), to_seconds(start), time);
  if (!found) return nullptr;
  error = OccurrenceError::none;
  return std::make_unique<RecordOccurrence>(store_, std::move(record), *found);
}

RecordOccurrence::RecordOccurrence(RecordCalendarStore& store, AppointmentRecord series,
                                   const SeriesOccurrence& occurrence)
    : store_(store), series_(std::move(series)), original_start_(occurrence.original_start) {
  const AppointmentException* exception = stored_exception(series_);
  fields_ = exception ? exception->fields : series_.fields;
  recipients_ = exception ? exception->recipients : series_.recipients;
  fields_.start = to_calendar_date(occurrence.start);
  fields_.end = to_calendar_date(occurrence.end);
}

bool RecordOccurrence::read(AppointmentFields& fields) const {
  fields = fields_;
  return true;
}

std::int32_t RecordOccurrence::duration_minutes() const {
  return static_cast<std::int32_t>((to_seconds(fields_.end) - to_seconds(fields_.start)) / 60);
}

void RecordOccurrence::set_recipients(const std::vector<StoreRecipient>& recipients) {
  recipients_ = recipients;
}

std::unique_ptr<Appointment> RecordOccurrence::copy() {
  auto twin = std::make_unique<RecordAppointment>(store_, AppointmentRecord());
  twin->write(fields_);
  twin->set_recipients(recipients_);
  return twin;
}

const AppointmentException* RecordOccurrence::stored_exception(
    const AppointmentRecord& series) const {
  for (const AppointmentException& exception : series.exceptions)
    if (exception.original_start == original_start_ && !exception.deleted) return &exception;
  return nullptr;
}

bool RecordOccurrence::put_exception(AppointmentException exception) {
  auto series = store_.fetch(series_.oid);
  if (!series || !series->recurring()) return false;
  exception.original_start = original_start_;
  auto& list = series->exceptions;
  const auto found = std::find_if(list.begin(), list.end(), [&](const auto& other) {
    return other.original_start == original_start_;
  });
  if (found == list.end()) {
    list.push_back(std::move(exception));
  } else {
    if (!exception.deleted) exception.residue = found->residue;
    *found = std::move(exception);
  }
  series->modified = store_.time().clock().utc_now();
  if (store_.put(*series) == 0) return false;
  series_ = std::move(*series);
  return true;
}

bool RecordOccurrence::save() {
  auto& time = store_.time();
  AppointmentException exception;
  exception.fields = fields_;
  exception.recipients = recipients_;
  const AppointmentException* before = stored_exception(series_);
  exception.zone = fields_.all_day ? "" : before ? before->zone : series_.zone;
  const Zone* zone = time.zone(exception.zone);
  exception.start = time.in_zone(to_seconds(fields_.start), zone);
  exception.end = time.in_zone(to_seconds(fields_.end), zone);
  return put_exception(std::move(exception));
}

bool RecordOccurrence::remove() {
  AppointmentException exception;
  exception.deleted = true;
  return put_exception(std::move(exception));
}

bool RecordOccurrence::send() {
  AppointmentRecord record = series_;
  record.fields = fields_;
  record.recipients = recipients_;
  return store_.send(record);
}

}  // namespace orvello
