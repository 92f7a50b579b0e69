#include "store/field_changes.h"

namespace orvello {
namespace {

using Field = AppointmentField;

void leave_notes(AppointmentFieldSet& set) {
  set.take_out(Field::ink);
  set.take_out(Field::body);
}

AppointmentFieldSet refused_notes(const AppointmentFields& given, AppointmentFieldSet named,
                                  const AppointmentFields& shown, bool takes_ink,
                                  const std::optional<AppointmentFields>& stored) {
  const bool seen = stored && stored->body_ink == shown.body_ink;
  const bool fits = given.body_ink == shown.body_ink || given.body_ink.size() <= kMostInk;
  const bool taken = seen && (named.has(Field::ink) ? takes_ink && fits : stored->body_ink.empty());
  AppointmentFieldSet refused;
  for (const Field field : {Field::ink, Field::body})
    if (!taken && named.has(field)) refused.add(field);
  return refused;
}

}  // namespace

void take_fields(AppointmentFields& target, const AppointmentFields& source,
                 AppointmentFieldSet named) {
  const auto take = [&](Field field, auto member) {
    if (named.has(field)) target.*member = source.*member;
  };
  using Fields = AppointmentFields;
  take(Field::subject, &Fields::subject);
  take(Field::location, &Fields::location);
  take(Field::categories, &Fields::categories);
  take(Field::body, &Fields::body);
  take(Field::ink, &Fields::body_ink);
  take(Field::start, &Fields::start);
  take(Field::end, &Fields::end);
  take(Field::all_day, &Fields::all_day);
  take(Field::reminder_set, &Fields::reminder_set);
  take(Field::reminder_minutes, &Fields::reminder_minutes);
  take(Field::sensitivity, &Fields::sensitivity);
  take(Field::busy_status, &Fields::busy_status);
}

AppointmentFieldSet FieldChanges::write(
    const AppointmentFields& given, AppointmentFieldSet named, const AppointmentFields& shown,
    const RecordCalendarStore& store,
    const std::function<std::optional<AppointmentFields>()>& stored) {
  AppointmentFieldSet refused;
  const bool ink = named.has(Field::ink);
  if (ink || named.has(Field::body)) {
    if (given.body == shown.body && (!ink || given.body_ink == shown.body_ink)) {
      leave_notes(named);  // no change, or one that is withdrawn
      leave_notes(named_);
    } else {
      refused = refused_notes(given, named, shown, store.takes_ink(), stored());
      if (!refused.empty()) leave_notes(named);
    }
  }
  if (named.has(Field::ink)) named.add(Field::body);
  take_fields(values_, given, named);
  named_.add(named);
  form_ = store.all_day_end();
  return refused;
}

AppointmentFields FieldChanges::applied_to(AppointmentFields fields) const {
  take_fields(fields, values_, named_);
  if (fields.all_day && has(Field::end)) fields.end = own_end(fields.start, fields.end, form_);
  return fields;
}

bool FieldChanges::notes_still_fit(const AppointmentFields& shown,
                                   const AppointmentFields& stored) const {
  return !has(Field::body) || stored.body_ink == shown.body_ink;
}

bool FieldChanges::moves(const AppointmentFields& shown) const {
  const AppointmentFields now = applied_to(shown);
  return now.start != shown.start || now.end != shown.end;
}

}  // namespace orvello
