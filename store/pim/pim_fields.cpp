#include "store/pim/pim_fields.h"

#include <cmath>

namespace orvello {
namespace {

using Field = AppointmentField;

template <typename Value, typename Read>
bool take_into(Value& value, const Read& read) {
  if (read) value = static_cast<Value>(*read);
  return read.has_value();
}

bool read_moment(const PimObject& item, PimName name, CalendarDate& moment) {
  return take_into(moment, item.moment(name)) && std::isfinite(moment);
}

bool read_times(const PimObject& item, AppointmentFieldSet wanted, const PimForm& form,
                AppointmentFields& fields) {
  if (wanted.has(Field::all_day) && !take_into(fields.all_day, item.flag(PimName::all_day_event)))
    return false;
  if (wanted.has(Field::start) && !read_moment(item, PimName::start, fields.start)) return false;
  if (!wanted.has(Field::end)) return true;
  if (!read_moment(item, PimName::end, fields.end)) return false;
  if (fields.all_day) fields.end = own_end(fields.start, fields.end, form.all_day_end);
  return true;
}

bool read_texts(const PimObject& item, AppointmentFieldSet wanted, AppointmentFields& fields) {
  const auto read = [&](Field field, PimName name, Text& text) {
    return !wanted.has(field) || take_into(text, item.text(name));
  };
  return read(Field::subject, PimName::subject, fields.subject) &&
         read(Field::location, PimName::location, fields.location) &&
         read(Field::categories, PimName::categories, fields.categories) &&
         read(Field::body, PimName::body, fields.body);
}

// A number that means nothing to this program must not become something that it would write back.
bool read_numbers(const PimObject& item, AppointmentFieldSet wanted, AppointmentFields& fields) {
  const auto read = [&](Field field, PimName name, std::int32_t& number) {
    return !wanted.has(field) || take_into(number, item.number(name));
  };
  auto busy = static_cast<std::int32_t>(fields.busy_status);
  const bool done =
      read(Field::reminder_minutes, PimName::reminder_minutes, fields.reminder_minutes) &&
      read(Field::sensitivity, PimName::sensitivity, fields.sensitivity) &&
      read(Field::busy_status, PimName::busy_status, busy);
  fields.busy_status = static_cast<BusyStatus>(busy);
  return done && (!wanted.has(Field::reminder_set) ||
                  take_into(fields.reminder_set, item.flag(PimName::reminder_set)));
}

bool write_notes(const PimObject& item, const AppointmentFields& fields,
                 AppointmentFieldSet named) {
  const bool ink = named.has(Field::ink);
  const auto put_ink = [&] {
    return !ink || item.put(PimName::body_ink, PimValue::bytes(fields.body_ink));
  };
  if (fields.body_ink.empty() && !put_ink()) return false;
  if (named.has(Field::body) && !item.put(PimName::body, PimValue::text(fields.body))) return false;
  return fields.body_ink.empty() || put_ink();
}

}  // namespace

bool read_fields(const PimObject& item, AppointmentFieldSet wanted, const PimForm& form,
                 AppointmentFields& fields) {
  if (!read_texts(item, wanted, fields) || !read_times(item, wanted, form, fields) ||
      !read_numbers(item, wanted, fields))
    return false;
  return !wanted.has(Field::ink) || !form.ink ||
         take_into(fields.body_ink, item.bytes(PimName::body_ink));
}

bool write_fields(const PimObject& item, const AppointmentFields& fields, AppointmentFieldSet named,
                  const PimForm& form) {
  const CalendarDate end = fields.all_day ? stored_end(fields.end, form.all_day_end) : fields.end;
  const auto put = [&](Field field, PimName name, auto make, const auto& value) {
    return !named.has(field) || item.put(name, make(value));
  };
  const auto busy = static_cast<std::int32_t>(fields.busy_status);
  return put(Field::subject, PimName::subject, PimValue::text, fields.subject) &&
         put(Field::location, PimName::location, PimValue::text, fields.location) &&
         put(Field::categories, PimName::categories, PimValue::text, fields.categories) &&
         put(Field::start, PimName::start, PimValue::moment, fields.start) &&
         put(Field::end, PimName::end, PimValue::moment, end) &&
         put(Field::all_day, PimName::all_day_event, PimValue::flag, fields.all_day) &&
         put(Field::reminder_set, PimName::reminder_set, PimValue::flag, fields.reminder_set) &&
         put(Field::reminder_minutes, PimName::reminder_minutes, PimValue::number,
             fields.reminder_minutes) &&
         write_notes(item, fields, named) &&
         put(Field::sensitivity, PimName::sensitivity, PimValue::number, fields.sensitivity) &&
         put(Field::busy_status, PimName::busy_status, PimValue::number, busy);
}

AppointmentFieldSet differing_fields(const AppointmentFields& a, const AppointmentFields& b) {
  AppointmentFieldSet set;
  const auto compare = [&](Field field, const auto& one, const auto& other) {
    if (one != other) set.add(field);
  };
  compare(Field::subject, a.subject, b.subject);
  compare(Field::location, a.location, b.location);
  compare(Field::categories, a.categories, b.categories);
  compare(Field::body, a.body, b.body);
  compare(Field::ink, a.body_ink, b.body_ink);
  compare(Field::start, a.start, b.start);
  compare(Field::end, a.end, b.end);
  compare(Field::all_day, a.all_day, b.all_day);
  compare(Field::reminder_set, a.reminder_set, b.reminder_set);
  compare(Field::reminder_minutes, a.reminder_minutes, b.reminder_minutes);
  compare(Field::sensitivity, a.sensitivity, b.sensitivity);
  compare(Field::busy_status, a.busy_status, b.busy_status);
  return set;
}

std::optional<std::vector<StoreRecipient>> read_recipients(const PimObject& item) {
  std::vector<StoreRecipient> list;
  const auto all = item.part(PimName::recipients, PimKind::recipients);
  if (!all) return std::nullopt;
  if (!*all) return list;
  const bool whole = each_part(*all, PimKind::recipient, [&](const PimObject& one) {
    StoreRecipient& recipient = list.emplace_back();
    return take_into(recipient.name, one.text(PimName::name)) &&
           take_into(recipient.address, one.text(PimName::address));
  });
  return whole ? std::optional(std::move(list)) : std::nullopt;
}

bool write_recipients(const PimObject& item, const std::vector<StoreRecipient>& recipients) {
  const auto all = item.part(PimName::recipients, PimKind::recipients);
  const auto count = all && *all ? all->number(PimName::count) : std::nullopt;
  if (!count) return false;
  for (std::int32_t index = *count; index >= 1; --index)
    if (!all->call(PimName::remove_at, PimValue::number(index))) return false;
  for (const StoreRecipient& one : recipients) {
    const auto added = all->made_by(PimName::add, PimKind::recipient, PimValue::text(one.name));
    if (!added || !*added || !added->put(PimName::address, PimValue::text(one.address)))
      return false;
  }
  return true;
}

}  // namespace orvello
