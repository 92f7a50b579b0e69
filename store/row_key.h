// The occurrence that a row, a line or a bar stands for.
#pragma once

#include <cstdint>

#include "calendar/calendar_date.h"

namespace orvello {

struct RowKey {
  std::int32_t oid = 0;          // 0: none
  CalendarDate start = kNoDate;  // of the occurrence; kNoDate: of none alone
  explicit operator bool() const { return oid != 0; }
  friend bool operator==(const RowKey&, const RowKey&) = default;
};

}  // namespace orvello
