// What is changed through the sheet is seen at once in the view concerned, and gone again when it
// is changed back.
#include "app/own_messages.h"
#include "ports/messages.h"
#include "resources/display_page_ids.h"
#include "resources/editor_ids.h"
#include "resources/ids.h"
#include "resources/options_page_ids.h"
#include "settings/category_props.h"
#include "tests/appointments.h"
#include "tests/contract/headless_bench.h"
#include "tests/contract/settings_contract.h"
#include "views/month_page.h"

namespace orvello::test {
namespace {

enum class Seen { day, month, year, popup };

struct Effect {
  TextView name;
  Seen seen;
  int page, control;
  int row = -1;                // of a list; a box is tapped
  std::vector<TextView> on{};  // settings that are 1 before
};

const Effect kEffects[] = {
    {u"showdays", Seen::month, kPageDisplay, kDisplayAllDates},
    {u"colorexpired", Seen::day, kPageDisplay, kDisplayExpired},
    {u"showindicator", Seen::month, kPageDisplay, kDisplayTimePanel},
    {u"showfree", Seen::month, kPageDisplay, kDisplayFree, -1, {u"showindicator"}},
    {u"showholiday", Seen::month, kPageDisplay, kDisplayMonthIcons},
    {u"showlocation", Seen::day, kPageDisplay, kDisplayLocation},
    {u"wrapsubject", Seen::day, kPageDisplay, kDisplayWrap},
    {u"coloryearview", Seen::year, kPageDisplay, kDisplayYearColors},
    {u"alarmflag", Seen::day, kPageDisplay, kDisplayAlarm},
    {u"showdaylabel", Seen::popup, kPageDisplay, kDisplayDayLabel},
    {u"categoryiconflag", Seen::day, kPageDisplay, kDisplayCategoryIcon},
    {u"coloroffdays", Seen::month, kPageDisplay, kDisplayDaysOff},
    {u"usecategorycolorforbar", Seen::day, kPageDisplay, kDisplayCategoryColors},
    {u"usecategorycolorforbar",
     Seen::month,
     kPageDisplay,
     kDisplayCategoryColors,
     -1,
     {u"showindicator"}},
    {u"dvfontsize", Seen::day, kPageDisplay, kDisplayFontSize, 9},
    {u"juliandate", Seen::day, kPageDisplay, kDisplayJulian},
    {u"weeknumberformat", Seen::month, kPageOptions, kOptionsWeekNumber, 1},
    {u"firstdayofweek", Seen::month, kPageOptions, kOptionsFirstDay, 1},
    {u"firstdayofweek", Seen::year, kPageOptions, kOptionsFirstDay, 1},
    {u"rowcolorindex", Seen::day, kPageOptions, kOptionsDayColors, 2},
    {u"calendarcolorstyle", Seen::month, kPageOptions, kOptionsMonthColors, 1},
    {u"dayviewheaderformat", Seen::day, kPageOptions, kOptionsHeader, 5},
    {u"timeformat", Seen::day, kPageOptions, kOptionsClock, 1},
    {u"timeformat", Seen::popup, kPageOptions, kOptionsClock, 1}};

std::string described(const RecordingCanvas& canvas) {
  std::string all;
  for (const DrawnOperation& one : canvas.operations()) {
    for (const int number :
         {static_cast<int>(one.kind), one.box.x, one.box.y, one.box.width, one.box.height,
          static_cast<int>(one.color), static_cast<int>(one.style.color), one.style.font.height})
      all += std::to_string(number) + " ";
    all += to_utf8(one.text) + "\n";
  }
  return all;
}

std::string described(const ReportContent& content) {
  std::string all = std::to_string(content.font.height) + "\n";
  for (const ReportRow& row : content.rows) {
    for (const Text& cell : row.cells) all += to_utf8(cell) + "|";
    for (const int picture : row.pictures) all += " p" + std::to_string(picture);
    all += " " + std::to_string(row.background) + " " + std::to_string(row.text) + "\n";
  }
  return all;
}

struct SettingsEffects : testing::Test {
  // 21 November 2026 at ten has a past appointment with everything, and a free day.
  void start(Seen seen, const std::vector<TextView>& on = {}) {
    desk = nullptr;
    desk = std::make_unique<SettingsDesk>(std::make_unique<HeadlessBench>());
    AppointmentRecord past = one_hour({11, 21, 2026}, 8, u"A dentist whom it takes long to name");
    past.fields.categories = u"Work";
    past.fields.location = u"Room 7";
    past.fields.reminder_set = true;
    desk->device.store.put(past);
    AppointmentRecord free = one_hour({11, 21, 2026}, 0, u"Free");
    free.fields.all_day = true;
    free.fields.busy_status = BusyStatus::free;
    desk->device.store.put(free);
    saveCategoryProps(desk->volume, u"Work", static_cast<std::int32_t>(rgb(1, 130, 3)), 0);
    desk->store(u"displayiconstring3", u"Work");
    desk->store(u"timeformat", 0);
    for (const TextView name : on) desk->store(name, 1);
    desk->start(seen == Seen::day    ? ViewMode::day
                : seen == Seen::year ? ViewMode::year
                                     : ViewMode::month);
  }
  std::string look(Seen seen) {
    Application& program = *desk->program;
    RecordingCanvas canvas(program.state().layout.work);
    if (seen == Seen::day) {
      auto& dialog = static_cast<HeadlessDialog&>(*desk->watched.modeless);
      dialog.procedure().handle(
          dialog, {DialogEvent::Kind::paint, kControlDayHeader, &canvas, canvas.size()});
      return described(canvas) + described(dialog.rows(kControlDayList).content());
    }
    if (seen == Seen::popup) {
      std::string rows;
      desk->bench->in_front([&] {
        desk->watched.paint(kControlDayHeader, canvas);
        rows =
            described(static_cast<HeadlessDialog&>(desk->dialog()).rows(kControlDayList).content());
      });
      desk->device.window.press(program.grid().month().place_of({11, 21, 2026}).center());
      desk->device.window.fire_timer(kTimerHold);
      desk->settle();
      return described(canvas) + rows;
    }
    const std::atomic<int> undisturbed{kDrawing};
    const GridPage& page = seen == Seen::year ? static_cast<const GridPage&>(program.grid().year())
                                              : program.grid().month();
    page.drawing()(canvas, undisturbed, {});
    return described(canvas);
  }
  void change(const Effect& effect, int row) {
    desk->open(effect.page, [&] {
      if (row < 0)
        desk->tap(effect.control);
      else
        desk->choose(effect.control, row);
      desk->ok();
    });
  }
  std::unique_ptr<SettingsDesk> desk;
};

TEST_F(SettingsEffects, EachSettingIsSeenAtOnceAndGoneAgain) {
  for (const Effect& effect : kEffects) {
    SCOPED_TRACE(to_utf8(effect.name));
    start(effect.seen, effect.on);
    int before = -1;
    if (effect.row >= 0) desk->open(effect.page, [&] { before = desk->row(effect.control); });
    const std::string first = look(effect.seen);
    change(effect, effect.row);
    const std::string second = look(effect.seen);
    EXPECT_NE(first, second);
    change(effect, before);
    EXPECT_EQ(look(effect.seen), first);
  }
}

TEST_F(SettingsEffects, WeeksCountFromTheDateChosen) {
  start(Seen::month);
  desk->open(kPageOptions, [&] {
    desk->choose(kOptionsWeekNumber, 2);
    desk->ok();
  });
  const std::string first = look(Seen::month);
  desk->open(kPageOptions, [&] {
    desk->bench->pick_date(kOptionsWeekOne, {3, 3, 2026});
    desk->ok();
  });
  EXPECT_NE(look(Seen::month), first);
}

TEST_F(SettingsEffects, ANextStartFollowsToo) {
  start(Seen::month);
  desk->open(kPageDisplay, [&] {
    desk->tap(kDisplayClearType);
    desk->show_page(kPageOptions);
    desk->choose(kOptionsStartView, 2);
    desk->type(kOptionsCategory, u"Trips");
    desk->ok();
  });
  EXPECT_FALSE(desk->program->state().layout.fonts.normal9.cleartype) << "after a restart";
  desk->program->handle_message({kMessageClose, 0, {}, 0});
  desk->device.menu_bar.destroy();
  desk->program = std::make_unique<Application>(desk->whole, StartOptions{});
  desk->program->start_up();
  EXPECT_EQ(desk->program->state().view_mode, ViewMode::year);
  EXPECT_TRUE(desk->program->state().layout.fonts.normal9.cleartype);
  Text categories;
  desk->bench->in_front([&] { categories = desk->text(kLineCategories); });
  desk->device.window.command(kCommandNew);
  EXPECT_EQ(categories, u"Trips");
}

}  // namespace
}  // namespace orvello::test
