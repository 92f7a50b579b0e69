#include "cli/meeting_sender.h"

#include "resources/dialog_templates.h"
#include "settings/registry_access.h"
#include "settings/setting_table.h"

namespace orvello {
namespace {

constexpr TextView kNameSetting = u"organizername", kAddressSetting = u"organizeraddress";

StoreRecipient known_organizer(const MeetingHost& host) {
  StoreRecipient organizer, other = host.identity();
  organizer.name = stored_text(host.registry, kNameSetting);
  organizer.address = stored_text(host.registry, kAddressSetting);
  if (organizer.name.empty()) organizer.name = std::move(other.name);
  if (organizer.address.empty()) organizer.address = std::move(other.address);
  return organizer;
}

bool ask_for_organizer(const MeetingHost& host, StoreRecipient& organizer) {
  OrganizerProcedure procedure(organizer, host.boxes);
  if (host.dialogs.run_modal(organizer_dialog(host.language), procedure) != 1) return false;
  organizer = procedure.organizer();
  EnsureSettingsKey(host.registry);
  WriteTextSetting(host.registry, kNameSetting, organizer.name);
  WriteTextSetting(host.registry, kAddressSetting, organizer.address);
  FlushSettings(host.registry);
  return true;
}

}  // namespace

void OrganizerProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  if (event.kind == DialogEvent::Kind::init) {
    dialog.set_text(kControlOrganizerName, organizer_.name);
    dialog.set_text(kControlOrganizerAddress, organizer_.address);
    dialog.focus(organizer_.name.empty() ? kControlOrganizerName : kControlOrganizerAddress,
                 Caret::all);
  } else if (event.kind == DialogEvent::Kind::command && event.control == kControlCancel) {
    dialog.close(0);
  } else if (event.kind == DialogEvent::Kind::command && event.control == kControlOk) {
    organizer_.name = trimmed(TextView(dialog.text(kControlOrganizerName)));
    organizer_.address = trimmed(TextView(dialog.text(kControlOrganizerAddress)));
    if (is_mail_address(organizer_.address)) return dialog.close(1);
    boxes_.show(load_string(StringId::box_no_address, boxes_),
                load_string(StringId::box_error, boxes_), BoxIcon::warning);
    dialog.focus(kControlOrganizerAddress, Caret::all);
  }
}

RecordCalendarStore::Sending send_meeting(const MeetingHost& host,
                                          const AppointmentRecord& record) {
  StoreRecipient organizer = known_organizer(host);
  if (!is_mail_address(organizer.address) && !ask_for_organizer(host, organizer))
    return {SendResult::no_way, "There is no address that the request could come from."};
  const auto request = meeting_request(host.store, record, organizer, host.clock);
  if (!request) return {request.reason()};
  // Kept before it leaves: a number that nobody got is no harm, one that is given twice is.
  if (!host.store.put_foreign(request->sent)) return {host.store.problem()};
  return host.deliver(*request, record, organizer);
}

}  // namespace orvello
