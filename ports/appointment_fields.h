// The parts of an appointment, by value and by name.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <initializer_list>
#include <string>

#include "base/text.h"
#include "calendar/calendar_date.h"

namespace orvello {

enum class BusyStatus : std::int32_t { free = 0, tentative = 1, busy = 2, out_of_office = 3 };

// Everything an appointment holds besides its recurrence and its recipients.
//
// `body` and `body_ink` are one thing, the notes: the ink is what the notes pane holds, byte for
// byte, and the body is its plain text, which is what bubbles, searches and exports show. See
// Appointment::write for how the two are kept together.
struct AppointmentFields {
  Text subject;
  Text location;
  Text categories;
  Text body;
  std::string body_ink;  // empty: the notes are `body` alone
  CalendarDate start = kNoDate;
  CalendarDate end = kNoDate;  // of an all-day item: see AllDayEnd
  bool all_day = false;
  bool reminder_set = false;
  std::int32_t reminder_minutes = 15;
  std::int32_t sensitivity = 0;  // 2: private
  BusyStatus busy_status = BusyStatus::busy;
  friend bool operator==(const AppointmentFields&, const AppointmentFields&) = default;
};

enum class AppointmentField : std::uint32_t {
  subject,
  location,
  categories,
  body,
  ink,
  start,
  end,
  all_day,
  reminder_set,
  reminder_minutes,
  sensitivity,
  busy_status,
};
inline constexpr int kAppointmentFields = 12;

class AppointmentFieldSet {
 public:
  constexpr AppointmentFieldSet() = default;
  constexpr AppointmentFieldSet(std::initializer_list<AppointmentField> fields) {
    for (const AppointmentField field : fields) bits_ |= bit_of(field);
  }
  static constexpr AppointmentFieldSet all() {
    AppointmentFieldSet set;
    set.bits_ = (1u << kAppointmentFields) - 1;
    return set;
  }
  constexpr bool empty() const { return bits_ == 0; }
  constexpr int size() const { return std::popcount(bits_); }
  constexpr bool has(AppointmentField field) const { return (bits_ & bit_of(field)) != 0; }
  constexpr void add(AppointmentField field) { bits_ |= bit_of(field); }
  constexpr void add(AppointmentFieldSet other) { bits_ |= other.bits_; }
  constexpr void take_out(AppointmentField field) { bits_ &= ~bit_of(field); }
  friend constexpr bool operator==(AppointmentFieldSet, AppointmentFieldSet) = default;

 private:
  static constexpr std::uint32_t bit_of(AppointmentField field) {
    return 1u << static_cast<std::uint32_t>(field);
  }
  std::uint32_t bits_ = 0;
};

// Where an all-day item's end lies. The port gives and takes it as the platform stores it; these
// two are the one place where it becomes what the program works with, 23:59 of the last day, and
// back. Who walks a collection by each_item() is given that already.
enum class AllDayEnd {
  on_last_day,    // at any time of its last day, such as 23:59 or just under half past midnight
  next_midnight,  // at the midnight that ends its last day: platform generation 3
};

inline CalendarDate own_end(CalendarDate start, CalendarDate end, AllDayEnd form) {
  if (end == kNoDate) return end;
  const auto last = whole_day(end) - (form == AllDayEnd::next_midnight ? 1 : 0);
  return joined(std::max(last, whole_day(start)), (23 * 60 + 59) / 1440.0);
}

inline CalendarDate stored_end(CalendarDate own, AllDayEnd form) {
  if (own == kNoDate || form == AllDayEnd::on_last_day) return own;
  return joined(whole_day(own) + 1, 0);
}

}  // namespace orvello
