#include "editor/appointment_rules.h"

#include <bit>
#include <cmath>

#include "calendar/dates.h"
#include "calendar/time_slots.h"
#include "editor/occurs_rules.h"
#include "editor/reminder_rules.h"

namespace orvello {
namespace {

constexpr std::size_t kSummaryLength = 79;
constexpr std::int64_t kMostDays = 31;
constexpr std::int32_t kDayMinutes = 1440;

LocalSeconds moment(CalendarDate date, CalendarDate time) {
  return midnight_of(whole_day(date)) + second_of_day(to_seconds(time));
}

std::int64_t length_of(const FormTimes& times) {
  return moment(times.end_date, times.end_time) - moment(times.start_date, times.start_time);
}

void put_end(FormTimes& times, LocalSeconds end) {
  times.end_date = to_calendar_date(day_of(end));
  times.end_time = to_calendar_date(LocalSeconds(second_of_day(end)));
}

CalendarDate after_days(CalendarDate date, int days) {
  return to_calendar_date(whole_day(date) + days);
}

// The pattern with the times; of an all-day one they say how many days an occurrence takes.
void put_times(RecurrencePattern& pattern, const FormTimes& times, bool all_day) {
  const std::int32_t days = whole_day(times.end_date) - whole_day(times.start_date);
  if (all_day) {
    pattern.duration = (std::max(days, 0) + 1) * kDayMinutes - 1;
    pattern.start_time = 0;
    pattern.end_time = static_cast<double>(kDayMinutes - 1) / kDayMinutes;
    return;
  }
  pattern.duration = static_cast<std::int32_t>(length_of(times) / 60);
  pattern.start_time = times.start_time;
  pattern.end_time = times.end_time;
}

}  // namespace

bool has_end_date(const RecurrencePattern& pattern) {
  return !pattern.no_end_date && pattern.pattern_end_date > 0 && pattern.pattern_end_date < kNoDate;
}

CalendarDate all_day_end_time() { return std::bit_cast<double>(UINT64_C(0x3F95555318ABC870)); }

AppointmentForm new_appointment(const SettingsRecord& settings) {
  AppointmentForm form;
  form.start_date = form.end_date = calendar_date_of(settings.shown);
  form.start_time = time_at(settings.default_start);
  form.end_time = time_at(settings.default_end);
  if (form.end_time < form.start_time) form.end_date = after_days(form.end_date, 1);
  form.reminder_set = settings.defremindme != 0;
  if (form.reminder_set)
    form.reminder_minutes =
        reminder_minutes(format(u"%d", settings.defremindtime), settings.defremindunits);
  if (settings.strdefcategory != kNoCategory) form.categories = settings.strdefcategory;
  form.pattern = fresh_pattern(form.start_date);
  return form;
}

AppointmentForm as_new(const AppointmentForm& form) {
  AppointmentForm fresh = form;
  fresh.choice = {};
  if (!form.recurring) return fresh;
  if (form.choice.scope != EditScope::occurrence && form.rules.empty()) return fresh;
  fresh.recurring = false;
  fresh.rules.clear();
  fresh.pattern = fresh_pattern(form.start_date);
  return fresh;
}

Text offered_location(const std::vector<Text>& pretexts, TextView previous) {
  for (const Text& text : pretexts)
    if (text == previous) return text;
  return pretexts.empty() ? Text() : pretexts.front();
}

Text summary_of(const std::vector<Text>& names) {
  Text summary;
  for (const Text& name : names) {
    if (&name != &names.front()) summary += u',';
    summary += name;
    if (summary.size() > kSummaryLength) return cut(summary, kSummaryLength - 3) + u"...";
  }
  return summary;
}

Text categories_summary(TextView categories) {
  return categories.empty() ? Text(kNoCategories) : summary_of(split(categories, u','));
}

Text attendees_summary(const std::vector<StoreRecipient>& attendees) {
  std::vector<Text> names;
  for (const StoreRecipient& attendee : attendees)
    names.push_back(attendee.name.empty() ? attendee.address : attendee.name);
  return names.empty() ? Text(kNoAttendees) : summary_of(names);
}

FormTimes times_of(const AppointmentForm& form, const SettingsRecord& settings) {
  FormTimes times{form.start_date, form.end_date, form.start_time, form.end_time};
  if (form.recurring && form.choice.scope != EditScope::occurrence) {
    if (form.rules.empty()) times.start_date = form.pattern.pattern_start_date;
    put_end(times, moment(times.start_date, form.all_day ? 0 : form.start_time) +
                       std::int64_t{form.pattern.duration} * 60);
    times.end_time = form.end_time;
  }
  if (form.all_day) {
    times.start_time = time_at(settings.default_start);
    times.end_time = time_at(settings.default_end);
  }
  return times;
}

void set_start_time(FormTimes& times, CalendarDate time) {
  std::int64_t length = length_of(times);
  // An end that was before the start: of the next day then.
  if (length < 0) length = floor_mod(length, kSecondsPerDay);
  times.start_time = time;
  put_end(times, moment(times.start_date, time) + length);
}

void set_end_time(FormTimes& times, CalendarDate time, bool dates_fixed) {
  const bool short_one = length_of(times) < kSecondsPerDay;
  times.end_time = time;
  if (dates_fixed && short_one)
    times.end_date = after_days(times.start_date, time < times.start_time ? 1 : 0);
}

void set_start_date(FormTimes& times, CalendarDate date) {
  const int days = whole_day(times.end_date) - whole_day(times.start_date);
  times.start_date = date;
  times.end_date = after_days(date, days);
}

void set_end_date(FormTimes& times, CalendarDate date) {
  times.end_date = date;
  if (date < times.start_date) times.start_date = date;
}

void apply_times(AppointmentForm& form, const FormTimes& times) {
  const bool occurrence = form.choice.scope == EditScope::occurrence;
  form.start_time = form.all_day ? 0 : times.start_time;
  form.end_time = form.all_day ? all_day_end_time() : times.end_time;
  if (occurrence) {
    // It begins on its day; where it runs past midnight now, it ends on the next one.
    form.end_date = times.end_date;
  } else if (!form.recurring) {
    form.start_date = times.start_date;
    form.end_date = times.end_date;
  } else if (!form.rules.empty()) {
    form.end_date = times.end_date;
    put_times(form.pattern, times, form.all_day);
  } else {
    put_times(form.pattern, times, form.all_day);
    form.start_date = form.pattern.pattern_start_date;
    form.end_date = has_end_date(form.pattern) ? form.pattern.pattern_end_date : kNoDate;
  }
}

std::optional<FormFault> first_fault(const AppointmentForm& form) {
  constexpr TextView caption = u"Error Warning";
  const std::int64_t length =
      moment(form.end_date, form.end_time) - moment(form.start_date, form.start_time);
  // A series ends with an occurrence, which may run past midnight.
  const bool in_order = form.recurring && form.choice.scope != EditScope::occurrence
                            ? form.end_date >= form.start_date
                            : length >= 0;
  if (length / kSecondsPerDay > kMostDays && !form.pattern.no_end_date && !form.recurring)
    return FormFault{u"Duration of appointment must be less than 31 days!", caption};
  if (form.reminder_minutes > kMostReminderMinutes)
    return FormFault{u"Reminder time cannot be greater than than 45 days!", caption};
  if (!in_order) return FormFault{u"The defined start date must be before the end date!", caption};
  return std::nullopt;
}

}  // namespace orvello
