// The settings sheet's run.
#include "tests/contract/settings_contract.h"

#include "options/panel_page.h"
#include "resources/ids.h"
#include "resources/options_page_ids.h"
#include "resources/settings_templates.h"

namespace orvello::test {
namespace {

TEST_P(SettingsContract, OpensOnAllPagesAndEndsAsThePersonSays) {
  const auto pages = settings_pages(Language::english);
  std::vector<Text> titles;
  EXPECT_EQ(desk->open(kPageDisplay,
                       [&] {
                         EXPECT_EQ(desk->bench->title(), u"Orvello");
                         for (int page = 0; page < 8; ++page) {
                           desk->show_page(page);
                           titles.push_back(desk->text(0));
                         }
                         desk->ok();
                       }),
            kSheetOk);
  ASSERT_EQ(titles.size(), pages.size());
  for (std::size_t i = 0; i < pages.size(); ++i) EXPECT_EQ(titles[i], pages[i].title);
  EXPECT_EQ(desk->open(kPageOptions, [&] { desk->cancel(); }), kSheetCancelled);
  desk->start(ViewMode::month);
  EXPECT_EQ(desk->open(kPageIcons, [] {}), kSheetCancelled);
  EXPECT_EQ(desk->program->state().view_mode, ViewMode::month);
  EXPECT_TRUE(desk->boxes_shown().empty());
}

TEST_P(SettingsContract, ASheetThatCannotBeMadeIsTold) {
  desk->watched.fail_sheets = true;
  EXPECT_EQ(ShowSettingsSheet(desk->here), kSheetFailed);
  EXPECT_EQ(desk->boxes_shown(), Messages{"error: error in PropertySheet()"});
}

TEST_P(SettingsContract, TheInputPanelIsUpForTextAlone) {
  HeadlessInput& input = desk->device.input;
  input.panel_height = 80;
  input.screen_height = 2000;
  desk->open(kPageDisplay, [&] {
    input.raise_input_panel({0, 0, 10, 10});
    for (int i = 0; i < 20 && input.panel_up; ++i) desk->bench->wait(kPanelTimer);
    EXPECT_FALSE(input.panel_up) << "half a second after the page has opened";
    desk->show_page(kPageOptions);
    EXPECT_FALSE(input.panel_up);
    for (int i = 0; i < 2; ++i) {
      desk->tap(kOptionsDefault);
      EXPECT_FALSE(input.panel_up);
      desk->dialog().focus(kOptionsCategory);
      desk->bench->settle();
      EXPECT_TRUE(input.panel_up);
    }
    desk->show_page(kPageDisplay);
    EXPECT_FALSE(input.panel_up);
    desk->show_page(kPageOptions);
    desk->dialog().focus(kOptionsCategory);
    desk->bench->settle();
    EXPECT_TRUE(input.panel_up);
    desk->cancel();
  });
  EXPECT_FALSE(input.panel_up);
}

TEST_P(SettingsContract, TheProgramGoesOnWithWhatWasChosen) {
  for (const ViewMode view : {ViewMode::day, ViewMode::month}) {
    renew();
    desk->start(view);
    const int flushes = desk->device.registry.flushes;
    const int requests = desk->program->grid().redraw_requests();
    desk->open(kPageOptions, [&] {
      desk->choose(kOptionsClock, 1);
      desk->cancel();
    });
    EXPECT_EQ(desk->record().timeformat, 1);
    EXPECT_EQ(desk->program->state().view_mode, view);
    EXPECT_EQ(desk->program->grid().redraw_requests() - requests, view == ViewMode::month ? 1 : 0);
    EXPECT_EQ(desk->device.registry.flushes, flushes + 1);
    EXPECT_EQ(desk->device.window.wait_cursors(), 0);
    desk->bench->settle();
    if (view == ViewMode::day) {
      EXPECT_EQ(desk->bench->focused(), kControlDayList);
    }
  }
}

// A registry that cannot be written, or holds what no version of this program wrote.
TEST_P(SettingsContract, PagesOpenOnAnyRegistryAndKeepTheirChoicesInMemory) {
  for (const TextView name :
       {u"startmode", u"timeformat", u"rowcolorindex", u"dvfontsize", u"weekstartday", u"showdays",
        u"displayicon3", u"itemcolor7", u"timeB", u"defremindunits", u"colorselectionmode"})
    desk->store(name, u"twelve");
  for (const TextView name :
       {u"weeknumberformat", u"firstdayofweek", u"weekstartmonth", u"alarmflag", u"displayicon4",
        u"itemcolor8", u"defaultStartTimeIndex", u"timeC", u"defremindtime", u"dayviewheaderformat",
        u"defaultscalendar"})
    desk->store(name, 0xFFFFFFF0u);
  for (const TextView name : {u"strdefcategory", u"activeprofilename", u"displayiconstring3"})
    desk->store(name, Text(600, u'x'));
  desk->load();
  desk->device.registry.unwritable = true;
  EXPECT_EQ(desk->open(kPageOptions,
                       [&] {
                         desk->choose(kOptionsStartView, 2);
                         desk->choose(kOptionsClock, 0);
                         for (int page = 2; page < 8; ++page) desk->show_page(page);
                         desk->ok();
                       }),
            kSheetOk);
  EXPECT_EQ(desk->settings.startmode, 2);
  EXPECT_EQ(desk->settings.dvfontsize, 12);
  EXPECT_EQ(desk->settings.strdefcategory, u"(None)");
  EXPECT_EQ(desk->number(u"startmode"), -1);
  EXPECT_EQ(desk->stored_text(u"startmode"), u"twelve");
}

}  // namespace
}  // namespace orvello::test
