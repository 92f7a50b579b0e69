#include "store/notes_text.h"

#include <algorithm>

#include "store/item_operations.h"

namespace orvello {
namespace {

constexpr TextView kError = u"Error";
constexpr std::size_t kLongest = 599, kCutTo = 594;

AppointmentNotes whole_notes(const Appointment& item) {
  AppointmentFields fields;
  item.read(fields);
  const bool only_drawn = fields.body.empty() && !fields.body_ink.empty();
  return {only_drawn ? Text(u"(Drawing)") : std::move(fields.body), std::move(fields.location)};
}

// Nothing after saying why.
std::optional<AppointmentNotes> occurrence_notes(StoreSession& session, Appointment& item,
                                                 MessageBoxes& boxes, CalendarDate start) {
  OccurrenceError error = OccurrenceError::none;
  if (const auto occurrence = find_listed_occurrence(item, start, error))
    return whole_notes(*occurrence);
  if (error == OccurrenceError::unreadable)
    boxes.show(with_reason(session, u"Failed to GetRecurrencePattern"), kError, BoxIcon::none,
               BoxButtons::ok, true);
  else
    boxes.show(error == OccurrenceError::invalid_argument ? u"Failed getOccurrence: Invalid Arg"
                                                          : u"Failed getOccurrence",
               kError);
  if (error == OccurrenceError::unreadable) return std::nullopt;
  return AppointmentNotes();
}

}  // namespace

std::optional<AppointmentNotes> notes_of(StoreSession& session, MessageBoxes& boxes,
                                         std::int32_t oid, CalendarDate start) {
  const auto item = session.ItemFromOid(oid);
  if (!item) {
    if (!session.problem().empty())
      boxes.show(with_reason(session, u"Failure to Obtain Appointment Item"), kError);
    return std::nullopt;
  }
  auto notes =
      item->is_recurring() ? occurrence_notes(session, *item, boxes, start) : whole_notes(*item);
  if (!notes) return std::nullopt;
  Text& text = notes->text;
  // Half a character at the end is no matter: a text of this length is cut again below.
  text.resize(std::min(text.size(), kLongest));
  while (text.size() > 1 && TextView(u" \r\n").find(text.back()) != TextView::npos) text.pop_back();
  if (text.empty()) text = Text(u"(No Notes)");
  if (text.size() >= kLongest) text = cut(text, kCutTo) + u"...";
  return notes;
}

}  // namespace orvello
