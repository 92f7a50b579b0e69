#include "store/item_operations.h"

#include <cmath>
#include <optional>

#include "store/day_label.h"

namespace orvello {
namespace {

constexpr TextView kError = u"Error";
constexpr TextView kNotObtained = u"Failure to Obtain Appointment Item";

bool on_day(CalendarDate date, CalendarDate other) { return std::trunc(date) == std::trunc(other); }

AppointmentFields fields_of(const Appointment& item) {
  AppointmentFields fields;
  item.read(fields);
  return fields;
}

// The start of the item's occurrence in the day's list; of several, the first that begins on the
// day, else the one that began last.
std::optional<CalendarDate> listed_start(StoreSession& session, std::int32_t oid,
                                         std::int32_t day) {
  const auto items = session.CalendarItems();
  if (!items) return std::nullopt;
  const auto midnight = static_cast<double>(day);
  items->set_include_recurrences(true);
  items->sort(u"[Start]", false);
  std::optional<CalendarDate> start;
  const Text restriction = format(u"[End] >= <%.0f AND [Start] <= <%.0f", midnight, midnight);
  for (auto item = items->find(restriction); item; item = items->find_next()) {
    if (item->summary->oid != oid || !touches_day(*item, day)) continue;
    start = item->start;
    if (on_day(item->start, midnight)) break;
  }
  return start;
}

}  // namespace

bool isApptRecurring(StoreSession& session, MessageBoxes& boxes, std::int32_t oid) {
  if (oid == 0) return false;
  const auto item = session.ItemFromOid(oid);
  if (!item) boxes.show(u"isApptRecurring() failed!", kError, BoxIcon::warning);
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
  for (int tries = duration / 3600 + 1; tries > 0 && !found; --tries)
    found = pattern.occurrence(moment -= 1, last);
  return found;
}

std::unique_ptr<Appointment> find_shown_occurrence(StoreSession& session, MessageBoxes& boxes,
                                                   Appointment& item, std::int32_t day) {
  const auto pattern = item.pattern();
  if (!pattern) return nullptr;
  const CalendarDate start = fields_of(item).start;
  CalendarDate moment = day + (start - std::trunc(start));
  find_exception_date(*pattern, boxes, moment);
  OccurrenceError error = OccurrenceError::none;
  if (auto found = pattern->occurrence(moment, error)) return found;
  // No occurrence begins then. Stepping back a fixed number of days could meet an earlier one that
  // was over before this day, and delete what nobody sees here; the day's list knows the start of
  // the one it shows, also of a moved one and of one that has been running for weeks.
  const auto listed = listed_start(session, item.oid(), day);
  return listed ? pattern->occurrence(*listed, error) : nullptr;
}

bool delete_appointment(StoreSession& session, MessageBoxes& boxes, std::int32_t oid, int mode,
                        std::int32_t selected_day) {
  constexpr int kSeries = 3;
  auto item = session.ItemFromOid(oid);
  if (!item) {
    boxes.show(kNotObtained, kError);
    if (session.logged_on()) session.Close();
    return true;
  }
  std::unique_ptr<Appointment> occurrence;
  Appointment* doomed = item.get();
  if (item->is_recurring() && mode != kSeries) {
    occurrence = find_shown_occurrence(session, boxes, *item, selected_day);
    doomed = occurrence.get();
  }
  if (!doomed || !doomed->remove()) boxes.beep();
  return false;
}

bool copy_or_move(StoreSession& session, MessageBoxes& boxes, std::int32_t oid,
                  std::int32_t source_day, std::int32_t target_day, bool move) {
  auto item = session.ItemFromOid(oid);
  if (!item) {
    boxes.show(kNotObtained, kError);
    return false;
  }
  std::unique_ptr<Appointment> occurrence;
  Appointment* source = item.get();
  if (item->is_recurring()) {
    occurrence = find_shown_occurrence(session, boxes, *item, source_day);
    source = occurrence.get();
  }
  auto copy = source ? source->copy() : nullptr;
  if (!copy) {
    boxes.beep();
    return false;
  }
  AppointmentFields fields = fields_of(*copy);
  const CalendarDate shift = target_day - std::trunc(fields.start);
  fields.start += shift;
  fields.end += shift;
  copy->write(fields);
  if (!copy->save()) {
    boxes.beep();  // and the source stays where it is
    return false;
  }
  if (!move || source->remove()) return true;
  // Half a move would leave the appointment on both days.
  copy->remove();
  boxes.beep();
  return false;
}

}  // namespace orvello
