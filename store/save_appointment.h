// The appointment form read from the store and saved into it.
#pragma once

#include "store/appointment_form.h"
#include "store/operation_context.h"

namespace orvello {

enum class FormRead {
  read,
  failed,            // told; the form stays as it was
  occurrence_failed  // told likewise
};

// Fills the form from the appointment that `form.choice` names. An occurrence is read with its
// series' pattern.
FormRead read_appointment(const OperationContext& context, AppointmentForm& form);

enum class SaveResult {
  saved,
  not_saved,  // told why; nothing was changed
  gone        // told: the appointment is not there any more
};

// Saves what differs between `opened`, the form as it was read (of a new appointment: as it was
// first shown), and `form`; everything else keeps what the store has. `form.choice.oid` is that of
// what was saved afterwards.
SaveResult save_appointment(const OperationContext& context, const AppointmentForm& opened,
                            AppointmentForm& form);

}  // namespace orvello
