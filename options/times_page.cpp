// The Times page: stored when the sheet is applied.
#include <algorithm>

#include "calendar/date_text.h"
#include "options/settings_pages.h"
#include "options/times_diagram.h"
#include "options/times_rules.h"
#include "resources/times_page_ids.h"
#include "settings/load_settings.h"
#include "settings/registry_access.h"
#include "settings/setting_table.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr TextView kStartSlot = u"defaultStartTimeIndex", kEndSlot = u"defaultEndTimeIndex";
// Of both, deliberately: a start of the program takes an end that is missing as half an hour later.
constexpr std::int32_t kPresetSlot = 24;
constexpr std::size_t kAmountLength = 79;

struct MarkRow {
  int control;
  TextView name;
  std::int32_t SettingsRecord::*field;
};
constexpr MarkRow kMarkRows[] = {{kTimesMarks[0], u"timeA", &SettingsRecord::timeA},
                                 {kTimesMarks[1], u"timeB", &SettingsRecord::timeB},
                                 {kTimesMarks[2], u"timeC", &SettingsRecord::timeC},
                                 {kTimesMarks[3], u"timeD", &SettingsRecord::timeD}};

class TimesPage : public DialogProcedure {
 public:
  explicit TimesPage(const OptionsContext& context) : context_(context) {}

  void handle(Dialog& dialog, const DialogEvent& event) override {
    switch (event.kind) {
      case Event::init:
        return open(dialog);
      case Event::page_shown:  // the clock may be another one by now
        return fill_times(dialog);
      case Event::changed:
        return changed(dialog, event.control);
      case Event::paint:
        return paint(dialog, event);
      case Event::page_left:
        return context_.host.input.hide_input_panel();
      case Event::page_applied:
        return apply(dialog);
      default:
        return;
    }
  }

 private:
  SettingsRecord& settings() const { return context_.settings; }
  Registry& registry() const { return context_.host.registry; }

  void open(Dialog& dialog) {
    fill_times(dialog);
    for (const MarkRow& mark : kMarkRows)
      dialog.choice(mark.control)->select(settings().*mark.field);
    dialog.choice(kTimesStart)->select(read_default(kStartSlot, settings().default_start));
    dialog.choice(kTimesEnd)->select(read_default(kEndSlot, settings().default_end));
    for (const int drawn : {kTimesDiagram, kTimesSeparator}) dialog.enable(drawn, false);
    dialog.set_checked(kTimesRemind, settings().defremindme == 1);
    dialog.choice(kTimesAmount)
        ->set_rows({u"0", u"1", u"2", u"3", u"4", u"5", u"6", u"10", u"15", u"30", u"45"});
    dialog.set_text(kTimesAmount, format(u"%d", settings().defremindtime));
    dialog.choice(kTimesUnit)->set_rows({u"minute(s)", u"hours(s)", u"days(s)", u"weeks(s)"});
    dialog.choice(kTimesUnit)->select(settings().defremindunits);
  }

  // Read anew, for the record too. What no list has is as good as missing.
  int read_default(TextView name, HourMinute& time) const {
    std::int32_t slot = kPresetSlot;
    ReadNumberSetting(registry(), name, slot);
    if (slot < 0 || slot >= kTimeSlots) slot = kPresetSlot;
    time = TimeSlotToHourMinute(slot);
    return slot;
  }

  // What is chosen stays so.
  void fill_times(Dialog& dialog) const {
    ChoiceList times;
    FillHalfHourList(times, settings().timeformat != 0, settings().locale);
    const auto fill = [&](int control) {
      ChoiceControl& choice = *dialog.choice(control);
      const int row = choice.selected();
      choice.set_rows(times.items);
      choice.select(row);
    };
    for (const MarkRow& mark : kMarkRows) fill(mark.control);
    fill(kTimesStart);
    fill(kTimesEnd);
  }

  void changed(Dialog& dialog, int control) {
    const auto is_mark = [control](const MarkRow& mark) { return mark.control == control; };
    if (std::any_of(std::begin(kMarkRows), std::end(kMarkRows), is_mark))
      return dialog.drawn(kTimesDiagram)->invalidate();
    if (control != kTimesStart && control != kTimesEnd) return;
    const int start = dialog.choice(kTimesStart)->selected();
    if (control == kTimesEnd) {
      if (start <= dialog.choice(kTimesEnd)->selected()) return;
      context_.host.boxes.show(u"Default End time must be greater or equal to the Start time!",
                               u"Error", BoxIcon::none, BoxButtons::ok, true);
    }
    dialog.choice(kTimesEnd)->select(end_for_start(start));
  }

  void paint(Dialog& dialog, const DialogEvent& event) const {
    const FormColors colors = context_.host.dialogs.colors();
    if (event.control == kTimesSeparator)
      return paint_times_separator(event.size, colors, *event.canvas);
    std::array<int, 4> marks{};
    for (std::size_t i = 0; i < marks.size(); ++i)
      marks[i] = dialog.choice(kMarkRows[i].control)->selected();
    paint_times_diagram(lasting_periods(marks), event.size, colors, *event.canvas);
  }

  void put(TextView name, std::int32_t SettingsRecord::*field, std::int32_t value) const {
    settings().*field = value;
    WriteNumberSetting(registry(), name, value);
  }

  void put_default(TextView name, HourMinute& time, int slot) const {
    WriteNumberSetting(registry(), name, slot);
    time = TimeSlotToHourMinute(slot);
  }

  void apply(Dialog& dialog) {
    for (const MarkRow& mark : kMarkRows)
      put(mark.name, mark.field, dialog.choice(mark.control)->selected());
    compute_time_fractions(settings());
    put_default(kStartSlot, settings().default_start, dialog.choice(kTimesStart)->selected());
    put_default(kEndSlot, settings().default_end, dialog.choice(kTimesEnd)->selected());
    put(u"defremindunits", &SettingsRecord::defremindunits, dialog.choice(kTimesUnit)->selected());
    put(u"defremindme", &SettingsRecord::defremindme, dialog.checked(kTimesRemind) ? 1 : 0);
    put(u"defremindtime", &SettingsRecord::defremindtime,
        typed_amount(cut(dialog.text(kTimesAmount), kAmountLength)));
  }

  const OptionsContext& context_;
};

}  // namespace

std::unique_ptr<DialogProcedure> make_times_page(const OptionsContext& context) {
  return std::make_unique<TimesPage>(context);
}

}  // namespace orvello
