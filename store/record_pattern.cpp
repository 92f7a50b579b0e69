#include "store/record_pattern.h"

#include <algorithm>
#include <cmath>

#include "calendar/rule_text.h"
#include "store/device_pattern.h"

namespace orvello {

RecordPattern::RecordPattern(RecordCalendarStore& store, RecordAppointment& item)
    : store_(store), item_(item), patterns_(item.patterns()) {
  ++*patterns_;
}

RecordPattern::~RecordPattern() { --*patterns_; }

Result<std::optional<RecurrencePattern>> RecordPattern::fields() const {
  std::optional<RecurrencePattern> pattern;
  const auto record = item_.current();
  if (!record || !device_pattern(*record, store_.time(), pattern))
    return Result<std::optional<RecurrencePattern>>::failure(store_.problem());
  return pattern;
}

bool RecordPattern::set_fields(const RecurrencePattern& pattern) {
  item_.set_pattern(pattern);
  return true;
}

Text RecordPattern::rules() const {
  const auto record = item_.current();
  std::optional<RecurrencePattern> pattern;
  if (!record || !device_pattern(*record, store_.time(), pattern) || pattern) return {};
  return to_utf16(record->pattern ? "RRULE:" + rule_text(rule_from_pattern(*record->pattern))
                                  : record->rules);
}

std::optional<int> RecordPattern::lost_changes(const RecurrencePattern& pattern) const {
  return item_.lost_changes(pattern);
}

std::unique_ptr<Appointment> RecordPattern::following(CalendarDate start, OccurrenceError& error) {
  error = OccurrenceError::invalid_argument;
  if (item_.oid() == 0) return nullptr;  // nothing is stored yet that could end
  const auto found = find(start, error);
  if (!found) return nullptr;
  return RecordAppointment::following(store_, *source_, found->original_start, error);
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

std::optional<SeriesOccurrence> RecordPattern::find(CalendarDate start, OccurrenceError& error) {
  error = OccurrenceError::unreadable;
  const auto record = item_.current();
  if (!record) return std::nullopt;
  error = OccurrenceError::invalid_argument;
  if (!record->recurring() || !std::isfinite(start) || start >= kNoDate ||
      start < to_calendar_date(kFirstDay))
    return std::nullopt;
  error = OccurrenceError::unreadable;
  if (source_ != record) {
    series_ = make_series(*record, store_.time());
    if (!series_) return std::nullopt;
    source_ = record;
  }
  const auto found = occurrence_at(*series_, to_seconds(start), store_.time());
  error = found ? OccurrenceError::none : OccurrenceError::not_found;
  return found;
}

std::unique_ptr<Appointment> RecordPattern::occurrence(CalendarDate start, OccurrenceError& error) {
  const auto found = find(start, error);
  if (!found) return nullptr;
  return std::make_unique<RecordOccurrence>(store_, source_, *found);
}

RecordOccurrence::RecordOccurrence(RecordCalendarStore& store,
                                   std::shared_ptr<const AppointmentRecord> series,
                                   const SeriesOccurrence& occurrence)
    : store_(store),
      series_(std::move(series)),
      original_start_(occurrence.original_start),
      shown_(stored_fields(*series_)) {
  shown_.start = to_calendar_date(occurrence.start);
  shown_.end = to_calendar_date(occurrence.end);
}

// As the store has it, with what waits to be saved.
AppointmentFields RecordOccurrence::fields() const { return changes_.applied_to(shown_); }

bool RecordOccurrence::read(AppointmentFields& fields) const {
  fields = this->fields();
  if (fields.all_day) fields.end = stored_end(fields.end, store_.all_day_end());
  return true;
}

AppointmentFieldSet RecordOccurrence::write(const AppointmentFields& fields,
                                            AppointmentFieldSet changed) {
  return changes_.write(fields, changed, shown_, store_, [&]() -> std::optional<AppointmentFields> {
    const auto series = store_.existing(series_->oid);
    return series ? std::optional(stored_fields(*series)) : std::nullopt;
  });
}

std::int32_t RecordOccurrence::duration_minutes() const {
  const AppointmentFields fields = this->fields();
  return static_cast<std::int32_t>((to_seconds(fields.end) - to_seconds(fields.start)) / 60);
}

std::optional<std::vector<StoreRecipient>> RecordOccurrence::recipients() const {
  return recipients_ ? *recipients_ : stored_recipients(*series_);
}

void RecordOccurrence::set_recipients(const std::vector<StoreRecipient>& recipients) {
  recipients_ = recipients;
}

std::unique_ptr<Appointment> RecordOccurrence::copy() {
  AppointmentRecord start;
  start.fields = fields();
  start.recipients = *recipients();
  return std::make_unique<RecordAppointment>(store_, std::move(start));
}

const AppointmentFields& RecordOccurrence::stored_fields(const AppointmentRecord& series) const {
  const AppointmentException* exception = stored_exception(series);
  return exception ? exception->fields : series.fields;
}

const std::vector<StoreRecipient>& RecordOccurrence::stored_recipients(
    const AppointmentRecord& series) const {
  const AppointmentException* exception = stored_exception(series);
  return exception ? exception->recipients : series.recipients;
}

const AppointmentException* RecordOccurrence::stored_exception(
    const AppointmentRecord& series) const {
  for (const AppointmentException& exception : series.exceptions)
    if (exception.original_start == original_start_ && !exception.deleted) return &exception;
  return nullptr;
}

// Makes the exception what the store has of the occurrence, with the changes. False, with the
// reason, when a zone could not be read or a change does not fit.
bool RecordOccurrence::change(const AppointmentRecord& series,
                              AppointmentException& exception) const {
  const AppointmentException* before = stored_exception(series);
  exception.fields = stored_fields(series);
  const bool was_all_day = exception.fields.all_day;
  if (!changes_.notes_still_fit(shown_, exception.fields))
    return store_.refuse("The notes were changed elsewhere meanwhile.");
  exception.fields = changes_.applied_to(exception.fields);
  exception.recipients = recipients_ ? *recipients_ : stored_recipients(series);
  if (before) exception.residue = before->residue;
  exception.zone = exception.fields.all_day ? "" : before ? before->zone : series.zone;
  exception.start = before ? before->start : original_start_;
  exception.end = before ? before->end : original_start_ + (series.end - series.start);
  // Times that were not touched stay exact in their own zone.
  const bool turned = exception.fields.all_day != was_all_day;
  const auto now = fields();
  exception.fields.start = now.start;
  exception.fields.end = now.end;
  if (!turned && !changes_.moves(shown_)) return true;
  auto& time = store_.time();
  const auto zone = time.zone(exception.zone);
  if (!zone) return false;
  if (turned || now.start != shown_.start)
    exception.start = time.in_zone(to_seconds(now.start), *zone);
  if (turned || now.end != shown_.end) exception.end = time.in_zone(to_seconds(now.end), *zone);
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
  const auto start = fields().start, end = fields().end;
  series_ = std::move(saved);
  shown_ = stored_fields(*series_);
  shown_.start = start;
  shown_.end = end;
  changes_.clear();
  recipients_.reset();
  return true;
}

bool RecordOccurrence::save() { return put_exception(false); }
bool RecordOccurrence::remove() { return put_exception(true); }

SendResult RecordOccurrence::send() {
  AppointmentRecord record = *series_;
  record.fields = fields();
  record.recipients = *recipients();
  return store_.send(record);
}

std::unique_ptr<AppointmentState> RecordOccurrence::state() const {
  return store_.state_of(series_->oid);
}

}  // namespace orvello
