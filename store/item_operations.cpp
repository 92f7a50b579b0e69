#include "store/item_operations.h"

#include <functional>
#include <optional>

#include "resources/strings.h"

namespace orvello {
namespace {

constexpr TextView kError = u"Error";
constexpr TextView kNotObtained = u"Failure to Obtain Appointment Item";

bool on_day(CalendarDate date, CalendarDate other) { return whole_day(date) == whole_day(other); }

AppointmentFields fields_of(const Appointment& item) {
  AppointmentFields fields;
  item.read(fields);
  return fields;
}

void tell_failure(const StoreSession& session, MessageBoxes& boxes, StringId text) {
  boxes.beep();
  boxes.show(with_reason(session, load_string(text, boxes)),
             load_string(StringId::box_error, boxes));
}

// The item itself, or the occurrence of its row, which `occurrence` keeps. Null after saying why.
Appointment* touched_one(StoreSession& session, MessageBoxes& boxes, Appointment& item,
                         CalendarDate start, std::unique_ptr<Appointment>& occurrence) {
  if (!item.is_recurring()) return &item;
  OccurrenceError error = OccurrenceError::none;
  occurrence = find_listed_occurrence(item, start, error);
  if (!occurrence)
    tell_failure(session, boxes,
                 error == OccurrenceError::unreadable         ? StringId::box_not_read
                 : error == OccurrenceError::invalid_argument ? StringId::box_several
                                                              : StringId::box_gone);
  return occurrence.get();
}

// The occurrence and all after it, which `part` keeps. Null after saying why.
Appointment* following_ones(StoreSession& session, MessageBoxes& boxes, Appointment& item,
                            CalendarDate start, std::unique_ptr<Appointment>& part) {
  OccurrenceError error = OccurrenceError::none;
  const auto pattern = item.pattern();
  if (pattern) part = pattern->following(start, error);
  if (!part)
    tell_failure(session, boxes,
                 error == OccurrenceError::not_found ? StringId::box_gone : StringId::box_not_read);
  return part.get();
}

// Fetched for a move or a copy; null after saying why.
struct Touched {
  Touched(const OperationContext& context, std::int32_t oid, CalendarDate start)
      : item(context.session.ItemFromOid(oid)) {
    if (item)
      one = touched_one(context.session, context.boxes, *item, start, occurrence);
    else
      context.boxes.show(with_reason(context.session, kNotObtained), kError);
  }
  std::unique_ptr<Appointment> item, occurrence;
  Appointment* one = nullptr;
};

// Writes, not saves, its times so much later.
bool put_off(Appointment& item, AppointmentFields fields, std::int64_t shift) {
  fields.start = to_calendar_date(to_seconds(fields.start) + shift);
  fields.end = to_calendar_date(to_seconds(fields.end) + shift);
  return item.write(fields, {AppointmentField::start, AppointmentField::end}).empty();
}

// On that day.
bool put_on_day(Appointment& item, Day day) {
  const AppointmentFields fields = fields_of(item);
  return put_off(item, fields, (day - whole_day(fields.start)) * kSecondsPerDay);
}

// One transaction, and one step of the history.
bool in_one_step(const OperationContext& context, const Appointment& item,
                 const std::function<bool(EditStep&)>& work) {
  EditStep step;
  const bool done = context.session.app()->all_or_nothing([&] {
    step.before(item);
    if (!work(step)) return false;
    step.finish(context.session);
    return true;
  });
  if (done) context.history.keep(std::move(step));
  return done;
}

// After saying why not, false. `put` writes where it goes.
bool save_moved(const OperationContext& context, const Touched& touched,
                const std::function<bool()>& put) {
  if (!touched.one) return false;
  const bool done =
      put() && in_one_step(context, *touched.item, [&](EditStep&) { return touched.one->save(); });
  if (!done) tell_failure(context.session, context.boxes, StringId::box_not_moved);
  return done;
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

bool can_follow(Appointment& item, CalendarDate start) {
  OccurrenceError error = OccurrenceError::none;
  const auto pattern = item.is_recurring() ? item.pattern() : nullptr;
  const auto rest = pattern ? pattern->following(start, error) : nullptr;
  return rest && rest->oid() == 0;
}

bool delete_appointment(const OperationContext& context, std::int32_t oid, int mode,
                        CalendarDate start) {
  StoreSession& session = context.session;
  auto item = session.ItemFromOid(oid);
  if (!item) {
    context.boxes.show(with_reason(session, kNotObtained), kError);
    session.Close();
    return true;
  }
  std::unique_ptr<Appointment> part;
  Appointment* const doomed = mode == kDeleteSeries ? item.get()
                              : mode == kDeleteFollowing && item->is_recurring()
                                  ? following_ones(session, context.boxes, *item, start, part)
                                  : touched_one(session, context.boxes, *item, start, part);
  if (doomed && !in_one_step(context, *item, [&](EditStep&) { return doomed->remove(); }))
    tell_failure(session, context.boxes, StringId::box_not_deleted);
  return false;
}

bool move_appointment(const OperationContext& context, std::int32_t oid, CalendarDate source_start,
                      Day target_day) {
  Touched touched(context, oid, source_start);
  return save_moved(context, touched, [&] { return put_on_day(*touched.one, target_day); });
}

bool shift_appointment(const OperationContext& context, std::int32_t oid, CalendarDate source_start,
                       CalendarDate target_start) {
  Touched touched(context, oid, source_start);
  return save_moved(context, touched, [&] {
    const AppointmentFields fields = fields_of(*touched.one);
    return put_off(*touched.one, fields, to_seconds(target_start) - to_seconds(fields.start));
  });
}

bool copy_appointment(const OperationContext& context, std::int32_t oid, CalendarDate source_start,
                      Day target_day) {
  Touched touched(context, oid, source_start);
  if (!touched.one) return false;
  const auto copy = touched.one->copy();
  const bool done =
      put_on_day(*copy, target_day) && in_one_step(context, *copy, [&](EditStep& step) {
        if (!copy->save()) return false;
        step.made(copy->oid());
        return true;
      });
  if (!done) tell_failure(context.session, context.boxes, StringId::box_not_copied);
  return done;
}

}  // namespace orvello
