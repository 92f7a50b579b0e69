#include "store/item_operations.h"

#include <optional>

namespace orvello {
namespace {

constexpr TextView kError = u"Error";
constexpr TextView kNotObtained = u"Failure to Obtain Appointment Item";
constexpr TextView kNotRead = u"The appointment cannot be read.";
constexpr TextView kGone = u"This appointment is not there any more.";
constexpr TextView kSeveral = u"This row stands for several appointments.";

bool on_day(CalendarDate date, CalendarDate other) { return whole_day(date) == whole_day(other); }

AppointmentFields fields_of(const Appointment& item) {
  AppointmentFields fields;
  item.read(fields);
  return fields;
}

void tell_failure(const StoreSession& session, MessageBoxes& boxes, TextView text) {
  boxes.beep();
  boxes.show(with_reason(session, text), kError);
}

// The item itself, or the occurrence of its row, which `occurrence` keeps. Null after saying why.
Appointment* touched_one(StoreSession& session, MessageBoxes& boxes, Appointment& item,
                         CalendarDate start, std::unique_ptr<Appointment>& occurrence) {
  if (!item.is_recurring()) return &item;
  OccurrenceError error = OccurrenceError::none;
  occurrence = find_listed_occurrence(item, start, error);
  if (!occurrence)
    tell_failure(session, boxes,
                 error == OccurrenceError::unreadable         ? kNotRead
                 : error == OccurrenceError::invalid_argument ? kSeveral
                                                              : kGone);
  return occurrence.get();
}

}  // namespace

bool isApptRecurring(StoreSession& session, MessageBoxes& boxes, std::int32_t oid) {
  if (oid == 0) return false;
  const auto item = session.ItemFromOid(oid);
  if (!item)
    boxes.show(with_reason(session, u"isApptRecurring() failed!"), kError, BoxIcon::warning);
  return item && item->is_recurring();
}

bool find_exception_date(StorePattern& pattern, MessageBoxes& boxes, CalendarDate& moment) {
  const auto count = pattern.exception_count();
  for (int index = 1; index <= count.value_or(1); ++index) {
    const auto exception = count ? pattern.exception(index) : std::nullopt;
    if (!exception) {
      boxes.show(u"error in pExceptions->Item() call", kError);
      break;
    }
    if (exception->deleted || !on_day(exception->start, moment)) continue;
    moment = exception->start;
    break;
  }
  return count != 0;
}

std::unique_ptr<Appointment> find_occurrence(Appointment& item, StorePattern& pattern,
                                             CalendarDate moment, OccurrenceError& last) {
  auto found = pattern.occurrence(moment, last);
  const std::int32_t duration = item.duration_minutes();
  if (found || duration <= 0) return found;
  // Minutes over 3600 are no days. The number of tries is kept as people know it.
  for (int tries = duration / 3600 + 1; tries > 0 && !found; --tries) {
    moment = to_calendar_date(to_seconds(moment) - kSecondsPerDay);
    found = pattern.occurrence(moment, last);
  }
  return found;
}

std::unique_ptr<Appointment> find_listed_occurrence(Appointment& item, CalendarDate start,
                                                    OccurrenceError& error) {
  error = OccurrenceError::unreadable;
  const auto pattern = item.pattern();
  if (!pattern) return nullptr;
  auto found = pattern->occurrence(start, error);
  if (!found || to_seconds(fields_of(*found).start) == to_seconds(start)) return found;
  error = OccurrenceError::not_found;
  return nullptr;
}

Text with_reason(const StoreSession& session, TextView text) {
  Text whole(text);
  if (const Text reason = session.problem(); !reason.empty()) whole += u"\n" + reason;
  return whole;
}

bool delete_appointment(StoreSession& session, MessageBoxes& boxes, std::int32_t oid, int mode,
                        CalendarDate start) {
  constexpr int kSeries = 3;
  auto item = session.ItemFromOid(oid);
  if (!item) {
    boxes.show(with_reason(session, kNotObtained), kError);
    session.Close();
    return true;
  }
  std::unique_ptr<Appointment> occurrence;
  Appointment* const doomed =
      mode == kSeries ? item.get() : touched_one(session, boxes, *item, start, occurrence);
  if (doomed && !doomed->remove())
    tell_failure(session, boxes, u"The appointment was not deleted.");
  return false;
}

bool copy_or_move(StoreSession& session, MessageBoxes& boxes, std::int32_t oid,
                  CalendarDate source_start, Day target_day, bool move) {
  auto item = session.ItemFromOid(oid);
  if (!item) {
    boxes.show(with_reason(session, kNotObtained), kError);
    return false;
  }
  std::unique_ptr<Appointment> occurrence;
  Appointment* const source = touched_one(session, boxes, *item, source_start, occurrence);
  if (!source) return false;
  const auto copy = source->copy();
  AppointmentFields fields = fields_of(*copy);
  const auto shift = (target_day - whole_day(fields.start)) * kSecondsPerDay;
  fields.start = to_calendar_date(to_seconds(fields.start) + shift);
  fields.end = to_calendar_date(to_seconds(fields.end) + shift);
  // Half a move would leave the appointment on both days.
  const bool done =
      copy->write(fields, {AppointmentField::start, AppointmentField::end}).empty() &&
      session.app()->all_or_nothing([&] { return copy->save() && (!move || source->remove()); });
  if (!done)
    tell_failure(session, boxes,
                 move ? u"The appointment was not moved." : u"The appointment was not copied.");
  return done;
}

}  // namespace orvello
