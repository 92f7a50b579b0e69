#include "store/pim/pim_application.h"

#include "store/pim/pim_folder.h"
#include "store/record_pattern.h"

namespace orvello {

// What opening says of a failure is all that a person is told of it.
bool PimApplication::logon(StoreListener* listener) {
  store_.forget_problem();
  const auto window = static_cast<std::int32_t>(store_.notified_window());
  if (!object_.call(PimName::logon, PimValue::number(window))) return false;
  logged_on_ = true;
  store_.opened(*this);
  return RecordApplication::logon(listener);
}

void PimApplication::logoff() {
  RecordApplication::logoff();
  if (!logged_on_) return;
  logged_on_ = false;
  store_.closed(*this);
  object_.call(PimName::logoff);
}

std::unique_ptr<StoreFolder> PimApplication::default_folder(int folder) {
  store_.forget_problem();
  auto object =
      object_.made_by(PimName::get_default_folder, PimKind::folder, PimValue::number(folder));
  if (!object || !*object) return nullptr;
  return std::make_unique<PimFolder>(store_, *this, folder, std::move(*object));
}

// As it is on the device; of an occurrence that one alone.
bool PimApplication::beam(Appointment& appointment) {
  auto item = store_.item(appointment.oid());
  if (item && *item && dynamic_cast<const RecordOccurrence*>(&appointment)) {
    AppointmentFields fields;
    appointment.read(fields);
    const auto pattern = item->made_by(PimName::get_recurrence_pattern, PimKind::pattern);
    item = pattern && *pattern ? pattern->made_by(PimName::get_occurrence, PimKind::appointment,
                                                  PimValue::moment(fields.start))
                               : std::nullopt;
  }
  if (item && *item) return store_.beam(*item);
  store_.cannot_read();
  return false;
}

std::unique_ptr<StoreItems> PimFolder::items() {
  return calendar_ ? store_.items_of(object_) : RecordFolder::items();
}

bool PimFolder::enable_notifications() {
  return RecordFolder::enable_notifications() && switch_on_notifications(object_);
}

}  // namespace orvello
