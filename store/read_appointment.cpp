#include "store/item_operations.h"
#include "store/meant_appointment.h"
#include "store/save_appointment.h"
#include "store/wait_cursor.h"

namespace orvello {

FormRead read_appointment(const OperationContext& context, AppointmentForm& form) {
  using Lack = MeantAppointment::Lack;
  AppointmentForm read;
  read.choice = form.choice;
  bool found = false, has_item = false;
  {
    const WaitCursor waiting(context.window);
    auto meant = meant_appointment(context.session, context.boxes, read.choice);
    // What was one of a series and is not any more is edited as what it is now.
    if (meant.lack == Lack::occurrence && !meant.item->is_recurring()) {
      meant.lack = Lack::none;
      read.choice.scope = EditScope::series;
    }
    has_item = meant.lack == Lack::none || meant.item;
    found =
        meant.lack == Lack::none && fill_form(context.session.app()->all_day_end(), meant, read);
    if (found && read.choice.scope == EditScope::occurrence)
      read.choice.occurrence = joined(whole_day(read.start_date), read.start_time);
  }
  if (found) {
    form = std::move(read);
    return FormRead::read;
  }
  const bool one = has_item && read.choice.scope != EditScope::series;
  context.boxes.show(
      with_reason(context.session, one ? u"Error getting single occurrence appointment info"
                                       : u"Error getting appointment info"),
      u"Error");
  return one ? FormRead::occurrence_failed : FormRead::failed;
}

}  // namespace orvello
