// A meeting request as a mail (iMIP, RFC 6047).
#pragma once

#include <string>

#include "exchange/meeting_request.h"
#include "ports/clock.h"

namespace orvello {

// The whole message, with line ends as a mail program on this machine wants them: "\n". Its text is
// for those whose mail program shows no meetings.
std::string meeting_mail(const MeetingRequest& request, const AppointmentRecord& record,
                         const StoreRecipient& organizer, const Clock& clock);

// A header's text (RFC 2047): as it is where it can be.
std::string encoded_words(TextView text);

}  // namespace orvello
