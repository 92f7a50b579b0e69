#include "store/notes_text.h"

#include <algorithm>
#include <cmath>

#include "store/item_operations.h"

namespace orvello {
namespace {

constexpr TextView kError = u"Error";
constexpr std::size_t kLongest = 599, kCutTo = 594;

Text body_of(const Appointment& item) {
  AppointmentFields fields;
  item.read(fields);
  return fields.body;
}

Text occurrence_body(Appointment& item, MessageBoxes& boxes, std::int32_t day) {
  const auto pattern = item.pattern();
  if (!pattern) {
    boxes.show(u"Failed to GetRecurrencePattern", kError, BoxIcon::none, BoxButtons::ok, true);
    return {};
  }
  AppointmentFields fields;
  item.read(fields);
  CalendarDate moment = day + (fields.start - std::trunc(fields.start));
  find_exception_date(*pattern, boxes, moment);
  OccurrenceError error = OccurrenceError::none;
  const auto occurrence = find_occurrence(item, *pattern, moment, error);
  if (occurrence) return body_of(*occurrence);
  boxes.show(error == OccurrenceError::invalid_argument ? u"Failed getOccurrence: Invalid Arg"
                                                        : u"Failed getOccurrence",
             kError);
  return {};
}

}  // namespace

Text notes_text(StoreSession& session, MessageBoxes& boxes, std::int32_t oid,
                std::int32_t shown_day) {
  const auto item = session.ItemFromOid(oid);
  if (!item) return {};
  Text notes = item->is_recurring() ? occurrence_body(*item, boxes, shown_day) : body_of(*item);
  // Half a character at the end is no matter: a text of this length is cut again below.
  notes.resize(std::min(notes.size(), kLongest));
  while (notes.size() > 1 && TextView(u" \r\n").find(notes.back()) != TextView::npos)
    notes.pop_back();
  if (notes.empty()) return u"(No Notes)";
  if (notes.size() >= kLongest) return cut(notes, kCutTo) + u"...";
  return notes;
}

}  // namespace orvello
