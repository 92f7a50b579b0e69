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
  ControlTemplate& add(Kind kind, int id, TextView russian, TextView english, const Rect& place,
                       Across across = Across::keep) {
    ControlTemplate& control = add(kind, id, place, across);
    control.text = language_ == Language::russian ? russian : english;
    return control;
  }
  void label(int id, TextView russian, TextView english, int x, int y, int width) {
    add(Kind::label, id, russian, english, {x, y, width, kTouched});
  }
  void radio(int id, TextView russian, TextView english, int y, int width, int group) {
    add(Kind::radio_button, id, russian, english, {4, y, width, kTouched}).group = group;
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
  add(Kind::label, kControlTimesLabel, u"Какое время начало и конца события?",
      u"What are the start and end times?", {4, 4, 232, 28}, Across::stretch);
  add(Kind::label, kControlStartTimeLabel, u"Время начала:", u"Start time:", {4, 36, 112, 18},
      Across::left_half);
  add(Kind::combo, kControlRecurrenceStartTime, {4, 54, 112, kTouched}, Across::left_half).limit =
      kTypedTimeLimit;
  add(Kind::label, kControlEndTimeLabel, u"Конец времени:", u"End time:", {4, 85, 112, 18},
      Across::left_half);
  add(Kind::combo, kControlRecurrenceEndTime, {4, 103, 112, kTouched}, Across::left_half).limit =
      kTypedTimeLimit;
  add(Kind::list, kControlRecurrenceType, {120, 36, 116, 108}, Across::right_half);
}

void RecurrenceTemplate::add_daily() {
  step_ = kStepDaily;
  radio(kControlEveryDays, u"Каждый", u"Every", kRows[0], 84, 1);
  number(kControlDailyInterval, 92, kRows[0], 60);
  label(kControlDaysLabel, u"день(-ей)", u"day(s)", 156, kRows[0], 80);
  radio(kControlEveryWeekday, u"Каждую неделю", u"Every weekday", kRows[1], 132, 1);
  label(kControlWeekdaysLabel, u"Пн – Пт", u"Mo – Fr", 140, kRows[1], 96);
}

void RecurrenceTemplate::add_weekly() {
  step_ = kStepWeekly;
  label(kControlEveryWeeksLabel, u"Каждую", u"Every", 4, kRows[0], 56);
  number(kControlWeeklyInterval, 64, kRows[0], 60);
  label(kControlWeeksLabel, u"неделю(-и)", u"week(s)", 128, kRows[0], 108);
  constexpr TextView russian[] = {u"Вс", u"Пн", u"Вт", u"Ср", u"Чт", u"Пт", u"Сб"};
  constexpr TextView english[] = {u"Su", u"Mo", u"Tu", u"We", u"Th", u"Fr", u"Sa"};
  for (int column = 0; column < 7; ++column) {  // Monday first
    const int day = (column + 1) % 7;
    add(Kind::toggle, kControlWeekdays[day], russian[day], english[day],
        {4 + 33 * column, 40, 29, 32});
  }
}

void RecurrenceTemplate::add_monthly() {
  constexpr int field = 60, beside = 132;
  step_ = kStepMonthly;
  radio(kControlMonthDayChoice, u"День", u"Day", kRows[0], 52, 2);
  number(kControlMonthDay, field, kRows[0], 68);
  label(kControlEveryMonthsLabel, u"каждый", u"of every", 8, kRows[1], 50);
  number(kControlMonthlyInterval, field, kRows[1], 68);
  label(kControlMonthsLabel, u"месяц(ев)", u"month(s)", beside, kRows[1], 104);
  radio(kControlMonthNthChoice, u"Или", u"The", kRows[2] + 8, 52, 2);
  list(kControlMonthInstance, field, kRows[2] + 8, 68);
  list(kControlMonthKind, beside, kRows[2] + 8, 104, Across::stretch);
  label(kControlEveryMonthsNthLabel, u"каждый", u"of every", 8, kRows[3] + 8, 50);
  number(kControlNthInterval, field, kRows[3] + 8, 68);
  label(kControlMonthsNthLabel, u"месяц(ев)", u"month(s)", beside, kRows[3] + 8, 104);
}

void RecurrenceTemplate::add_yearly() {
  constexpr int field = 60, beside = 132;
  step_ = kStepYearly;
  radio(kControlYearDayChoice, u"Каждый", u"Every", kRows[0], 68, 3);
  list(kControlYearMonth, 76, kRows[0], 100);
  number(kControlYearDay, 180, kRows[0], 56);
  radio(kControlYearNthChoice, u"Или", u"The", kRows[1] + 4, 52, 3);
  list(kControlYearInstance, field, kRows[1] + 4, 68);
  list(kControlYearKind, beside, kRows[1] + 4, 104, Across::stretch);
  label(kControlOfLabel, u"of", u"of", 24, kRows[2] + 4, 32);
  list(kControlNthMonth, field, kRows[2] + 4, 100);
  constexpr int years = kRows[3] + 12;
  label(kControlEveryYearsLabel, u"Каждые", u"Every", 4, years, 52);
  number(kControlYearlyInterval, field, years, 68);
  label(kControlYearsLabel, u"год (лет)", u"year(s)", beside, years, 104);
  for (std::size_t i = dialog.controls.size() - 3; i < dialog.controls.size(); ++i)
    dialog.controls[i].hidden = true;
}

void RecurrenceTemplate::add_range() {
  constexpr int rows[] = {4, 33, 62, 91};
  step_ = kStepRange;
  label(kControlRangeStartLabel, u"Начало:", u"Start:", 4, rows[0], 80);
  add(Kind::date_picker, kControlRangeStart, {88, rows[0], 148, kTouched}, Across::stretch);
  radio(kControlNoEnd, u"Не заканчивается", u"No end", rows[1], 232, 4);
  radio(kControlEndBy, u"Конец на", u"End by", rows[2], 80, 4);
  add(Kind::date_picker, kControlRangeEnd, {88, rows[2], 148, kTouched}, Across::stretch);
  radio(kControlEndAfter, u"Конец при", u"End after", rows[3], 80, 4);
  number(kControlCount, 88, rows[3], 48);
  label(kControlCountLabel, u"напоминании(-ях)", u"occurrence(s)", 140, rows[3], 96);
  add(Kind::label, kControlSummary, {4, 119, 232, 32}, Across::stretch).color = kSummaryColor;
}

// Done stands in the place of Next, which goes where there is no further step.
void RecurrenceTemplate::add_buttons() {
  constexpr int width = 55, top = kStepHeight - 4 - kTouched;
  const auto button = [&](Kind kind, int id, TextView russian, TextView english, int column,
                          Across across) -> ControlTemplate& {
    ControlTemplate& added =
        add(kind, id, russian, english, {4 + 59 * column, top, width, kTouched}, across);
    added.down = Down::bottom;
    return added;
  };
  step_ = 0;
  button(Kind::button, kControlHeaderCancel, u"Отмена", u"Cancel", 0, Across::keep);
  button(Kind::button, kControlPreviousStep, u"Назад", u"Back", 1, Across::right);
  button(Kind::button, kControlNextStep, u"Вперед", u"Next", 2, Across::right);
  step_ = kStepRange;
  button(Kind::button, kControlDone, u"Готово", u"Done", 2, Across::right).hidden = true;
  step_ = 0;
  button(Kind::default_button, kControlHeaderOk, u"ОК", u"OK", 3, Across::right);
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
