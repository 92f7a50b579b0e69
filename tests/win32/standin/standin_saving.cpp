// What an appointment's methods do to the store.
#include <algorithm>

#include "store/field_changes.h"
#include "store/record_rules.h"
#include "tests/win32/standin/standin_appointment.h"

namespace orvello::test {
namespace {

using Field = AppointmentField;

// What one occurrence may have of its own; the rest is its series'.
constexpr AppointmentFieldSet kOwnOfOccurrences{
    Field::subject,    Field::location, Field::body,         Field::ink,
    Field::start,      Field::end,      Field::reminder_set, Field::reminder_minutes,
    Field::busy_status};

AppointmentException& exception_at(AppointmentRecord& series, LocalSeconds original) {
  for (AppointmentException& one : series.exceptions)
    if (one.original_start == original) return one;
  AppointmentException fresh;
  fresh.original_start = original;
  fresh.fields = series.fields;
  series.exceptions.push_back(std::move(fresh));
  return series.exceptions.back();
}

}  // namespace

RecurrencePattern* StandinAppointment::pattern(bool make) {
  if (pattern_) return &*pattern_;
  const AppointmentRecord* record = pattern_cleared_ ? nullptr : stored();
  if (record && record->pattern) {
    pattern_ = record->pattern;
    if (record->fields.all_day && server().all_day_end() == AllDayEnd::next_midnight) {
      pattern_->end_time = 0;
      ++pattern_->duration;
    }
  } else if (make && shown()) {
    RecurrencePattern fresh;
    const CalendarDate start = date(Field::start);
    fresh.pattern_start_date = to_calendar_date(whole_day(start));
    fresh.start_time = time_of_day(start);
    fresh.end_time = time_of_day(date(Field::end));
    fresh.duration = minutes();
    pattern_ = fresh;
  }
  return pattern_ ? &*pattern_ : nullptr;
}

HRESULT StandinAppointment::clear_pattern() {
  if (occurrence_ || !shown()) return E_FAIL;
  pattern_.reset();
  pattern_changed_ = false;
  pattern_cleared_ = true;
  return S_OK;
}

// Another recurrence than the stored one lets its exceptions go.
bool StandinAppointment::apply_pattern(AppointmentRecord& record) const {
  if (pattern_cleared_) {
    record.pattern.reset();
    record.exceptions.clear();
  }
  if (!pattern_changed_) return true;
  AppointmentRecord fresh;
  fresh.fields.all_day = record.fields.all_day;
  fresh.pattern = *pattern_;
  if (!complete_record(fresh, server().time())) return false;
  if (record.pattern != fresh.pattern) record.exceptions.clear();
  record.pattern = fresh.pattern;
  record.start = fresh.start;
  record.end = fresh.end;
  return true;
}

bool StandinAppointment::apply(AppointmentRecord& record) const {
  if (changed_) {
    take_fields(record.fields, *changed_, is_new() ? AppointmentFieldSet::all() : written_);
    for (AppointmentException& one : record.exceptions) {
      one.fields.categories = record.fields.categories;
      one.fields.sensitivity = record.fields.sensitivity;
      one.fields.all_day = record.fields.all_day;
    }
    const bool times = is_new() || written_.has(Field::start) || written_.has(Field::end) ||
                       written_.has(Field::all_day);
    // A series has the times of its recurrence.
    if (times && !recurs()) {
      const CalendarDate end = changed_->all_day
                                   ? own_end(changed_->start, changed_->end, server().all_day_end())
                                   : changed_->end;
      record.start = to_seconds(changed_->start);
      record.end = to_seconds(end);
    }
  }
  if (recipients_) record.recipients = *recipients_;
  return apply_pattern(record);
}

std::optional<AppointmentRecord> StandinAppointment::record() const {
  if (!is_new() && !stored()) return std::nullopt;
  AppointmentRecord record = is_new() ? AppointmentRecord() : *stored();
  if (!apply(record)) return std::nullopt;
  return record;
}

HRESULT StandinAppointment::save() {
  if (occurrence_) return save_occurrence();
  const auto now = record();
  const std::int32_t oid = now ? server().put(*now) : 0;
  if (oid == 0) return E_FAIL;
  oid_ = oid;
  changed_.reset();
  written_ = {};
  pattern_.reset();
  pattern_changed_ = pattern_cleared_ = false;
  recipients_.reset();
  return S_OK;
}

HRESULT StandinAppointment::save_occurrence() {
  if (!stored() || !stored()->recurring()) return E_FAIL;
  const bool own = kOwnOfOccurrences.has(Field::subject) && changed_ && [&] {
    for (int i = 0; i < kAppointmentFields; ++i)
      if (written_.has(static_cast<Field>(i)) && kOwnOfOccurrences.has(static_cast<Field>(i)))
        return true;
    return false;
  }();
  if (!own) return S_OK;
  AppointmentRecord series = *stored();
  AppointmentException& one = exception_at(series, occurrence_->original);
  one.deleted = false;
  AppointmentFieldSet named = kOwnOfOccurrences;
  take_fields(one.fields, *changed_, named);
  one.start = to_seconds(changed_->start);
  one.end = to_seconds(one.fields.all_day
                           ? own_end(changed_->start, changed_->end, server().all_day_end())
                           : changed_->end);
  const StandinOccurrence now{occurrence_->original, one.start, one.end};
  if (server().put(series) == 0) return E_FAIL;
  occurrence_ = now;
  changed_.reset();
  written_ = {};
  return S_OK;
}

HRESULT StandinAppointment::remove() {
  if (is_new() || !stored()) return E_FAIL;
  if (!occurrence_) {
    if (!server().erase(oid_)) return E_FAIL;
    removed_ = true;
    return S_OK;
  }
  AppointmentRecord series = *stored();
  AppointmentException& one = exception_at(series, occurrence_->original);
  one.deleted = true;
  if (server().put(series) == 0) return E_FAIL;
  removed_ = true;
  return S_OK;
}

// The copy is in the folder at once.
HRESULT StandinAppointment::copy(VARIANT& answer) {
  if (is_new() || !stored()) return E_FAIL;
  AppointmentRecord record = *stored();
  record.oid = 0;
  record.uid.clear();
  const std::int32_t oid = server().put(record);
  return oid != 0 ? give(answer, new StandinAppointment(oid)) : E_FAIL;
}

HRESULT StandinAppointment::send() {
  if (!recipients() || recipients()->empty()) return E_FAIL;
  server().note_sent();
  return S_OK;
}

}  // namespace orvello::test
