// A whole appointment of the device, read as a record and made what a record says.
#pragma once

#include <optional>
#include <string>

#include "store/device_time.h"
#include "store/pim/pim_series.h"

namespace orvello {

// The item with everything that the platform has of it, in the device's own time; without its ink
// unless `ink`. Nothing: failure.
std::optional<AppointmentRecord> read_record(const PimObject& item, std::int32_t oid,
                                             const std::string& uid, bool ink, const PimForm& form,
                                             DeviceTime& time);

// Makes the item, which is as `before` says (null: a new one), what the record says, and saves it.
// The record is as stores keep them: complete, without zone and rules. What stays as it was is not
// written. False: failure; `saves` tells how many times the item was saved by then, so that it may
// be half of both.
[[nodiscard]] bool write_record(const PimObject& item, const AppointmentRecord* before,
                                const AppointmentRecord& record, const PimForm& form, int& saves);

}  // namespace orvello
