// A VEVENT as an appointment.
#pragma once

#include <optional>
#include <string>

#include "exchange/content_line.h"
#include "exchange/moment.h"
#include "store/appointment_record.h"

namespace orvello {

struct ReadEvent {
  AppointmentRecord record;  // without oid and residue; the UID is empty where the event has none
  Moment start;
  std::optional<Moment> recurrence_id;  // it stands for one occurrence of the series of that UID
  std::string recurrence_id_text;       // also where it is no date
  bool following = false;               // it stands for all later ones too
  bool cancelled = false;
  bool plain = true;  // the record says all that the event said: no need to keep its text
};

// Nothing for an event without a start, which no day can show; the reason is among the problems.
std::optional<ReadEvent> read_event(const Component& event, EventContext& context);

// RRULE, RDATE, EXRULE and EXDATE of an event whose start and end are known.
void read_recurrence(const Component& event, EventContext& context, ReadEvent& read);

// The first alarm that shows or sounds before the start, as minutes; null: none of that kind.
const Component* reminder_alarm(const Component& event, EventContext& context,
                                const ReadEvent& read, std::int32_t& minutes);

// The recipient that an ATTENDEE or ORGANIZER names.
StoreRecipient read_recipient(const Property& property);

// The event's busy status as its properties together say it.
BusyStatus read_busy_status(const Component& event);

bool is_cancelled(const Component& event);
int sequence_of(const Component& event);  // 0 where it has none

std::string join_categories(const Component& event);

// A stable name for an event that has none, from what it says.
std::string made_up_uid(const Component& event);

// The series' exception that an override is.
AppointmentException exception_of(const ReadEvent& override_event, const ReadEvent& master,
                                  std::string residue, const Clock& clock);

}  // namespace orvello
