#include "store/record_appointment.h"

#include <cmath>

#include "calendar/rule_days.h"
#include "store/record_pattern.h"

namespace orvello {
namespace {

// Moves a pattern's times by a difference; its days stay.
void shift_times(RecurrencePattern& pattern, std::int64_t seconds) {
  const auto shifted = [&](CalendarDate time) {
    return to_calendar_date(LocalSeconds(second_of_day(to_seconds(time) + seconds)));
  };
  pattern.start_time = shifted(pattern.start_time);
  pattern.end_time = shifted(pattern.end_time);
}

bool same_day(LocalSeconds a, LocalSeconds b) { return day_of(a) == day_of(b); }

}  // namespace

std::optional<RecurrencePattern> device_pattern(const AppointmentRecord& record, DeviceTime& time) {
  RecurrencePattern pattern = *record.pattern;
  const auto zone = time.zone(record.zone);
  if (!zone) return std::nullopt;
  const auto shown = time.shown(record.start, *zone);
  if (!record.fields.all_day && same_day(shown, record.start))
    shift_times(pattern, shown - record.start);
  return pattern;
}

RecordAppointment::RecordAppointment(RecordCalendarStore& store, AppointmentRecord record)
    : store_(store),
      record_(std::move(record)),
      current_(std::make_shared<AppointmentRecord>(record_)),
      current_state_(store.state()) {}

bool RecordAppointment::read(AppointmentFields& fields) const {
  fields = fields_.value_or(record_.fields);
  return true;
}

void RecordAppointment::write(const AppointmentFields& fields) {
  fields_ = fields;
  current_.reset();
}

bool RecordAppointment::is_recurring() const {
  return pattern_ || (record_.recurring() && !clears_pattern_);
}

std::int32_t RecordAppointment::duration_minutes() const {
  const AppointmentFields& fields = fields_ ? *fields_ : record_.fields;
  return static_cast<std::int32_t>((to_seconds(fields.end) - to_seconds(fields.start)) / 60);
}

std::unique_ptr<StorePattern> RecordAppointment::pattern() {
  if (!current()) return nullptr;
  return std::make_unique<RecordPattern>(store_, *this);
}

void RecordAppointment::clear_pattern() {
  pattern_.reset();
  clears_pattern_ = true;
  current_.reset();
}

void RecordAppointment::set_pattern(const RecurrencePattern& pattern) {
  pattern_ = pattern;
  clears_pattern_ = false;
  current_.reset();
}

std::optional<std::vector<StoreRecipient>> RecordAppointment::recipients() const {
  return recipients_ ? *recipients_ : record_.recipients;
}

void RecordAppointment::set_recipients(const std::vector<StoreRecipient>& recipients) {
  recipients_ = recipients;
}

std::unique_ptr<Appointment> RecordAppointment::copy() {
  AppointmentRecord start;
  // What an exchanged file said stays with the copy, unless that speaks of a recurrence.
  if (!is_recurring() && !record_.recurring()) {
    start.zone = record_.zone;
    if (record_.residue.find("\nRECURRENCE-ID") == std::string::npos)
      start.residue = record_.residue;
  }
  auto twin = std::make_unique<RecordAppointment>(store_, std::move(start));
  twin->write(fields_.value_or(record_.fields));
  twin->recipients_ = recipients();
  return twin;
}

std::shared_ptr<const AppointmentRecord> RecordAppointment::current() const {
  if (current_ && current_state_ == store_.state()) return current_;
  current_.reset();
  AppointmentRecord record = record_;
  if (record.oid != 0) {
    auto stored = store_.existing(record.oid);
    if (!stored) return nullptr;
    record = std::move(*stored);
  }
  if ((pattern_ || clears_pattern_) && !(apply_fields(record) && apply_pattern(record)))
    return nullptr;
  current_ = std::make_shared<AppointmentRecord>(std::move(record));
  current_state_ = store_.state();
  return current_;
}

bool RecordAppointment::apply_fields(AppointmentRecord& record) const {
  if (!fields_) return true;
  const auto start = record.fields.start, end = record.fields.end;
  // Changed occurrences that were filed like their series stay so.
  for (AppointmentException& one : record.exceptions)
    if (one.fields.categories == record.fields.categories)
      one.fields.categories = fields_->categories;
  record.fields = *fields_;
  // A series' times are its pattern's. Times that were not touched stay exact in their own zone.
  const bool keeps_times = record.recurring() && !clears_pattern_;
  const std::string zone_name = fields_->all_day ? "" : record.zone;
  if (fields_->all_day) record.zone.clear();
  if (keeps_times || (record.oid != 0 && fields_->start == record_.fields.start &&
                      fields_->end == record_.fields.end)) {
    record.fields.start = start;
    record.fields.end = end;
    return true;
  }
  auto& time = store_.time();
  const auto zone = time.zone(zone_name);
  if (!zone) return false;
  record.start = time.in_zone(to_seconds(fields_->start), *zone);
  record.end = time.in_zone(to_seconds(fields_->end), *zone);
  return true;
}

bool RecordAppointment::apply_pattern(AppointmentRecord& record) const {
  if (clears_pattern_) {
    record.pattern.reset();
    record.rules.clear();
    record.exceptions.clear();
  }
  if (!pattern_) return true;
  auto& time = store_.time();
  // The same pattern again changes nothing: its exceptions are still its own.
  if (record.pattern && !clears_pattern_) {
    const auto known = device_pattern(record, time);
    if (!known) return false;
    if (*known == *pattern_) return true;
  }
  const auto zone = time.zone(record.fields.all_day ? "" : record.zone);
  if (!zone) return false;
  record.exceptions.clear();
  record.rules.clear();
  record.pattern = *pattern_;
  const auto start = pattern_start(*pattern_);
  const auto own = time.in_zone(start, *zone);
  if (*zone && same_day(start, own))
    shift_times(*record.pattern, own - start);
  else
    record.zone.clear();
  record.start = record.end = {};  // the pattern says
  return true;
}

bool RecordAppointment::apply(AppointmentRecord& record) const {
  if (!apply_fields(record) || !apply_pattern(record)) return false;
  if (recipients_) record.recipients = *recipients_;
  return true;
}

bool RecordAppointment::save() {
  AppointmentRecord saved;
  const bool done = store_.all_or_nothing([&] {
    AppointmentRecord record = record_;
    if (record_.oid != 0) {
      auto stored = store_.existing(record_.oid);
      if (!stored) return false;
      record = std::move(*stored);
    }
    if (record_.oid == 0 || changed()) {
      if (!apply(record)) return false;
      record.modified = store_.time().clock().utc_now();
      const std::int32_t oid = store_.put(record);
      auto stored = oid != 0 ? store_.existing(oid) : std::nullopt;
      if (!stored) return false;
      record = std::move(*stored);
    }
    saved = std::move(record);
    return true;
  });
  if (!done) return false;
  record_ = std::move(saved);
  fields_.reset();
  pattern_.reset();
  clears_pattern_ = false;
  recipients_.reset();
  current_.reset();
  return true;
}

bool RecordAppointment::remove() { return record_.oid != 0 && store_.erase(record_.oid); }

bool RecordAppointment::send() {
  AppointmentRecord record = record_;
  return apply(record) && store_.send(record);
}

}  // namespace orvello
