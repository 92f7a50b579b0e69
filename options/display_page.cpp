#include "options/settings_pages.h"
#include "resources/display_page_ids.h"
#include "settings/setting_table.h"

namespace orvello {
namespace {

using Event = DialogEvent::Kind;

constexpr int kLeastFont = 6, kLargestFont = 15;  // points

struct DisplayRow {
  int control;
  TextView name;
  std::int32_t SettingsRecord::*field;
};

// In the order in which they are written.
constexpr DisplayRow kDisplayRows[] = {
    {kDisplayAllDates, u"showdays", &SettingsRecord::showdays},
    {kDisplayClearType, u"cleartype", &SettingsRecord::cleartype},
    {kDisplayExpired, u"colorexpired", &SettingsRecord::colorexpired},
    {kDisplayTimePanel, u"showindicator", &SettingsRecord::showindicator},
    {kDisplayFree, u"showfree", &SettingsRecord::showfree},
    {kDisplayMonthIcons, u"showholiday", &SettingsRecord::showholiday},
    {kDisplayLocation, u"showlocation", &SettingsRecord::showlocation},
    {kDisplayWrap, u"wrapsubject", &SettingsRecord::wrapsubject},
    {kDisplayYearColors, u"coloryearview", &SettingsRecord::coloryearview},
    {kDisplayAlarm, u"alarmflag", &SettingsRecord::alarmflag},
    {kDisplayDayLabel, u"showdaylabel", &SettingsRecord::showdaylabel},
    {kDisplayCategoryIcon, u"categoryiconflag", &SettingsRecord::categoryiconflag},
    {kDisplayDaysOff, u"coloroffdays", &SettingsRecord::coloroffdays},
    {kDisplayCategoryColors, u"usecategorycolorforbar", &SettingsRecord::usecategorycolorforbar},
    {kDisplayFontSize, u"dvfontsize", &SettingsRecord::dvfontsize},
    {kDisplayJulian, u"juliandate", &SettingsRecord::juliandate},
};

class DisplayPage : public DialogProcedure {
 public:
  explicit DisplayPage(const OptionsContext& context) : context_(context) {}

  void handle(Dialog& dialog, const DialogEvent& event) override {
    if (event.kind == Event::init) fill(dialog);
    if (event.kind == Event::page_applied) apply(dialog);
  }

 private:
  SettingsRecord& settings() const { return context_.settings; }

  void fill(Dialog& dialog) {
    std::vector<Text> sizes;
    for (int points = kLeastFont; points <= kLargestFont; ++points)
      sizes.push_back(format(u"%d", points));
    dialog.choice(kDisplayFontSize)->set_rows(sizes);
    dialog.choice(kDisplayFontSize)->select(settings().dvfontsize - kLeastFont);
    for (const DisplayRow& row : kDisplayRows)
      if (row.control != kDisplayFontSize)
        dialog.set_checked(row.control, settings().*row.field == 1);
    cleartype_ = settings().cleartype;
    coloryearview_ = settings().coloryearview;
    dvfontsize_ = settings().dvfontsize;
  }

  // A value that no box and no row stands for stays until another one is chosen.
  std::int32_t chosen(Dialog& dialog, const DisplayRow& row) const {
    const std::int32_t value = settings().*row.field;
    if (row.control == kDisplayFontSize) {
      const int at = dialog.choice(kDisplayFontSize)->selected();
      return at < 0 ? value : at + kLeastFont;
    }
    const bool checked = dialog.checked(row.control);
    return checked == (value == 1) ? value : checked ? 1 : 0;
  }

  void apply(Dialog& dialog) {
    for (const DisplayRow& row : kDisplayRows) {
      settings().*row.field = chosen(dialog, row);
      save_setting(context_.host.registry, settings(), row.name);
      if (row.control == kDisplayYearColors && settings().coloryearview != coloryearview_) {
        context_.commands.reload_view();
        context_.host.window.invalidate();
      }
    }
    if (settings().cleartype != cleartype_)
      context_.host.boxes.show(
          u"You will need to exit the program and restart it to see the effects of the ClearType "
          u"Text setting change.",
          u"Notice", BoxIcon::none, BoxButtons::ok, true);
    // In the Day view, whichever was shown.
    if (settings().dvfontsize != dvfontsize_) context_.commands.reopen_day_view();
  }

  const OptionsContext& context_;
  std::int32_t cleartype_ = 0, coloryearview_ = 0, dvfontsize_ = 0;  // as they were
};

}  // namespace

std::unique_ptr<DialogProcedure> make_display_page(const OptionsContext& context) {
  return std::make_unique<DisplayPage>(context);
}

}  // namespace orvello
