// An appointment's fields and recipients, as the properties of the object that the device has of
// it.
#pragma once

#include <optional>
#include <vector>

#include "ports/calendar_store.h"
#include "store/pim/automation.h"

namespace orvello {

// How the platform at hand stores what has more than one form.
struct PimForm {
  AllDayEnd all_day_end = AllDayEnd::on_last_day;
  bool ink = true;  // whether BodyInk can be had by its name
};

// Reads the wanted fields, and no others. All-day items end at 23:59 of their last day where their
// end is wanted, for which start and all_day must be. False: failure.
[[nodiscard]] bool read_fields(const PimObject& item, AppointmentFieldSet wanted,
                               const PimForm& form, AppointmentFields& fields);
// Puts the named fields, in the platform's order, to be saved later; `fields` ends all-day items as
// read_fields does. Ink and text are one thing to the platform, and the last one stands: the ink,
// which holds the text too. False: failure.
[[nodiscard]] bool write_fields(const PimObject& item, const AppointmentFields& fields,
                                AppointmentFieldSet named, const PimForm& form);
// The fields in which they differ.
AppointmentFieldSet differing_fields(const AppointmentFields& a, const AppointmentFields& b);

std::optional<std::vector<StoreRecipient>> read_recipients(const PimObject& item);
[[nodiscard]] bool write_recipients(const PimObject& item,
                                    const std::vector<StoreRecipient>& recipients);

// Calls visit(part) for each part of a collection that counts from 1, until it answers false. False
// then, or when a read broke off.
template <typename Visit>
[[nodiscard]] bool each_part(const PimObject& collection, PimKind kind, Visit visit) {
  const auto count = collection.number(PimName::count);
  for (std::int32_t index = 1; count && index <= *count; ++index) {
    const auto part = collection.made_by(PimName::item, kind, PimValue::number(index));
    if (!part || !*part || !visit(*part)) return false;
  }
  return count.has_value();
}

}  // namespace orvello
