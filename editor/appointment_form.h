// The appointment editor, as the program opens it.
#pragma once

#include <cstdint>

#include "ports/calendar_store.h"

namespace orvello {

// What is to be edited.
struct EditorChoice {
  std::int32_t oid = 0;               // 0: a new appointment
  CalendarDate occurrence = kNoDate;  // its start, where a row of a series was touched
  bool whole_series = false;          // the answer for a recurring one
  friend bool operator==(const EditorChoice&, const EditorChoice&) = default;
};

class AppointmentForm {
 public:
  virtual ~AppointmentForm() = default;
  virtual void edit(const EditorChoice& choice) = 0;  // modal
};

}  // namespace orvello
