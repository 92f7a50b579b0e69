// Meeting requests from the window: who sends them, and what is said of them. How a message leaves
// is the host's.
#pragma once

#include <functional>

#include "exchange/meeting_request.h"
#include "ports/dialog.h"
#include "ports/message_box.h"
#include "ports/registry.h"
#include "resources/strings.h"
#include "store/record_calendar_store.h"

namespace orvello {

struct MeetingHost {
  RecordCalendarStore& store;
  const Clock& clock;
  Registry& registry;
  Dialogs& dialogs;
  MessageBoxes& boxes;
  Language language;
  // Who the person is where the settings do not say; either part may be empty.
  std::function<StoreRecipient()> identity;
  // Hands the request over, and says what became of it.
  std::function<RecordCalendarStore::Sending(const MeetingRequest& request,
                                             const AppointmentRecord& record,
                                             const StoreRecipient& organizer)>
      deliver;
};

// Makes the request and hands it over. A person whose address nobody knows is asked for it, once.
RecordCalendarStore::Sending send_meeting(const MeetingHost& host, const AppointmentRecord& record);

// The procedure of dialog 330: result 1 on OK, which needs an address.
class OrganizerProcedure : public DialogProcedure {
 public:
  OrganizerProcedure(StoreRecipient known, MessageBoxes& boxes)
      : organizer_(std::move(known)), boxes_(boxes) {}
  void handle(Dialog& dialog, const DialogEvent& event) override;
  const StoreRecipient& organizer() const { return organizer_; }

 private:
  StoreRecipient organizer_;
  MessageBoxes& boxes_;
};

}  // namespace orvello
