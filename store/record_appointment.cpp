#include "store/record_appointment.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "store/device_pattern.h"
#include "store/record_pattern.h"
#include "store/record_rules.h"
#include "store/series_halves.h"
#include "store/series_times.h"

namespace orvello {

using Field = AppointmentField;

namespace {

// The rest of a series as a record that can be shown. Nothing, with the reason, where there is
// none; error none: no recurrence says it.
std::optional<AppointmentRecord> rest_to_show(RecordCalendarStore& store,
                                              const AppointmentRecord& series, LocalSeconds from,
                                              OccurrenceError& error) {
  error = OccurrenceError::unreadable;
  const auto zone = store.time().zone(series.zone);
  if (!zone) return std::nullopt;
  const auto known = std::find_if(series.exceptions.begin(), series.exceptions.end(),
                                  [&](const auto& one) { return one.original_start == from; });
  const bool there = known != series.exceptions.end()
                         ? !known->deleted
                         : has_instance(recurrence_of(series, *zone), from);
  if (!series.recurring() || !there) {
    error = OccurrenceError::not_found;
    store.refuse("The series was changed elsewhere meanwhile.");
    return std::nullopt;
  }
  auto rest = rest_of_series(series, from, *zone);
  if (!rest) {
    error = OccurrenceError::none;
    store.refuse("The recurrence of this series cannot be divided here.");
    return std::nullopt;
  }
  if (!complete_record(*rest, store.time()) || !localize_record(*rest, store.time()))
    return std::nullopt;
  error = OccurrenceError::none;
  return rest;
}

// Changed occurrences at their series' times go with it to whole days, to hours, or out of its
// zone.
void take_along(AppointmentRecord& record, bool was_all_day) {
  const bool now_all_day = std::exchange(record.fields.all_day, was_all_day);
  for (AppointmentException& one : record.exceptions) {
    if (!stands_with(one, record)) continue;
    one.fields.all_day = now_all_day;
    if (now_all_day) one.zone.clear();
  }
  record.fields.all_day = now_all_day;
}

// The device's times follow from an item's own, and say nothing more.
AppointmentFields without_times(AppointmentFields fields) {
  fields.start = fields.end = kNoDate;
  return fields;
}

bool same_exception(const AppointmentException& a, const AppointmentException& b) {
  const auto values = [](const AppointmentException& e) {
    return std::tie(e.original_start, e.deleted, e.start, e.end, e.zone, e.recipients, e.residue);
  };
  return values(a) == values(b) && without_times(a.fields) == without_times(b.fields);
}

bool same_record(const AppointmentRecord& a, const AppointmentRecord& b) {
  const auto values = [](const AppointmentRecord& r) {
    return std::tie(r.oid, r.uid, r.zone, r.start, r.end, r.pattern, r.rules, r.recipients,
                    r.residue);
  };
  return values(a) == values(b) && without_times(a.fields) == without_times(b.fields) &&
         std::equal(a.exceptions.begin(), a.exceptions.end(), b.exceptions.begin(),
                    b.exceptions.end(), same_exception);
}

}  // namespace

std::unique_ptr<RecordAppointment> RecordAppointment::following(RecordCalendarStore& store,
                                                                const AppointmentRecord& series,
                                                                LocalSeconds from,
                                                                OccurrenceError& error) {
  error = OccurrenceError::unreadable;
  const auto zone = store.time().zone(series.zone);
  if (!zone) return nullptr;
  error = OccurrenceError::none;
  if (!shows_before(series, from, *zone)) return std::make_unique<RecordAppointment>(store, series);
  auto rest = rest_to_show(store, series, from, error);
  if (!rest) return nullptr;
  auto item = std::make_unique<RecordAppointment>(store, std::move(*rest));
  item->division_ = Division{series.oid, from};
  return item;
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
                          const auto now = stored();
                          return now ? std::optional(now->fields) : std::nullopt;
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
  start.uid = made_up_uid();
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

std::optional<AppointmentRecord> RecordAppointment::stored() const {
  if (!division_) return record_.oid == 0 ? std::optional(record_) : store_.existing(record_.oid);
  const auto series = store_.existing(division_->series);
  OccurrenceError error = OccurrenceError::none;
  return series ? rest_to_show(store_, *series, division_->from, error) : std::nullopt;
}

std::shared_ptr<const AppointmentRecord> RecordAppointment::current() const {
  if (current_ && current_state_ == store_.state()) return current_;
  current_.reset();
  auto record = stored();
  if (!record) return nullptr;
  if (pattern_ || clears_pattern_) {
    const AppointmentRecord before = *record;
    if (!apply_fields(*record) || !apply_pattern(*record, before)) return nullptr;
  }
  current_ = std::make_shared<AppointmentRecord>(std::move(*record));
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
  if (record.oid == 0 && !division_) return true;
  const AppointmentFields now = record.fields;
  record.fields.start = before.start;
  record.fields.end = before.end;
  if (pattern_) return true;  // it says its times itself
  const bool leaves_zone = now.all_day && !record.zone.empty();
  if (!leaves_zone && now.all_day == before.all_day && !changes_.moves(record_.fields)) return true;
  if (record.recurring()) take_along(record, before.all_day);
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
  return move_series(record, start, end) ||
         store_.refuse("The recurrence of this series does not allow other times.");
}

bool RecordAppointment::apply_pattern(AppointmentRecord& record,
                                      const AppointmentRecord& before) const {
  if (clears_pattern_) {
    record.pattern.reset();
    record.rules.clear();
    record.exceptions.clear();
  }
  return !pattern_ || set_device_pattern(record, before, *pattern_, store_.time());
}

std::optional<int> RecordAppointment::lost_changes(const RecurrencePattern& pattern) const {
  auto record = stored();
  if (!record) return std::nullopt;
  const AppointmentRecord before = *record;
  if (!set_device_pattern(*record, before, pattern, store_.time())) return std::nullopt;
  return changed_occurrences(before) - changed_occurrences(*record);
}

bool RecordAppointment::apply(AppointmentRecord& record) const {
  const auto before = pattern_ ? std::make_unique<AppointmentRecord>(record) : nullptr;
  if (!apply_fields(record) || !apply_pattern(record, before ? *before : record)) return false;
  if (recipients_) record.recipients = *recipients_;
  return true;
}

// Puts the record, and ends the series that it goes on from. Its number, 0 on failure.
std::int32_t RecordAppointment::put(AppointmentRecord& record) const {
  record.modified = store_.time().clock().utc_now();
  if (!division_) return store_.put(record);
  auto series = shortened();
  if (!series) return 0;
  if (!series->recurring()) {
    record.oid = series->oid;
    record.uid = series->uid;
  } else if (store_.put(*series) == 0) {
    return 0;
  }
  return store_.put(record);
}

// The series without what follows; without a recurrence where nothing is left of it, since those
// before were deleted meanwhile.
std::optional<AppointmentRecord> RecordAppointment::shortened() const {
  auto series = store_.existing(division_->series);
  const auto zone = series ? store_.time().zone(series->zone) : std::nullopt;
  if (!zone) return std::nullopt;
  if (!shows_before(*series, division_->from, *zone)) {
    series->pattern.reset();
    series->rules.clear();
    return series;
  }
  end_series_before(*series, division_->from, *zone);
  series->modified = store_.time().clock().utc_now();
  return series;
}

bool RecordAppointment::save() {
  AppointmentRecord saved;
  const bool done = store_.all_or_nothing([&] {
    auto record = stored();
    if (!record) return false;
    if (record_.oid == 0 || changed()) {
      if (!apply(*record)) return false;
      const std::int32_t oid = put(*record);
      record = oid != 0 ? store_.existing(oid) : std::nullopt;
      if (!record) return false;
    }
    saved = std::move(*record);
    return true;
  });
  if (!done) return false;
  record_ = std::move(saved);
  division_.reset();
  changes_.clear();
  pattern_.reset();
  clears_pattern_ = false;
  recipients_.reset();
  current_.reset();
  return true;
}

bool RecordAppointment::remove() {
  if (!division_) return record_.oid != 0 && store_.erase(record_.oid);
  return store_.all_or_nothing([&] {
    const auto series = stored() ? shortened() : std::nullopt;
    if (!series) return false;
    return series->recurring() ? store_.put(*series) != 0 : store_.erase(series->oid);
  });
}

SendResult RecordAppointment::send() {
  AppointmentRecord record = record_;
  return apply(record) ? store_.send(record) : SendResult::failed;
}

std::unique_ptr<AppointmentState> RecordAppointment::state() const {
  return store_.state_of(record_.oid);
}

bool RecordState::same_as(const AppointmentState& other) const {
  const auto* state = dynamic_cast<const RecordState*>(&other);
  return state && same_record(record, state->record);
}

}  // namespace orvello
