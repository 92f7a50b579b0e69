// The settings sheet's Display page.
#include "resources/display_page_ids.h"
#include "tests/contract/settings_contract.h"

namespace orvello::test {
namespace {

struct DisplayBox {
  int control;
  TextView name;
  std::int32_t SettingsRecord::*field;
};
constexpr DisplayBox kDisplayBoxes[] = {
    {1009, u"showdays", &SettingsRecord::showdays},
    {1010, u"cleartype", &SettingsRecord::cleartype},
    {1011, u"colorexpired", &SettingsRecord::colorexpired},
    {1016, u"showindicator", &SettingsRecord::showindicator},
    {1017, u"showfree", &SettingsRecord::showfree},
    {1018, u"showlocation", &SettingsRecord::showlocation},
    {1019, u"showholiday", &SettingsRecord::showholiday},
    {1020, u"juliandate", &SettingsRecord::juliandate},
    {1021, u"wrapsubject", &SettingsRecord::wrapsubject},
    {1022, u"coloryearview", &SettingsRecord::coloryearview},
    {1023, u"alarmflag", &SettingsRecord::alarmflag},
    {1024, u"showdaylabel", &SettingsRecord::showdaylabel},
    {1025, u"coloroffdays", &SettingsRecord::coloroffdays},
    {1026, u"categoryiconflag", &SettingsRecord::categoryiconflag},
    {1027, u"usecategorycolorforbar", &SettingsRecord::usecategorycolorforbar}};
constexpr std::size_t kBoxes = std::size(kDisplayBoxes);

constexpr char kRestart[] =
    "Notice: You will need to exit the program and restart it to see the effects of the ClearType "
    "Text setting change.";

TEST_P(SettingsContract, EachBoxIsASettingAndWaitsForOk) {
  for (const std::int32_t before : {0, 1}) {
    renew();
    for (const DisplayBox& box : kDisplayBoxes) desk->settings.*box.field = before;
    const auto tap_all = [&] {
      for (const DisplayBox& box : kDisplayBoxes) {
        EXPECT_EQ(desk->checked(box.control), before == 1) << box.control;
        desk->tap(box.control);
      }
    };
    desk->open(kPageDisplay, [&] {
      tap_all();
      desk->cancel();
    });
    for (const DisplayBox& box : kDisplayBoxes) {
      EXPECT_EQ(desk->settings.*box.field, before);
      EXPECT_EQ(desk->number(box.name), -1);
    }
    desk->open(kPageDisplay, [&] {
      tap_all();
      desk->show_page(kPageIcons);
      desk->ok();
    });
    for (const DisplayBox& box : kDisplayBoxes) {
      EXPECT_EQ(desk->settings.*box.field, 1 - before) << box.control;
      EXPECT_EQ(desk->number(box.name), 1 - before) << box.control;
    }
    EXPECT_EQ(desk->commands.reloads, 1) << "the year's days are counted now, or not";
    EXPECT_EQ(desk->commands.day_views, 0);
  }
}

TEST_P(SettingsContract, EachBoxIsOneSettingAlone) {
  for (std::size_t one = 0; one < kBoxes; ++one) {
    renew();
    desk->open(kPageDisplay, [&] {
      desk->tap(kDisplayBoxes[one].control);
      desk->ok();
    });
    const SettingsRecord untouched;
    for (std::size_t i = 0; i < kBoxes; ++i) {
      const auto field = kDisplayBoxes[i].field;
      EXPECT_EQ(desk->settings.*field, i == one ? 1 - untouched.*field : untouched.*field);
    }
    if (!HasFailure()) continue;
    ADD_FAILURE() << kDisplayBoxes[one].control;
    break;
  }
}

TEST_P(SettingsContract, ARestartIsAskedForOnceAndAnotherSizeOpensTheDayView) {
  desk->open(kPageDisplay, [&] {
    EXPECT_EQ(desk->row(kDisplayFontSize), 6);
    EXPECT_EQ(desk->text(kDisplayFontSize), u"12");
    EXPECT_EQ(desk->dialog().choice(kDisplayFontSize)->rows().size(), 10u);
    desk->tap(kDisplayClearType);
    desk->choose(kDisplayFontSize, 9);
    desk->ok();
  });
  EXPECT_EQ(desk->number(u"dvfontsize"), 15);
  EXPECT_EQ(desk->settings.cleartype, 1);
  EXPECT_EQ(desk->boxes_shown(), Messages{kRestart});
  EXPECT_EQ(desk->commands.day_views, 1);
  desk->open(kPageDisplay, [&] {
    EXPECT_EQ(desk->text(kDisplayFontSize), u"15");
    desk->ok();
  });
  EXPECT_TRUE(desk->boxes_shown().empty());
  EXPECT_EQ(desk->commands.day_views, 1);
  EXPECT_EQ(desk->commands.reloads, 0);
}

TEST_P(SettingsContract, AnotherSizeEndsInTheDayViewOfTheProgram) {
  for (const ViewMode view : {ViewMode::day, ViewMode::year}) {
    renew();
    desk->start(view);
    desk->open(kPageDisplay, [&] {
      desk->choose(kDisplayFontSize, 9);
      desk->ok();
    });
    EXPECT_EQ(desk->program->state().view_mode, ViewMode::day);
    EXPECT_TRUE(desk->program->day().is_open());
    EXPECT_EQ(desk->bench->focused(), kControlDayList);
  }
}

// Values that no box and no row stands for.
TEST_P(SettingsContract, OkLeavesAsItIsWhatWasNotTouched) {
  desk->settings.dvfontsize = 40;
  desk->settings.showdays = 2;
  desk->settings.showfree = -1;
  desk->open(kPageDisplay, [&] {
    EXPECT_EQ(desk->row(kDisplayFontSize), -1);
    EXPECT_FALSE(desk->checked(kDisplayAllDates));
    desk->tap(kDisplayWrap);
    desk->ok();
  });
  EXPECT_EQ(desk->settings.dvfontsize, 40);
  EXPECT_EQ(desk->settings.showdays, 2);
  EXPECT_EQ(desk->settings.showfree, -1);
  EXPECT_EQ(desk->settings.wrapsubject, 1);
  EXPECT_EQ(desk->commands.day_views, 0);
  desk->open(kPageDisplay, [&] {
    desk->tap(kDisplayAllDates);
    desk->ok();
  });
  EXPECT_EQ(desk->settings.showdays, 1);
}

}  // namespace
}  // namespace orvello::test
