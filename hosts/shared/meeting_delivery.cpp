#include "hosts/shared/meeting_delivery.h"

#include "exchange/mail_message.h"
#include "resources/strings.h"
#include "settings/setting_table.h"

namespace orvello {

RecordCalendarStore::Sending MeetingDelivery::deliver(const MeetingRequest& request,
                                                      const AppointmentRecord& record,
                                                      const StoreRecipient& organizer) const {
  const std::string command = to_utf8(stored_text(registry, u"sendmailcommand"));
  if (command.find_first_not_of(" \t") != std::string::npos)
    return {outbox.run_mailer(command, {"-t", "-i"},
                              meeting_mail(request, record, organizer, clock), patience,
                              meanwhile)};
  const auto handed = outbox.hand_over(record.fields.subject, request.calendar, request.attendees);
  if (!handed) return {handed.reason()};
  if (!handed->mailed)
    return {SendResult::no_way,
            "No mail program was started. The request is saved as " + handed->path};
  if (!handed->left_out.empty()) {
    std::string others;
    for (const std::string& address : handed->left_out)
      others += (others.empty() ? "" : ", ") + address;
    boxes.show(format(load_string(StringId::box_mail_left_out, boxes), to_utf16(others)),
               u"Orvello");
  }
  return {SendResult::sent, ""};
}

}  // namespace orvello
