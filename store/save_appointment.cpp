#include "store/save_appointment.h"

namespace orvello {

FormRead read_appointment(const OperationContext&, AppointmentForm&) { return FormRead::failed; }

SaveResult save_appointment(const OperationContext&, const AppointmentForm&, AppointmentForm&) {
  return SaveResult::not_saved;
}

}  // namespace orvello
