#include "store/record_pattern.h"

#include <algorithm>
#include <cmath>

namespace orvello {

std::optional<RecurrencePattern> RecordPattern::fields() const {
  const auto record = item_.current();
  if (!record || !record->pattern) return std::nullopt;
  return device_pattern(*record, store_.time());
}

bool RecordPattern::set_fields(const RecurrencePattern& pattern) {
  item_.set_pattern(pattern);
  return true;
}

std::optional<int> RecordPattern::exception_count() const {
  const auto record = item_.current();
  if (!record) return std::nullopt;
  return static_cast<int>(record->exceptions.size());
}

std::optional<StoreException> RecordPattern::exception(int index) const {
  const auto record = item_.current();
  if (!record || !store_.exception_readable() || index < 1 ||
      index > static_cast<int>(record->exceptions.size()))
    return std::nullopt;
  const auto& stored = record->exceptions[static_cast<std::size_t>(index - 1)];
  const auto zone = store_.time().zone(record->zone);
  if (!zone) return std::nullopt;
  StoreException exception;
  exception.original_start = to_calendar_date(store_.time().shown(stored.original_start, *zone));
  exception.deleted = stored.deleted;
  if (!stored.deleted) exception.start = stored.fields.start;
  return exception;
}

std::unique_ptr<Appointment> RecordPattern::occurrence(CalendarDate start, OccurrenceError& error) {
  error = OccurrenceError::unreadable;
  const auto record = item_.current();
  if (!record) return nullptr;
  error = OccurrenceError::invalid_argument;
  if (!record->recurring() || !std::isfinite(start) || start >= kNoDate || start < kFirstDay)
    return nullptr;
  error = OccurrenceError::unreadable;
  if (source_ != record) {
    series_ = make_series(*record, store_.time());
    if (!series_) return nullptr;
    source_ = record;
  }
  error = OccurrenceError::not_found;
  const auto found = occurrence_at(*series_, to_seconds(start), store_.time());
  if (!found) return nullptr;
  error = OccurrenceError::none;
  return std::make_unique<RecordOccurrence>(store_, record, *found);
}

RecordOccurrence::RecordOccurrence(RecordCalendarStore& store,
                                   std::shared_ptr<const AppointmentRecord> series,
                                   const SeriesOccurrence& occurrence)
    : store_(store),
      series_(std::move(series)),
      original_start_(occurrence.original_start),
      shown_start_(to_calendar_date(occurrence.start)),
      shown_end_(to_calendar_date(occurrence.end)) {
  const AppointmentException* exception = stored_exception(*series_);
  fields_ = exception ? exception->fields : series_->fields;
  recipients_ = exception ? exception->recipients : series_->recipients;
  fields_.start = shown_start_;
  fields_.end = shown_end_;
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

// Makes the exception what this object says. False when a zone could not be read.
bool RecordOccurrence::change(const AppointmentRecord& series,
                              AppointmentException& exception) const {
  const AppointmentException* before = stored_exception(series);
  exception.fields = fields_;
  exception.recipients = recipients_;
  if (before) exception.residue = before->residue;
  exception.zone = fields_.all_day ? "" : before ? before->zone : series.zone;
  const bool was_all_day = before ? before->fields.all_day : series.fields.all_day;
  // Times that were not touched stay exact in their own zone.
  if (fields_.start == shown_start_ && fields_.end == shown_end_ &&
      fields_.all_day == was_all_day) {
    exception.start = before ? before->start : original_start_;
    exception.end = before ? before->end : original_start_ + (series.end - series.start);
    return true;
  }
  auto& time = store_.time();
  const auto zone = time.zone(exception.zone);
  if (!zone) return false;
  exception.start = time.in_zone(to_seconds(fields_.start), *zone);
  exception.end = time.in_zone(to_seconds(fields_.end), *zone);
  return true;
}

bool RecordOccurrence::put_exception(bool deleted) {
  std::shared_ptr<AppointmentRecord> saved;
  const bool done = store_.all_or_nothing([&] {
    auto series = store_.existing(series_->oid);
    if (!series || !series->recurring()) return false;
    AppointmentException exception;
    exception.deleted = deleted;
    exception.original_start = original_start_;
    if (!deleted && !change(*series, exception)) return false;
    auto& list = series->exceptions;
    const auto found = std::find_if(list.begin(), list.end(), [&](const auto& other) {
      return other.original_start == original_start_;
    });
    if (found == list.end())
      list.push_back(std::move(exception));
    else
      *found = std::move(exception);
    series->modified = store_.time().clock().utc_now();
    if (store_.put(*series) == 0) return false;
    saved = std::make_shared<AppointmentRecord>(std::move(*series));
    return true;
  });
  if (!done) return false;
  series_ = std::move(saved);
  shown_start_ = fields_.start;
  shown_end_ = fields_.end;
  return true;
}

bool RecordOccurrence::save() { return put_exception(false); }
bool RecordOccurrence::remove() { return put_exception(true); }

bool RecordOccurrence::send() {
  AppointmentRecord record = *series_;
  record.fields = fields_;
  record.recipients = recipients_;
  return store_.send(record);
}

}  // namespace orvello
