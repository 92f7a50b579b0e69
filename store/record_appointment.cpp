#include "store/record_appointment.h"

#include "calendar/shifted_pattern.h"
#include "store/record_pattern.h"
#include "store/series_times.h"

namespace orvello {

using Field = AppointmentField;

bool device_pattern(const AppointmentRecord& record, DeviceTime& time,
                    std::optional<RecurrencePattern>& pattern) {
  pattern = record.pattern;
  const auto zone = time.zone(record.zone);
  if (!zone) return false;
  if (pattern && *zone && !record.fields.all_day)
    pattern = shifted_pattern(*pattern, time.shown(record.start, *zone) - record.start);
  return true;
}

RecordAppointment::RecordAppointment(RecordCalendarStore& store, AppointmentRecord record)
    : store_(store),
      record_(std::move(record)),
      current_(std::make_shared<AppointmentRecord>(record_)),
      current_state_(store.state()) {}

RecordAppointment::~RecordAppointment() {
  if (*patterns_ != 0) store_.note_late_pattern();
}

// As the store has it, with what waits to be saved.
AppointmentFields RecordAppointment::fields() const { return changes_.applied_to(record_.fields); }

bool RecordAppointment::read(AppointmentFields& fields) const {
  fields = this->fields();
  if (fields.all_day) fields.end = stored_end(fields.end, store_.all_day_end());
  return true;
}

AppointmentFieldSet RecordAppointment::write(const AppointmentFields& fields,
                                             AppointmentFieldSet changed) {
  current_.reset();
  return changes_.write(fields, changed, record_.fields, store_,
                        [&]() -> std::optional<AppointmentFields> {
                          if (record_.oid == 0) return record_.fields;
                          const auto stored = store_.existing(record_.oid);
                          return stored ? std::optional(stored->fields) : std::nullopt;
                        });
}

bool RecordAppointment::is_recurring() const {
  return pattern_ || (record_.recurring() && !clears_pattern_);
}

std::int32_t RecordAppointment::duration_minutes() const {
  const AppointmentFields fields = this->fields();
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
  start.fields = fields();
  start.recipients = *recipients();
  return std::make_unique<RecordAppointment>(store_, std::move(start));
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
  if (changes_.empty()) return true;
  const AppointmentFields before = record.fields;
  if (!changes_.notes_still_fit(record_.fields, before))
    return store_.refuse("The notes were changed elsewhere meanwhile.");
  record.fields = changes_.applied_to(before);
  // Changed occurrences that were filed like their series stay so.
  for (AppointmentException& one : record.exceptions)
    if (one.fields.categories == before.categories)
      one.fields.categories = record.fields.categories;
  return apply_times(record, before);
}

// Times that were not touched stay exact in their own zone.
bool RecordAppointment::apply_times(AppointmentRecord& record,
                                    const AppointmentFields& before) const {
  if (record.oid == 0) return true;
  const bool leaves_zone = record.fields.all_day && !record.zone.empty();
  const AppointmentFields now = record.fields;
  record.fields.start = before.start;
  record.fields.end = before.end;
  if (!leaves_zone && !changes_.moves(record_.fields)) return true;
  auto& time = store_.time();
  if (leaves_zone) record.zone.clear();
  const auto zone = time.zone(record.zone);
  if (!zone) return false;
  const auto own = [&](Field field, CalendarDate device, CalendarDate shown, LocalSeconds kept) {
    if (!leaves_zone && (!changes_.has(field) || device == shown)) return kept;
    return time.in_zone(to_seconds(device), *zone);
  };
  const auto start = own(Field::start, now.start, record_.fields.start, record.start);
  const auto end = own(Field::end, now.end, record_.fields.end, record.end);
  if (!record.recurring() || clears_pattern_) {
    record.start = start;
    record.end = end;
    return true;
  }
  // A new pattern says its times itself.
  return pattern_ || move_series(record, start, end) ||
         store_.refuse("The recurrence of this series does not allow other times.");
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
  if (record.pattern) {
    std::optional<RecurrencePattern> known;
    if (!device_pattern(record, time, known)) return false;
    if (known == *pattern_) return true;
  }
  const auto zone = time.zone(record.fields.all_day ? "" : record.zone);
  if (!zone) return false;
  record.exceptions.clear();
  record.rules.clear();
  const auto start = pattern_start(*pattern_);
  const auto own = shifted_pattern(*pattern_, time.in_zone(start, *zone) - start);
  if (!*zone || !own) record.zone.clear();
  record.pattern = own.value_or(*pattern_);
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
  changes_.clear();
  pattern_.reset();
  clears_pattern_ = false;
  recipients_.reset();
  current_.reset();
  return true;
}

bool RecordAppointment::remove() { return record_.oid != 0 && store_.erase(record_.oid); }

SendResult RecordAppointment::send() {
  AppointmentRecord record = record_;
  return apply(record) ? store_.send(record) : SendResult::failed;
}

std::unique_ptr<AppointmentState> RecordAppointment::state() const {
  return store_.state_of(record_.oid);
}

bool RecordState::same_as(const AppointmentState& other) const {
  const auto* state = dynamic_cast<const RecordState*>(&other);
  return state && state->record.oid == record.oid;
}

}  // namespace orvello
