#include "editor/recurrence_procedure.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "editor/rule_words.h"
#include "resources/recurrence_ids.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kPages[] = {kStepDaily, kStepWeekly, kStepMonthly, kStepYearly};
constexpr int kFinished = 1;

bool is_time(int control) {
  return control == kControlRecurrenceStartTime || control == kControlRecurrenceEndTime;
}

bool leads_on(int control) {
  return control == kControlNextStep || control == kControlDone || control == kControlHeaderOk;
}

}  // namespace

RecurrenceProcedure::RecurrenceProcedure(const EditorContext& context, RecurrenceForm& form)
    : context_(context),
      form_(form),
      start_time_(context.settings, kControlRecurrenceStartTime),
      end_time_(context.settings, kControlRecurrenceEndTime) {}

void RecurrenceProcedure::handle(Dialog& dialog, const DialogEvent& event) {
  switch (event.kind) {
    case Event::init:
      return open(dialog);
    case Event::command:
      return pressed(dialog, event.control);
    case Event::changed:
    case Event::taken:
      time_refused_ = false;
      if (const int radio = radio_of(event.control)) dialog.set_checked(radio, true);
      if (event.kind == Event::taken || event.control == kControlRecurrenceType ||
          event.control == kControlYearMonth)
        chosen(dialog, event.control);
      return;
    case Event::focus_gained:
      if (!leads_on(event.control)) time_refused_ = false;
      return;
    case Event::focus_lost:
      if (is_time(event.control)) time_refused_ = !take_times(dialog);
      return;
    default:
      return;
  }
}

void RecurrenceProcedure::open(Dialog& dialog) {
  show_recurrence(dialog, form_,
                  {context_.host.locale.data(), context_.settings.firstdayofweek != 0,
                   TodayTriple(context_.host.clock.local_time())});
  start_time_.fill(dialog);
  start_time_.show(dialog, form_.start_time);
  end_time_.fill(dialog);
  end_time_.show(dialog, form_.end_time);
  dialog.show(kControlDone, true);
  show_step(dialog, 1);
}

void RecurrenceProcedure::pressed(Dialog& dialog, int control) {
  const bool refused = std::exchange(time_refused_, false);
  const auto day = std::find(std::begin(kControlWeekdays), std::end(kControlWeekdays), control);
  if (day != std::end(kControlWeekdays))
    return toggle_day(dialog, static_cast<int>(day - std::begin(kControlWeekdays)));
  switch (control) {
    case kControlNextStep:
      if (!refused) turn(dialog, 1);
      return;
    case kControlPreviousStep:
      return turn(dialog, -1);
    case kControlDone:
    case kControlHeaderOk:
      if (!refused) finish(dialog);
      return;
    case kControlHeaderCancel:
      return dialog.close(0);
    default:
      // A field that was left just now may have chosen its own.
      dialog.set_checked(control, true);
  }
}

void RecurrenceProcedure::chosen(Dialog& dialog, int control) {
  if (is_time(control)) take_times(dialog);
  if (control == kControlRangeStart) take_start_date(dialog);
  if (control != kControlYearMonth) return;
  read_recurrence(dialog, form_);
  choose_year_month(form_, form_.year_month);
  show_year_days(dialog, form_);
}

void RecurrenceProcedure::turn(Dialog& dialog, int by) {
  if (step_ == 1 && !take_times(dialog)) return;
  show_step(dialog, std::clamp(step_ + by, 1, 3));
}

void RecurrenceProcedure::show_step(Dialog& dialog, int step) {
  const bool keyboard_on_next = step != step_;
  step_ = step;
  read_recurrence(dialog, form_);
  const int shown = step == 1 ? kStepTimes : step == 3 ? kStepRange : kPages[form_.kind];
  dialog.set_step(shown);
  if (step == 3) dialog.set_text(kControlSummary, summary());
  dialog.enable(kControlPreviousStep, step > 1);
  dialog.show(kControlNextStep, step < 3);
  if (keyboard_on_next && step == 3) dialog.focus(kControlDone);
  if (keyboard_on_next && step == 1) dialog.focus(kControlNextStep);
}

// What will be saved, as long as that is something.
Text RecurrenceProcedure::summary() const {
  RecurrenceForm endless = form_;
  endless.end = SeriesEnd::none;
  if (recurrence_fault(endless, context_.language())) return {};
  return pattern_words(recurrence_pattern(endless, {}), context_.language());
}

void RecurrenceProcedure::toggle_day(Dialog& dialog, int day) {
  const int bit = 1 << day;
  form_.weekdays ^= bit;
  if (form_.weekdays == 0) {
    form_.weekdays = bit;
    context_.host.boxes.show(u"You must have at least one day selected!", u"Warning",
                             BoxIcon::warning);
  }
  dialog.set_checked(kControlWeekdays[day], (form_.weekdays & bit) != 0);
}

// False when what stands there is no time: the person was told, and the old one stands there again.
bool RecurrenceProcedure::take_times(Dialog& dialog) {
  if (form_.all_day) return true;
  const auto start = start_time_.take(dialog, context_.host.boxes);
  if (start == TimeField::Typed::other) {
    choose_start_time(form_, start_time_.time());
    end_time_.show(dialog, form_.end_time);
    return true;
  }
  if (start == TimeField::Typed::none) return false;
  const auto end = end_time_.take(dialog, context_.host.boxes);
  if (end == TimeField::Typed::other) form_.end_time = end_time_.time();
  return end != TimeField::Typed::none;
}

void RecurrenceProcedure::take_start_date(Dialog& dialog) {
  read_recurrence(dialog, form_);
  const CalendarDate start = calendar_date_of(dialog.date(kControlRangeStart)->date());
  if (start == form_.start_date) return;
  choose_start_date(form_, start);
  dialog.date(kControlRangeEnd)->set_date(triple_of(form_.end_date));
}

void RecurrenceProcedure::finish(Dialog& dialog) {
  if (!take_times(dialog)) return;
  take_start_date(dialog);
  read_recurrence(dialog, form_);
  if (const auto fault = recurrence_fault(form_, context_.language())) {
    context_.host.boxes.show(fault->message, u"Error Warning", BoxIcon::warning);
    show_step(dialog, fault->step == kStepRange ? 3 : 2);
    dialog.focus(fault->control, Caret::all);
    return;
  }
  context_.host.input.hide_input_panel();
  dialog.close(kFinished);
}

}  // namespace orvello
