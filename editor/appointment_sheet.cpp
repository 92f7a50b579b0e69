#include "editor/appointment_sheet.h"

#include "calendar/date_pictures.h"
#include "editor/occurs_rules.h"
#include "editor/reminder_rules.h"
#include "editor/rule_words.h"
#include "resources/editor_templates.h"

namespace orvello {
namespace {

template <std::size_t Count>
std::vector<Text> texts_of(const std::array<TextView, Count>& names) {
  return {names.begin(), names.end()};
}

void select_row(Dialog& dialog, int line, int edit, int row) {
  ChoiceControl& choice = *dialog.choice(edit);
  choice.select(row);
  dialog.set_text(line, dialog.text(edit));
}

}  // namespace

AppointmentSheet::AppointmentSheet(const EditorContext& context, const EditorPretexts& pretexts,
                                   AppointmentForm& form)
    : context_(context),
      pretexts_(pretexts),
      form_(form),
      times_(times_of(form, context.settings)),
      start_(context.settings, kEditStartTime, kLineStartTime),
      end_(context.settings, kEditEndTime, kLineEndTime),
      notes_(context.host) {}

void AppointmentSheet::fill(Dialog& dialog) {
  const SettingsRecord& settings = context_.settings;
  start_.fill(dialog);
  end_.fill(dialog);
  for (const int picker : {kStartDate, kEndDate}) {
    DateControl& date = *dialog.date(picker);
    date.set_picture(DatePickerPicture(settings.locale));
    date.set_calendar(settings.today, settings.firstdayofweek != 0);
  }
  fill_texts(dialog);
  fill_reminder(dialog);
  dialog.choice(kEditStatus)->set_rows(texts_of(kStatusNames));
  select_row(dialog, kLineStatus, kEditStatus, form_.busy_status);
  dialog.set_checked(kEditorAllDay, form_.all_day);
  dialog.set_checked(kEditorPrivate, form_.is_private);
  show_people(dialog);
  show_times(dialog);
  show_occurs(dialog);
  look_at_dates(dialog);
  look_at_reminder(dialog);
  // What a series has once, one of its occurrences cannot have otherwise.
  if (one())
    for (const int control : {kStartDate, kEndDate, kLineOccurs, kLineAmount, kLineUnit,
                              kLineCategories, kLineAttendees, kEditorPrivate})
      dialog.enable(control, false);
  notes_.set(dialog, form_.ink, form_.body);
}

void AppointmentSheet::fill_texts(Dialog& dialog) {
  dialog.choice(kEditSubject)->set_rows(pretexts_.subjects);
  dialog.choice(kEditLocation)->set_rows(pretexts_.locations);
  for (const int control : {kLineSubject, kEditSubject}) dialog.set_text(control, form_.subject);
  for (const int control : {kLineLocation, kEditLocation}) dialog.set_text(control, form_.location);
}

// A new one's as the settings have it, also while it is off.
void AppointmentSheet::fill_reminder(Dialog& dialog) {
  const SettingsRecord& settings = context_.settings;
  ShownReminder shown{settings.defremindtime, settings.defremindunits};
  const bool fresh = form_.choice.oid == 0;
  const bool as_set =
      !form_.reminder_set ||
      form_.reminder_minutes == reminder_minutes(format(u"%d", shown.amount), shown.unit);
  if (!fresh || !as_set) shown = shown_reminder(form_.reminder_minutes);
  dialog.set_checked(kEditorRemind, form_.reminder_set);
  dialog.choice(kEditAmount)->set_rows(opening_amounts(fresh ? 0 : shown.unit));
  for (const int control : {kLineAmount, kEditAmount})
    dialog.set_text(control, format(u"%d", shown.amount));
  dialog.choice(kEditUnit)->set_rows(texts_of(kReminderUnits));
  select_row(dialog, kLineUnit, kEditUnit, shown.unit);
}

void AppointmentSheet::show_times(Dialog& dialog) {
  start_.show(dialog, times_.start_time);
  end_.show(dialog, times_.end_time);
  dialog.date(kStartDate)->set_date(triple_of(times_.start_date));
  dialog.date(kEndDate)->set_date(triple_of(times_.end_date));
}

void AppointmentSheet::show_occurs(Dialog& dialog) {
  ChoiceControl& rows = *dialog.choice(kEditOccurs);
  rows.set_rows(occurs_rows(occurs_date(form_), context_.settings.locale));
  select_row(dialog, kLineOccurs, kEditOccurs, static_cast<int>(shown_occurs(form_)));
  if (keeps_rules()) dialog.set_text(kLineOccurs, rule_words(form_.rules, context_.language()));
}

void AppointmentSheet::show_people(Dialog& dialog) {
  dialog.set_text(kLineCategories, categories_summary(form_.categories));
  dialog.set_text(kLineAttendees, attendees_summary(form_.attendees));
}

// Dates are chosen for what happens once; of one occurrence they are only told. Where there are
// none, the times stand in their place, and what takes whole days has no times.
void AppointmentSheet::look_at_dates(Dialog& dialog) {
  const bool all_day = dialog.checked(kEditorAllDay);
  const bool dates = !form_.recurring || one();
  for (const int date : {kStartDate, kEndDate}) dialog.show(date, dates);
  for (const int label : {kAllDayStart, kAllDayEnd}) dialog.show(label, all_day && !dates);
  for (const int line : {kLineStartTime, kLineEndTime}) dialog.show(line, !all_day);
  for (const int control : {kLineStartTime, kEditStartTime, kLineEndTime, kEditEndTime})
    dialog.set_place(control, dates ? time_place(control) : lone_time_place(control));
}

void AppointmentSheet::look_at_reminder(Dialog& dialog) {
  const bool reminds = dialog.checked(kEditorRemind);
  for (const int control : {kLabelReminder, kLineAmount, kLineUnit}) dialog.show(control, reminds);
}

AppointmentForm AppointmentSheet::gathered(Dialog& dialog) const {
  AppointmentForm form = form_;
  // Both hold the same, but for an edit that is open.
  form.subject = cut(dialog.text(kEditSubject), kSubjectLength);
  form.location = cut(dialog.text(kEditLocation), kLocationLength);
  form.all_day = dialog.checked(kEditorAllDay);
  form.is_private = dialog.checked(kEditorPrivate);
  form.reminder_set = dialog.checked(kEditorRemind);
  form.reminder_minutes = form.reminder_set ? reminder_minutes(dialog.text(kEditAmount),
                                                               dialog.choice(kEditUnit)->selected())
                                            : 0;
  form.busy_status = dialog.choice(kEditStatus)->selected();
  apply_times(form, times_);
  EditorNotes::Parts notes = notes_.parts(dialog);
  form.ink = std::move(notes.ink);
  form.body = std::move(notes.body);
  return form;
}

}  // namespace orvello
