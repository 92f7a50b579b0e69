// What OK does: the questions and checks in their order, then the store.
#include "editor/appointment_procedure.h"
#include "settings/pretexts.h"
#include "settings/registry_access.h"
#include "store/save_appointment.h"
#include "store/wait_cursor.h"

namespace orvello {

void AppointmentProcedure::save(Dialog& dialog) {
  if (!take_open_line(dialog) || !confirm_subject(dialog)) return;
  std::optional<FormFault> fault;
  {
    const WaitCursor waiting(context_.host.window);
    draft_.form = sheet_.gathered(dialog);
    if (trimmed(draft_.form.subject).empty()) draft_.form.subject = kNoSubject;
    fault = first_fault(draft_.form);
  }
  if (fault) {
    context_.host.boxes.show(fault->text, fault->caption, BoxIcon::warning);
    return;
  }
  if (confirm_notes(dialog)) store(dialog);
}

bool AppointmentProcedure::confirm_subject(Dialog& dialog) {
  if (!trimmed(dialog.text(kLineSubject)).empty()) return true;
  const BoxAnswer answer = context_.host.boxes.show(
      u"There is no subject text defined. Do you want to save this appointment as is?", u"Warning",
      BoxIcon::warning, BoxButtons::yes_no_cancel);
  if (answer == BoxAnswer::cancel) dialog.close(kCancelled);
  return answer == BoxAnswer::yes;
}

bool AppointmentProcedure::confirm_notes(Dialog& dialog) {
  if (draft_.form.ink.size() <= kMostInk) return true;
  const BoxAnswer answer = context_.host.boxes.show(
      u"The amount of data in the Notes section is greater than 20k and cannot be saved. Do you "
      u"want to change it?",
      u"Warning", BoxIcon::warning, BoxButtons::yes_no_cancel, true);
  if (answer == BoxAnswer::cancel) dialog.close(kCancelled);
  return answer == BoxAnswer::no;
}

// What could not be saved is not lost: the editor stays, and what is gone can be made anew.
void AppointmentProcedure::store(Dialog& dialog) {
  const SaveResult result = save_appointment(context_.operation(), draft_.opened, draft_.form);
  if (result == SaveResult::saved) {
    remember_location();
    return dialog.close(kSaved);
  }
  const bool gone = result == SaveResult::gone;
  const BoxAnswer go_on = context_.host.boxes.show(
      load_string(gone ? StringId::box_go_on_new : StringId::box_go_on, context_.language()),
      load_string(StringId::box_warning, context_.language()), BoxIcon::warning,
      BoxButtons::yes_no);
  if (go_on != BoxAnswer::yes)
    dialog.close(kCancelled);
  else if (gone)
    dialog.close(kGone);
  else
    dialog.focus(kLineSubject);
}

void AppointmentProcedure::remember_location() {
  const Text& location = draft_.form.location;
  if (!location.empty()) savePreTextToDB(context_.volume, location, kLocationPretexts);
  if (context_.settings.strprevlocation == location) return;
  context_.settings.strprevlocation = location;
  WriteTextSetting(context_.host.registry, u"strprevlocation", location);
  FlushSettings(context_.host.registry);
}

}  // namespace orvello
