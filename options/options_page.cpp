#include <algorithm>

#include "options/settings_pages.h"
#include "options/shading_preview.h"
#include "resources/options_page_ids.h"
#include "settings/category_list.h"
#include "settings/category_text.h"
#include "settings/new_labels.h"
#include "settings/registry_access.h"
#include "settings/setting_table.h"
#include "store/device_labels.h"
#include "store/labels.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kNumberedFromDate = 2;  // weeks
constexpr TextView kWeekOnePicture = u"MMMM,dd";

struct OptionsList {
  int control;
  TextView name;
  std::int32_t SettingsRecord::*field;
  std::vector<Text> rows;  // empty: the locale's
  bool at_once = false;    // in the record as soon as it is chosen, and there to stay
};

// In the order in which they are written.
const std::vector<OptionsList>& options_lists() {
  static const std::vector<OptionsList> lists = {
      {kOptionsStartView,
       u"startmode",
       &SettingsRecord::startmode,
       {u"Day View", u"Month View", u"Year View"}},
      {kOptionsWeekNumber,
       u"weeknumberformat",
       &SettingsRecord::weeknumberformat,
       {u"None", u"ISO-8601 Format", u"US Format"}},
      {kOptionsFirstDay, u"firstdayofweek", &SettingsRecord::firstdayofweek, {}, true},
      {kOptionsDayColors,
       u"rowcolorindex",
       &SettingsRecord::rowcolorindex,
       {u"by rows", u"by times", u"by category", u"none"}},
      {kOptionsMonthColors,
       u"calendarcolorstyle",
       &SettingsRecord::calendarcolorstyle,
       {u"Alternate rows", u"Weekend days"},
       true},
      {kOptionsHeader,
       u"dayviewheaderformat",
       &SettingsRecord::dayviewheaderformat,
       {u"m d, y", u"d m y", u"y m d", u"day, m d, y", u"day, d m y", u"day, y m d"}},
      {kOptionsClock, u"timeformat", &SettingsRecord::timeformat, {u"12-Hour", u"24-Hour"}, true}};
  return lists;
}

class OptionsPage : public DialogProcedure {
 public:
  explicit OptionsPage(const OptionsContext& context) : context_(context) {}

  void handle(Dialog& dialog, const DialogEvent& event) override {
    if (event.kind == Event::init) fill(dialog);
    if (event.kind == Event::page_shown && settings().strdefcategory != shown_category_ &&
        dialog.text(kOptionsCategory) == shown_category_)
      fill_category(dialog);
    if (event.kind == Event::changed || event.kind == Event::taken) chosen(dialog, event.control);
    if (event.kind == Event::focus_lost && event.control == kOptionsClock) tell_clock(dialog);
    if (event.kind == Event::paint)
      paint_shading_preview(settings(), context_.screen.low_resolution,
                            context_.host.dialogs.colors().ground, *event.canvas);
    if (event.kind == Event::page_applied) apply(dialog);
  }

 private:
  SettingsRecord& settings() const { return context_.settings; }
  void fill(Dialog& dialog);
  void fill_category(Dialog& dialog);
  void fill_lists(Dialog& dialog);
  void fill_week_one(Dialog& dialog);
  void show_week_one(Dialog& dialog);
  void tell_clock(Dialog& dialog);
  void chosen(Dialog& dialog, int control);
  void apply(Dialog& dialog);
  void apply_week_one(Dialog& dialog);
  void apply_category(Dialog& dialog);
  void apply_default(Dialog& dialog);

  const OptionsContext& context_;
  MonthDayYear week_one_;  // as it was shown first
  bool shown_default_ = false;
  Text shown_category_;  // which another page may rename meanwhile
};

void OptionsPage::fill(Dialog& dialog) {
  fill_lists(dialog);
  fill_category(dialog);
  fill_week_one(dialog);
  shown_default_ = IsDeviceCalendarHandler(context_.host.shell, settings().defaultscalendar);
  dialog.set_checked(kOptionsDefault, shown_default_);
  dialog.enable(kOptionsPreview, false);  // there is nothing to do in it
}

void OptionsPage::fill_category(Dialog& dialog) {
  std::vector<Text> labels;
  read_device_labels(context_.volume, context_.platform_generation, context_.session, labels);
  labels.insert(labels.begin(), Text(kNoCategory));
  dialog.choice(kOptionsCategory)->set_rows(labels);
  shown_category_ = settings().strdefcategory;
  dialog.set_text(kOptionsCategory, shown_category_);
}

// A value that no row stands for selects none.
void OptionsPage::fill_lists(Dialog& dialog) {
  const auto& days = settings().locale.day_names;  // Monday first
  for (const OptionsList& list : options_lists()) {
    ChoiceControl& choice = *dialog.choice(list.control);
    choice.set_rows(list.rows.empty() ? std::vector<Text>{days[6], days[0]} : list.rows);
    choice.select(settings().*list.field);
  }
}

void OptionsPage::fill_week_one(Dialog& dialog) {
  const MonthDayYear& today = settings().today;
  DateControl& picker = *dialog.date(kOptionsWeekOne);
  picker.set_picture(kWeekOnePicture);
  picker.set_calendar(today, settings().firstdayofweek != 0);
  const int month = std::clamp(settings().weekstartmonth, 1, 12);
  const int last = DaysInMonth(month - 1, today.year);
  picker.set_date({month, std::clamp(settings().weekstartday, 1, last), today.year});
  week_one_ = picker.date();
  show_week_one(dialog);
}

void OptionsPage::show_week_one(Dialog& dialog) {
  const bool shown = dialog.choice(kOptionsWeekNumber)->selected() == kNumberedFromDate;
  dialog.show(kOptionsWeekOneLabel, shown);
  dialog.show(kOptionsWeekOne, shown);
}

// What was typed and is no row is nothing.
void OptionsPage::tell_clock(Dialog& dialog) {
  ChoiceControl& choice = *dialog.choice(kOptionsClock);
  if (choice.selected() < 0) choice.select(settings().timeformat);
}

void OptionsPage::chosen(Dialog& dialog, int control) {
  for (const OptionsList& list : options_lists()) {
    if (list.control != control || !list.at_once) continue;
    const int row = dialog.choice(control)->selected();
    if (row >= 0) settings().*list.field = row;
  }
  if (control == kOptionsWeekNumber) show_week_one(dialog);
  if (control == kOptionsFirstDay)
    dialog.date(kOptionsWeekOne)->set_calendar(settings().today, settings().firstdayofweek != 0);
  if (control == kOptionsFirstDay || control == kOptionsMonthColors)
    dialog.drawn(kOptionsPreview)->invalidate();
}

void OptionsPage::apply(Dialog& dialog) {
  const auto save = [this](TextView name) {
    save_setting(context_.host.registry, settings(), name);
  };
  for (const OptionsList& list : options_lists()) {
    // The clock comes last.
    if (list.control == kOptionsClock) {
      apply_category(dialog);
      apply_default(dialog);
    }
    if (const int row = dialog.choice(list.control)->selected(); row >= 0)
      settings().*list.field = row;
    save(list.name);
    if (list.control == kOptionsWeekNumber && settings().weeknumberformat == kNumberedFromDate)
      apply_week_one(dialog);
  }
}

// A day that this year does not have stays until another one is chosen.
void OptionsPage::apply_week_one(Dialog& dialog) {
  const MonthDayYear date = dialog.date(kOptionsWeekOne)->date();
  if (date != week_one_) {
    settings().weekstartmonth = date.month;
    settings().weekstartday = date.day;
  }
  save_setting(context_.host.registry, settings(), u"weekstartmonth");
  save_setting(context_.host.registry, settings(), u"weekstartday");
}

void OptionsPage::apply_category(Dialog& dialog) {
  Text text = dialog.text(kOptionsCategory);
  if (text == shown_category_) text = settings().strdefcategory;
  trimSpaces(text);
  if (text.empty()) text = kNoCategory;
  settings().strdefcategory = text;
  WriteTextSetting(context_.host.registry, u"strdefcategory", text);
  if (text == kNoCategory) return;
  for (const Text& label : labels_in(text))
    add_label(context_.volume, settings().category_props, label);
}

// The box says what is so, which another program may have changed: a tap on it is what counts.
void OptionsPage::apply_default(Dialog& dialog) {
  const bool checked = dialog.checked(kOptionsDefault);
  if (checked != (settings().defaultscalendar == 1)) settings().defaultscalendar = checked ? 1 : 0;
  save_setting(context_.host.registry, settings(), u"defaultscalendar");
  if (checked != shown_default_)
    SetDeviceCalendarHandler(context_.host.registry, context_.host.files, context_.host.shell,
                             checked ? 1 : 0);
}

}  // namespace

std::unique_ptr<DialogProcedure> make_options_page(const OptionsContext& context) {
  return std::make_unique<OptionsPage>(context);
}

}  // namespace orvello
