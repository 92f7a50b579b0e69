// The recurrence editor: three steps in one form, of which the second has a page a kind.
#include "resources/dialog_templates.h"
#include "resources/recurrence_ids.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Across = ControlTemplate::Across;
using Down = ControlTemplate::Down;

constexpr int kStepWidth = 240, kStepHeight = 200, kTouched = 27;
constexpr int kRows[] = {4, 35, 66, 97};  // tops of what is touched
constexpr Color kSummaryColor = rgb(106, 108, 122);
constexpr int kNumberLimit = 9;  // digits
constexpr int kTypedTimeLimit = 20;

// Adds the controls of one step after the other.
class RecurrenceTemplate {
 public:
  explicit RecurrenceTemplate(Language language) : language_(language) {
    dialog.id = kDialogRecurrence;
    dialog.title = u"Appointment - Recurring";
    dialog.size = {kStepWidth, kStepHeight};
  }

  void add_times();
  void add_daily();
  void add_weekly();
  void add_monthly();
  void add_yearly();
  void add_range();
  void add_buttons();

  DialogTemplate dialog;

 private:
  ControlTemplate& add(Kind kind, int id, const Rect& place, Across across = Across::keep) {
    ControlTemplate control;
    control.kind = kind;
    control.id = id;
    control.place = place;
    control.across = across;
    control.step = step_;
    return dialog.controls.emplace_back(std::move(control));
  }
  ControlTemplate& add(Kind kind, int id, StringId text, const Rect& place,
                       Across across = Across::keep) {
    ControlTemplate& control = add(kind, id, place, across);
    control.text = load_string(text, language_);
    return control;
  }
  void label(int id, StringId text, int x, int y, int width) {
    add(Kind::label, id, text, {x, y, width, kTouched});
  }
  void radio(int id, StringId text, int y, int width, int group) {
    add(Kind::radio_button, id, text, {4, y, width, kTouched}).group = group;
  }
  void number(int id, int x, int y, int width) {
    add(Kind::combo, id, {x, y, width, kTouched}).limit = kNumberLimit;
  }
  void list(int id, int x, int y, int width, Across across = Across::keep) {
    add(Kind::drop_list, id, {x, y, width, kTouched}, across);
  }

  Language language_;
  int step_ = 0;
};

void RecurrenceTemplate::add_times() {
  step_ = kStepTimes;
  add(Kind::label, kControlTimesLabel, StringId::recur_times, {4, 4, 232, 28}, Across::stretch);
  add(Kind::label, kControlStartTimeLabel, StringId::recur_start_time, {4, 36, 112, 18},
      Across::left_half);
  add(Kind::combo, kControlRecurrenceStartTime, {4, 54, 112, kTouched}, Across::left_half).limit =
      kTypedTimeLimit;
  add(Kind::label, kControlEndTimeLabel, StringId::recur_end_time, {4, 85, 112, 18},
      Across::left_half);
  add(Kind::combo, kControlRecurrenceEndTime, {4, 103, 112, kTouched}, Across::left_half).limit =
      kTypedTimeLimit;
  add(Kind::list, kControlRecurrenceType, {120, 36, 116, 108}, Across::right_half);
}

void RecurrenceTemplate::add_daily() {
  step_ = kStepDaily;
  radio(kControlEveryDays, StringId::recur_every_days, kRows[0], 84, 1);
  number(kControlDailyInterval, 92, kRows[0], 60);
  label(kControlDaysLabel, StringId::recur_days, 156, kRows[0], 80);
  radio(kControlEveryWeekday, StringId::recur_every_weekday, kRows[1], 132, 1);
  label(kControlWeekdaysLabel, StringId::recur_weekdays, 140, kRows[1], 96);
}

void RecurrenceTemplate::add_weekly() {
  step_ = kStepWeekly;
  label(kControlEveryWeeksLabel, StringId::recur_every_weeks, 4, kRows[0], 56);
  number(kControlWeeklyInterval, 64, kRows[0], 60);
  label(kControlWeeksLabel, StringId::recur_weeks, 128, kRows[0], 108);
  const auto names = load_list(StringId::recur_weekday_buttons, language_);
  for (int column = 0; column < 7; ++column) {  // Monday first
    const auto day = static_cast<std::size_t>((column + 1) % 7);
    add(Kind::toggle, kControlWeekdays[day], {4 + 33 * column, 40, 29, 32}).text = names[day];
  }
}

void RecurrenceTemplate::add_monthly() {
  constexpr int field = 60, beside = 132;
  step_ = kStepMonthly;
  radio(kControlMonthDayChoice, StringId::recur_month_day, kRows[0], 52, 2);
  number(kControlMonthDay, field, kRows[0], 68);
  label(kControlEveryMonthsLabel, StringId::recur_every_months, 8, kRows[1], 50);
  number(kControlMonthlyInterval, field, kRows[1], 68);
  label(kControlMonthsLabel, StringId::recur_months, beside, kRows[1], 104);
  radio(kControlMonthNthChoice, StringId::recur_nth, kRows[2] + 8, 52, 2);
  list(kControlMonthInstance, field, kRows[2] + 8, 68);
  list(kControlMonthKind, beside, kRows[2] + 8, 104, Across::stretch);
  label(kControlEveryMonthsNthLabel, StringId::recur_every_months, 8, kRows[3] + 8, 50);
  number(kControlNthInterval, field, kRows[3] + 8, 68);
  label(kControlMonthsNthLabel, StringId::recur_months, beside, kRows[3] + 8, 104);
}

void RecurrenceTemplate::add_yearly() {
  constexpr int field = 60, beside = 132;
  step_ = kStepYearly;
  radio(kControlYearDayChoice, StringId::recur_year_day, kRows[0], 68, 3);
  list(kControlYearMonth, 76, kRows[0], 100);
  number(kControlYearDay, 180, kRows[0], 56);
  radio(kControlYearNthChoice, StringId::recur_nth, kRows[1] + 4, 52, 3);
  list(kControlYearInstance, field, kRows[1] + 4, 68);
  list(kControlYearKind, beside, kRows[1] + 4, 104, Across::stretch);
  label(kControlOfLabel, StringId::recur_of, 24, kRows[2] + 4, 32);
  list(kControlNthMonth, field, kRows[2] + 4, 100);
  constexpr int years = kRows[3] + 12;
  label(kControlEveryYearsLabel, StringId::recur_every_years, 4, years, 52);
  number(kControlYearlyInterval, field, years, 68);
  label(kControlYearsLabel, StringId::recur_years, beside, years, 104);
  for (std::size_t i = dialog.controls.size() - 3; i < dialog.controls.size(); ++i)
    dialog.controls[i].hidden = true;
}

void RecurrenceTemplate::add_range() {
  constexpr int rows[] = {4, 33, 62, 91};
  step_ = kStepRange;
  label(kControlRangeStartLabel, StringId::recur_range_start, 4, rows[0], 80);
  add(Kind::date_picker, kControlRangeStart, {88, rows[0], 148, kTouched}, Across::stretch);
  radio(kControlNoEnd, StringId::recur_no_end, rows[1], 232, 4);
  radio(kControlEndBy, StringId::recur_end_by, rows[2], 80, 4);
  add(Kind::date_picker, kControlRangeEnd, {88, rows[2], 148, kTouched}, Across::stretch);
  radio(kControlEndAfter, StringId::recur_end_after, rows[3], 80, 4);
  number(kControlCount, 88, rows[3], 48);
  label(kControlCountLabel, StringId::recur_count, 140, rows[3], 96);
  add(Kind::label, kControlSummary, {4, 119, 232, 32}, Across::stretch).color = kSummaryColor;
}

// Done stands in the place of Next, which goes where there is no further step.
void RecurrenceTemplate::add_buttons() {
  constexpr int width = 55, top = kStepHeight - 4 - kTouched;
  const auto button = [&](Kind kind, int id, StringId text, int column,
                          Across across) -> ControlTemplate& {
    ControlTemplate& added = add(kind, id, text, {4 + 59 * column, top, width, kTouched}, across);
    added.down = Down::bottom;
    return added;
  };
  step_ = 0;
  button(Kind::button, kControlHeaderCancel, StringId::cancel, 0, Across::keep);
  button(Kind::button, kControlPreviousStep, StringId::recur_back, 1, Across::right);
  button(Kind::button, kControlNextStep, StringId::recur_next, 2, Across::right);
  step_ = kStepRange;
  button(Kind::button, kControlDone, StringId::recur_done, 2, Across::right).hidden = true;
  step_ = 0;
  button(Kind::default_button, kControlHeaderOk, StringId::ok, 3, Across::right);
}

}  // namespace

DialogTemplate recurrence_dialog(Language language) {
  RecurrenceTemplate form(language);
  form.add_times();
  form.add_daily();
  form.add_weekly();
  form.add_monthly();
  form.add_yearly();
  form.add_range();
  form.add_buttons();
  return std::move(form.dialog);
}

}  // namespace orvello
