// What fields of the appointment form do to each other once something was chosen or typed.
#include "editor/appointment_sheet.h"
#include "editor/chooser.h"
#include "editor/edit_recurrence.h"
#include "editor/occurs_rules.h"
#include "editor/reminder_rules.h"

namespace orvello {

void AppointmentSheet::take_text(Dialog& dialog, int line, int edit) {
  dialog.set_text(line, dialog.text(edit));
}

bool AppointmentSheet::take_time(Dialog& dialog, bool start) {
  TimeField& field = start ? start_ : end_;
  const TimeField::Typed typed = field.take(dialog, context_.host.boxes);
  if (typed != TimeField::Typed::other) return typed == TimeField::Typed::same;
  if (start)
    set_start_time(times_, field.time());
  else
    set_end_time(times_, field.time(), form_.recurring);
  show_times(dialog);
  return true;
}

void AppointmentSheet::take_amount(Dialog& dialog) {
  const Text amount = checked_amount(dialog.text(kEditAmount));
  for (const int control : {kEditAmount, kLineAmount}) dialog.set_text(control, amount);
}

void AppointmentSheet::take_row(Dialog& dialog, int line) {
  if (line == kLineOccurs) return take_occurs(dialog);
  const int edit = line == kLineUnit ? kEditUnit : kEditStatus;
  dialog.set_text(line, dialog.text(edit));
  if (line == kLineUnit)
    dialog.choice(kEditAmount)->set_rows(amounts_of(dialog.choice(kEditUnit)->selected()));
}

void AppointmentSheet::take_start_date(Dialog& dialog) {
  const CalendarDate date = calendar_date_of(dialog.date(kStartDate)->date());
  if (date == times_.start_date || one()) return;
  set_start_date(times_, date);
  take_days(form_.pattern, date);
  form_.start_date = form_.pattern.pattern_start_date = date;
  show_times(dialog);
  show_occurs(dialog);
}

void AppointmentSheet::take_end_date(Dialog& dialog) {
  const CalendarDate date = calendar_date_of(dialog.date(kEndDate)->date());
  if (date == times_.end_date || one()) return;
  const CalendarDate start = times_.start_date;
  set_end_date(times_, date);
  if (times_.start_date == start) return;
  dialog.date(kStartDate)->set_date(triple_of(times_.start_date));
  take_days(form_.pattern, times_.start_date);
  form_.start_date = form_.pattern.pattern_start_date = times_.start_date;
  show_occurs(dialog);
}

// A series that has an end becomes one appointment until then.
void AppointmentSheet::take_occurs(Dialog& dialog) {
  const auto row = static_cast<Occurs>(dialog.choice(kEditOccurs)->selected());
  if (row == Occurs::once) {
    if (form_.recurring && form_.rules.empty() && has_end_date(form_.pattern))
      times_.end_date = form_.pattern.pattern_end_date;
    form_.recurring = false;
    form_.rules.clear();
    form_.start_date = times_.start_date;
  } else if (row == Occurs::pattern) {
    if (!edit_pattern()) return show_occurs(dialog);
  } else {
    form_.pattern = simple_pattern(row, form_.pattern, times_.start_date);
    form_.recurring = true;
    form_.rules.clear();
  }
  show_times(dialog);
  show_occurs(dialog);
  look_at_dates(dialog);
}

bool AppointmentSheet::edit_pattern() {
  RecurrencePattern pattern = keeps_rules() ? fresh_pattern(times_.start_date) : form_.pattern;
  if (!form_.recurring || keeps_rules()) pattern.pattern_start_date = times_.start_date;
  pattern.start_time = times_.start_time;
  pattern.end_time = times_.end_time;
  const std::string_view rules = keeps_rules() ? form_.rules : std::string_view();
  if (!edit_recurrence(context_, pattern, form_.all_day, rules)) return false;
  form_.pattern = pattern;
  form_.recurring = true;
  form_.rules.clear();
  set_start_date(times_, pattern.pattern_start_date);
  if (form_.all_day) return true;
  const bool other_end = pattern.end_time != times_.end_time;
  if (pattern.start_time != times_.start_time) set_start_time(times_, pattern.start_time);
  if (other_end) set_end_time(times_, pattern.end_time, true);
  return true;
}

void AppointmentSheet::take_all_day(Dialog& dialog) {
  form_.all_day = dialog.checked(kEditorAllDay);
  look_at_dates(dialog);
}

void AppointmentSheet::take_remind(Dialog& dialog) { look_at_reminder(dialog); }

void AppointmentSheet::choose(Dialog& dialog, int line) {
  if (line == kLineCategories) {
    if (choose_categories(context_, form_.categories))
      form_.categories = cut(form_.categories, kCategoriesLength);
  } else if (choose_attendees(context_, form_.attendees)) {
    for (StoreRecipient& attendee : form_.attendees)
      attendee = {cut(attendee.name, kAttendeeNameLength),
                  cut(attendee.address, kAttendeeAddressLength)};
  }
  show_people(dialog);
}

}  // namespace orvello
