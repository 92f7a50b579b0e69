// How meeting requests leave a desktop: by the command that the settings name, by the mail program,
// or not at all.
#pragma once

#include <chrono>
#include <functional>

#include "exchange/meeting_request.h"
#include "hosts/shared/departures.h"
#include "ports/message_box.h"
#include "ports/registry.h"
#include "store/record_calendar_store.h"

namespace orvello {

struct MeetingDelivery {
  const Departures& outbox;
  Registry& registry;
  MessageBoxes& boxes;
  const Clock& clock;
  std::function<void()> meanwhile;  // while a command runs
  std::chrono::milliseconds patience{20000};

  RecordCalendarStore::Sending deliver(const MeetingRequest& request,
                                       const AppointmentRecord& record,
                                       const StoreRecipient& organizer) const;
};

}  // namespace orvello
