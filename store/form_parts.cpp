#include "store/form_parts.h"

#include <algorithm>
#include <iterator>

#include "calendar/rule_days.h"

namespace orvello {
namespace {

constexpr std::int64_t kFormDayMinutes = 24 * 60;
constexpr CalendarDate kFormDayEnd = (kFormDayMinutes - 1) / static_cast<double>(kFormDayMinutes);

std::int64_t minute_of(CalendarDate time) { return second_of_day(to_seconds(time)) / 60; }
CalendarDate at_minute(std::int64_t minute) {
  return to_calendar_date(LocalSeconds(floor_mod(minute, kFormDayMinutes) * 60));
}

// From the start of one occurrence to its end. The form's times say how late it ends, the pattern
// how many whole days later.
std::int64_t occurrence_minutes(const AppointmentForm& form) {
  const std::int64_t known = std::max(form.pattern.duration, 0);
  if (form.all_day)
    return std::max<std::int64_t>(1, ceil_div(known, kFormDayMinutes)) * kFormDayMinutes - 1;
  return known / kFormDayMinutes * kFormDayMinutes +
         floor_mod(minute_of(form.end_time) - minute_of(form.start_time), kFormDayMinutes);
}

CalendarDate form_start(const AppointmentForm& form) {
  return joined(whole_day(form.start_date), form.all_day ? 0 : form.start_time);
}

CalendarDate form_end(const AppointmentForm& form) {
  if (form.recurring && form.choice.scope != EditScope::occurrence)
    return to_calendar_date(to_seconds(form_start(form)) + occurrence_minutes(form) * 60);
  return joined(whole_day(form.end_date), form.all_day ? kFormDayEnd : form.end_time);
}

bool same_form_times(const AppointmentForm& form, const AppointmentForm& other) {
  return form.all_day == other.all_day &&
         to_seconds(form_start(form)) == to_seconds(form_start(other)) &&
         to_seconds(form_end(form)) == to_seconds(form_end(other));
}

bool same_recurrence(const AppointmentForm& form, const AppointmentForm& other) {
  if (form.recurring != other.recurring || form.rules != other.rules) return false;
  return !has_pattern(form) || saved_pattern(form) == saved_pattern(other);
}

}  // namespace

RecurrencePattern saved_pattern(const AppointmentForm& form) {
  RecurrencePattern pattern = form.pattern;
  const std::int64_t start = form.all_day ? 0 : minute_of(form.start_time);
  pattern.duration = static_cast<std::int32_t>(occurrence_minutes(form));
  pattern.start_time = at_minute(start);
  pattern.end_time = at_minute(start + pattern.duration);
  return pattern;
}

FormPartSet differing_parts(const AppointmentForm& form, const AppointmentForm& other) {
  const bool one = form.choice.scope == EditScope::occurrence;
  const bool by_dates = one || !has_pattern(form) || !has_pattern(other);
  FormPartSet parts;
  parts.set(FormPart::subject, form.subject != other.subject);
  parts.set(FormPart::location, form.location != other.location);
  parts.set(FormPart::times,
            by_dates ? !same_form_times(form, other) : form.all_day != other.all_day);
  parts.set(FormPart::reminder, form.reminder_set != other.reminder_set ||
                                    (!one && form.reminder_minutes != other.reminder_minutes));
  parts.set(FormPart::status, form.busy_status != other.busy_status);
  parts.set(FormPart::notes, form.body != other.body || form.ink != other.ink);
  if (one) return parts;
  parts.set(FormPart::recurrence, !same_recurrence(form, other));
  parts.set(FormPart::privacy, form.is_private != other.is_private);
  parts.set(FormPart::categories, form.categories != other.categories);
  parts.set(FormPart::attendees, form.attendees != other.attendees);
  return parts;
}

Text names_of(FormPartSet parts, Language language) {
  const std::vector<Text> all = load_list(StringId::box_parts, language);
  Text names;
  for (int part = 0; part < kFormParts; ++part)
    if (parts.has(FormPart{part}))
      names += (names.empty() ? u"" : u", ") + all[static_cast<std::size_t>(part)];
  return names;
}

AppointmentFieldSet fields_in(FormPartSet parts, const AppointmentForm& form) {
  using Field = AppointmentField;
  const bool one = form.choice.scope == EditScope::occurrence;
  AppointmentFieldSet fields;
  if (parts.has(FormPart::subject)) fields.add(Field::subject);
  if (parts.has(FormPart::location)) fields.add(Field::location);
  if (parts.has(FormPart::times)) fields.add(Field::all_day);
  const bool moved = parts.has(FormPart::times) || parts.has(FormPart::recurrence);
  if (moved && (one || !has_pattern(form))) fields.add({Field::start, Field::end});
  if (parts.has(FormPart::reminder)) fields.add(Field::reminder_set);
  if (parts.has(FormPart::reminder) && !one) fields.add(Field::reminder_minutes);
  if (parts.has(FormPart::status)) fields.add(Field::busy_status);
  if (parts.has(FormPart::privacy)) fields.add(Field::sensitivity);
  if (parts.has(FormPart::categories)) fields.add(Field::categories);
  // Longer ink is not written at all: the person was asked about it before.
  if (parts.has(FormPart::notes) && form.ink.size() <= kMostInk)
    fields.add({Field::body, Field::ink});
  return fields;
}

AppointmentFields fields_of(const AppointmentForm& form, AllDayEnd all_day_end) {
  AppointmentFields fields;
  fields.subject = cut(form.subject, kSubjectLength);
  fields.location = cut(form.location, kLocationLength);
  fields.categories = cut(form.categories, kCategoriesLength);
  fields.body = form.body;
  fields.body_ink = form.ink;
  fields.start = form_start(form);
  fields.end = form.all_day ? stored_end(form_end(form), all_day_end) : form_end(form);
  fields.all_day = form.all_day;
  fields.reminder_set = form.reminder_set;
  fields.reminder_minutes = form.reminder_minutes;
  fields.sensitivity = form.is_private ? kPrivateSensitivity : 0;
  fields.busy_status = busy_status_of(form.busy_status);
  return fields;
}

}  // namespace orvello
