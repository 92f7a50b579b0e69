// Meetings as messages to their attendees (iTIP, RFC 5546).
#pragma once

#include <string>
#include <vector>

#include "base/result.h"
#include "ports/clock.h"
#include "store/record_store.h"

namespace orvello {

struct MeetingRequest {
  std::string calendar;                   // METHOD:REQUEST, and all components of the meeting's UID
  std::vector<StoreRecipient> attendees;  // with an address each, and without the organizer
  // To be put into the store before the request leaves: with it, export says the same SEQUENCE, and
  // the next request knows whether time, place or recurrence have changed since.
  ForeignComponent sent;
};

// The request for the meeting as it is in the record. Floating times are said in the device's zone;
// answers that came stay, and who has not answered is asked to. Reminders and ink are nobody else's
// and stay here. Fails where nobody has an address, and where another than `organizer` is the
// meeting's organizer, who alone can send it.
Result<MeetingRequest> meeting_request(RecordStore& store, const AppointmentRecord& record,
                                       const StoreRecipient& organizer, const Clock& clock);

// Whether mail can go there: "name@place", without anything that a header or an argument would trip
// over.
bool is_mail_address(TextView address);

}  // namespace orvello
