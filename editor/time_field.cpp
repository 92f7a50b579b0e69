#include "editor/time_field.h"

#include "calendar/typed_time.h"
#include "resources/strings.h"

namespace orvello {

void TimeField::fill(Dialog& dialog) const {
  ChoiceList half_hours;
  FillHalfHourList(half_hours, settings_.timeformat != 0, settings_.locale);
  if (ChoiceControl* combo = dialog.choice(combo_)) combo->set_rows(half_hours.items);
}

void TimeField::show(Dialog& dialog, CalendarDate time_of_day) {
  const bool clock24 = settings_.timeformat != 0;
  time_ = time_of_day;
  ChoiceList shown;
  ShowTimeInCombo(shown, time_of_day, clock24, settings_.locale);
  shown_ = shown.edit_text;
  dialog.set_text(combo_, shown_);
  if (line_ != 0) dialog.set_text(line_, FormatTimeOfDay(time_of_day, clock24, settings_.locale));
}

// A time that was not touched stays exact, whatever its seconds.
TimeField::Typed TimeField::take(Dialog& dialog) {
  const Text typed = dialog.text(combo_);
  if (typed == shown_) return Typed::same;
  const auto time = typed_time(typed, settings_.locale);
  const CalendarDate before = time_;
  show(dialog, time.value_or(time_));
  if (!time) return Typed::none;
  return before == *time ? Typed::same : Typed::other;
}

TimeField::Typed TimeField::take(Dialog& dialog, MessageBoxes& boxes) {
  const Text typed(cut(trimmed(dialog.text(combo_)), 40));
  const Typed taken = take(dialog);
  if (taken == Typed::none)
    boxes.show(typed.empty() ? format(load_string(StringId::box_no_time, boxes), shown_)
                             : format(load_string(StringId::box_not_a_time, boxes), typed, shown_),
               load_string(StringId::box_warning, boxes), BoxIcon::warning);
  return taken;
}

}  // namespace orvello
