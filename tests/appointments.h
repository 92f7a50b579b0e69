// Appointments for tests.
#pragma once

#include <gtest/gtest.h>

#include "calendar/dates.h"
#include "store/appointment_record.h"

namespace orvello {

// One hour on a day, from this hour on.
inline AppointmentRecord one_hour(const MonthDayYear& date, int hour, TextView subject) {
  AppointmentRecord record;
  record.fields.subject = subject;
  record.start = midnight_of(day_of(date)) + hour * 3600;
  record.end = record.start + 3600;
  record.fields.start = to_calendar_date(record.start);
  record.fields.end = to_calendar_date(record.end);
  return record;
}

// Every field, all of which the store takes.
inline void write_all(Appointment& item, const AppointmentFields& fields) {
  EXPECT_TRUE(item.write(fields, AppointmentFieldSet::all()).empty());
}

}  // namespace orvello
