#include "store/meant_appointment.h"

#include <algorithm>
#include <optional>

#include "store/form_parts.h"
#include "store/item_operations.h"

namespace orvello {
namespace {

constexpr std::size_t kShownText = 200;
constexpr char kUntoldRules[] = "RRULE:";  // of a store that keeps them and cannot tell them

// Without what a date of many days leaves of its fraction.
CalendarDate clock_time(CalendarDate moment) {
  return to_calendar_date(LocalSeconds(second_of_day(to_seconds(moment))));
}

StoreRecipient cut_recipient(const StoreRecipient& whole) {
  return {cut(whole.name, kAttendeeNameLength), cut(whole.address, kAttendeeAddressLength)};
}

bool is_at(const Appointment& occurrence, CalendarDate start) {
  AppointmentFields fields;
  return occurrence.read(fields) && to_seconds(fields.start) == to_seconds(start);
}

// Where the occurrence that began at `start` in its series is now. Nothing when it is not changed,
// or where the exceptions cannot be read: `read` is false then.
std::optional<CalendarDate> moved_to(const StorePattern& pattern, CalendarDate start, bool& read) {
  const auto count = pattern.exception_count();
  read = count.has_value();
  for (int index = 1; read && index <= *count; ++index) {
    const auto exception = pattern.exception(index);
    read = exception.has_value();
    if (read && !exception->deleted && to_seconds(exception->original_start) == to_seconds(start))
      return exception->start;
  }
  return std::nullopt;
}

// Another occurrence of that day, which the row did not mean, is only taken for one that was moved
// there: an exception.
std::unique_ptr<Appointment> meant_occurrence(StorePattern& pattern, MessageBoxes& boxes,
                                              CalendarDate start, OccurrenceError& error) {
  auto found = pattern.occurrence(start, error);
  if (error == OccurrenceError::unreadable || (found && is_at(*found, start))) return found;
  CalendarDate moment = start;
  bool read = true;
  if (const auto moved = moved_to(pattern, start, read)) {
    moment = *moved;
  } else if (!find_exception_date(pattern, boxes, moment) || moment == start) {
    if (!read) error = OccurrenceError::unreadable;
    return nullptr;
  }
  found = pattern.occurrence(moment, error);
  return found && is_at(*found, moment) ? std::move(found) : nullptr;
}

}  // namespace

MeantAppointment meant_appointment(StoreSession& session, MessageBoxes& boxes,
                                   const EditorChoice& choice) {
  using Lack = MeantAppointment::Lack;
  MeantAppointment found;
  const auto lacking = [&](Lack lack) { return found.lack = lack, std::move(found); };
  found.item = session.ItemFromOid(choice.oid);
  if (!found.item) return lacking(Lack::item);
  if (choice.scope == EditScope::series) return found;
  if (!found.item->is_recurring()) return lacking(Lack::occurrence);
  const auto pattern = found.item->pattern();
  if (!pattern) return lacking(Lack::pattern);
  OccurrenceError error = OccurrenceError::none;
  found.part = choice.scope == EditScope::following
                   ? pattern->following(choice.occurrence, error)
                   : meant_occurrence(*pattern, boxes, choice.occurrence, error);
  if (found.part) return found;
  const bool is_known = error == OccurrenceError::not_found ||
                        error == OccurrenceError::invalid_argument ||
                        (error == OccurrenceError::none && choice.scope == EditScope::occurrence);
  return lacking(is_known ? Lack::occurrence : Lack::unreadable_occurrence);
}

bool fill_form(AllDayEnd all_day_end, const MeantAppointment& from, AppointmentForm& form) {
  Appointment& meant = from.meant();
  AppointmentFields fields;
  const auto recipients = meant.recipients();
  if (!meant.read(fields) || !recipients) return false;
  if (fields.all_day) fields.end = own_end(fields.start, fields.end, all_day_end);
  form.subject = cut(fields.subject, kShownText);
  form.location = cut(fields.location, kShownText);
  form.categories = cut(fields.categories, kCategoriesLength);
  form.all_day = fields.all_day;
  form.reminder_set = fields.reminder_set;
  form.reminder_minutes = fields.reminder_minutes;
  form.is_private = fields.sensitivity == kPrivateSensitivity;
  form.busy_status = index_of(fields.busy_status);
  form.body = fields.body;
  form.ink = fields.body_ink;
  form.attendees.clear();
  for (const StoreRecipient& one : *recipients) form.attendees.push_back(cut_recipient(one));
  form.recurring = meant.is_recurring();
  form.pattern = {};
  form.rules.clear();
  form.start_date = to_calendar_date(whole_day(fields.start));
  form.start_time = clock_time(fields.start);
  form.end_date = to_calendar_date(whole_day(fields.end));
  form.end_time = clock_time(fields.end);
  if (!form.recurring) return true;
  // Of one occurrence the series', which the item alone can tell.
  Appointment& series = form.choice.scope == EditScope::occurrence ? *from.item : meant;
  const auto pattern = series.pattern();
  const auto held = pattern ? pattern->fields()
                            : Result<std::optional<RecurrencePattern>>::failure(std::string());
  if (!held) return false;
  if (*held) {
    form.pattern = **held;
  } else {
    form.pattern.duration = series.duration_minutes();
    form.rules = to_utf8(pattern->rules());
  }
  if (!*held && form.rules.empty()) form.rules = kUntoldRules;
  return true;
}

std::vector<StoreRecipient> whole_recipients(const std::vector<StoreRecipient>& shown,
                                             const std::vector<StoreRecipient>& stored) {
  std::vector<StoreRecipient> whole;
  for (const StoreRecipient& one : shown) {
    const auto known = std::find_if(stored.begin(), stored.end(), [&](const auto& other) {
      return cut_recipient(other) == cut_recipient(one);
    });
    whole.push_back(known == stored.end() ? cut_recipient(one) : *known);
  }
  return whole;
}

}  // namespace orvello
