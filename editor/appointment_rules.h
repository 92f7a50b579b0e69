// The rules of the appointment form that need no dialog: how it begins, how its times hang together
// and what it must be to be saved.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "settings/settings_record.h"
#include "store/appointment_form.h"
#include "store/day_label.h"

namespace orvello {

inline constexpr TextView kNoCategories = u"No Categories...";
inline constexpr TextView kNoAttendees = u"No Attendees...";
inline constexpr std::array<TextView, 4> kStatusNames = {u"Busy", u"Free", u"Out of Office",
                                                         u"Tentative"};

// With the settings' defaults, on the day that the views show; without a location.
AppointmentForm new_appointment(const SettingsRecord& settings);
// What was typed into an appointment that is not there any more. One of several becomes single, and
// so does what had a rule that no pattern holds.
AppointmentForm as_new(const AppointmentForm& form);
// Of the ready-made ones that which was used last, else the first.
Text offered_location(const std::vector<Text>& pretexts, TextView previous);

// Names with commas between them, at most 79 units; what does not fit ends in dots.
Text summary_of(const std::vector<Text>& names);
Text categories_summary(TextView categories);
Text attendees_summary(const std::vector<StoreRecipient>& attendees);

// When an occurrence begins and ends: whole days and times of day.
struct FormTimes {
  CalendarDate start_date = 0, end_date = 0, start_time = 0, end_time = 0;
  friend bool operator==(const FormTimes&, const FormTimes&) = default;
};
// Of the appointment itself, of a series of its first occurrence. All-day ones get the settings'
// times, for the case that they will not be all-day.
FormTimes times_of(const AppointmentForm& form, const SettingsRecord& settings);
// Another start time keeps the duration, another start date the number of days, another end date
// leaves the start before it. Where the dates cannot be chosen, an end time before the start is the
// next day's.
void set_start_time(FormTimes& times, CalendarDate time);
void set_end_time(FormTimes& times, CalendarDate time, bool dates_fixed);
void set_start_date(FormTimes& times, CalendarDate date);
void set_end_date(FormTimes& times, CalendarDate date);
// Puts them into the form, as it is to be saved. Of one occurrence, and where a series keeps its
// rule, the start's date stays what it was.
void apply_times(AppointmentForm& form, const FormTimes& times);

bool has_end_date(const RecurrencePattern& pattern);

// The end of what is all-day: a hair less than half an hour after its day begins, deliberately.
CalendarDate all_day_end_time();

struct FormFault {
  TextView text;
  TextView caption;
};
// The first of what keeps the form from being saved: its length, its reminder, its order.
std::optional<FormFault> first_fault(const AppointmentForm& form);

}  // namespace orvello
