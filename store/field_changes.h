// What part of an appointment was changed, and whether the store takes it.
#pragma once

#include <functional>
#include <optional>

#include "store/record_calendar_store.h"

namespace orvello {

// Takes the named fields from `source` and leaves the others.
void take_fields(AppointmentFields& target, const AppointmentFields& source,
                 AppointmentFieldSet named);

// Fields that wait to be saved, beside what the object that they are written to has shown.
class FieldChanges {
 public:
  // Takes what is named but notes that may not be written (see Appointment::write), which it
  // answers. `stored` gives the fields as the store has them now, nothing when it cannot be read;
  // it is asked only when notes change.
  AppointmentFieldSet write(const AppointmentFields& given, AppointmentFieldSet named,
                            const AppointmentFields& shown, const RecordCalendarStore& store,
                            const std::function<std::optional<AppointmentFields>()>& stored);

  bool empty() const { return named_.empty(); }
  bool has(AppointmentField field) const { return named_.has(field); }
  // Those fields with the changes; an all-day end is then at 23:59 of its last day.
  AppointmentFields applied_to(AppointmentFields fields) const;
  // False when notes wait and somebody else wrote ink since they were shown.
  bool notes_still_fit(const AppointmentFields& shown, const AppointmentFields& stored) const;
  // Whether a time is named that is not the shown one.
  bool moves(const AppointmentFields& shown) const;
  void clear() { named_ = {}; }

 private:
  AppointmentFields values_;  // as given
  AllDayEnd form_ = AllDayEnd::on_last_day;
  AppointmentFieldSet named_;
};

}  // namespace orvello
