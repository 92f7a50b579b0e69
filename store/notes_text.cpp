#include "store/notes_text.h"

#include <algorithm>
#include <optional>

#include "store/item_operations.h"

namespace orvello {
namespace {

constexpr TextView kError = u"Error";
constexpr std::size_t kLongest = 599, kCutTo = 594;

Text body_of(const Appointment& item) {
  AppointmentFields fields;
  item.read(fields);
  const bool only_drawn = fields.body.empty() && !fields.body_ink.empty();
  return only_drawn ? u"(Drawing)" : fields.body;
}

// Nothing after saying why.
std::optional<Text> occurrence_body(StoreSession& session, Appointment& item, MessageBoxes& boxes,
                                    CalendarDate start) {
  OccurrenceError error = OccurrenceError::none;
  if (const auto occurrence = find_listed_occurrence(item, start, error))
    return body_of(*occurrence);
  if (error == OccurrenceError::unreadable)
    boxes.show(with_reason(session, u"Failed to GetRecurrencePattern"), kError, BoxIcon::none,
               BoxButtons::ok, true);
  else
    boxes.show(error == OccurrenceError::invalid_argument ? u"Failed getOccurrence: Invalid Arg"
                                                          : u"Failed getOccurrence",
               kError);
  return error == OccurrenceError::unreadable ? std::nullopt : std::optional(Text());
}

}  // namespace

Text notes_text(StoreSession& session, MessageBoxes& boxes, std::int32_t oid, CalendarDate start) {
  const auto item = session.ItemFromOid(oid);
  if (!item) {
    if (!session.problem().empty())
      boxes.show(with_reason(session, u"Failure to Obtain Appointment Item"), kError);
    return {};
  }
  const auto body =
      item->is_recurring() ? occurrence_body(session, *item, boxes, start) : body_of(*item);
  if (!body) return {};
  Text notes = *body;
  // Half a character at the end is no matter: a text of this length is cut again below.
  notes.resize(std::min(notes.size(), kLongest));
  while (notes.size() > 1 && TextView(u" \r\n").find(notes.back()) != TextView::npos)
    notes.pop_back();
  if (notes.empty()) return u"(No Notes)";
  if (notes.size() >= kLongest) return cut(notes, kCutTo) + u"...";
  return notes;
}

}  // namespace orvello
