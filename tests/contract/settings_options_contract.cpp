// The settings sheet's Options page.
#include "hosts/headless/recording_canvas.h"
#include "options/shading_preview.h"
#include "resources/bitmaps.h"
#include "resources/options_page_ids.h"
#include "settings/category_list.h"
#include "store/device_labels.h"
#include "tests/contract/settings_contract.h"

namespace orvello::test {
namespace {

std::vector<Text> device_labels(SettingsDesk& desk) {
  std::vector<Text> labels;
  EXPECT_TRUE(read_device_labels(desk.volume, desk.generation, desk.session, labels));
  return labels;
}

TEST_P(SettingsContract, EachListIsASettingAndThreeOfThemAtOnce) {
  struct List {
    int control, rows, row;
    TextView name;
    std::int32_t SettingsRecord::*field;
    bool at_once;
    TextView text;  // of the chosen row
  };
  const List lists[] = {
      {1045, 3, 2, u"startmode", &SettingsRecord::startmode, false, u"Year View"},
      {1046, 3, 1, u"weeknumberformat", &SettingsRecord::weeknumberformat, false,
       u"ISO-8601 Format"},
      {1047, 2, 1, u"firstdayofweek", &SettingsRecord::firstdayofweek, true, u"Monday"},
      {1048, 4, 2, u"rowcolorindex", &SettingsRecord::rowcolorindex, false, u"by category"},
      {1049, 2, 1, u"calendarcolorstyle", &SettingsRecord::calendarcolorstyle, true,
       u"Weekend days"},
      {1050, 6, 5, u"dayviewheaderformat", &SettingsRecord::dayviewheaderformat, false,
       u"day, y m d"},
      {1052, 2, 1, u"timeformat", &SettingsRecord::timeformat, true, u"24-Hour"}};
  const SettingsRecord before = desk->settings;
  const auto choose_all = [&] {
    for (const List& list : lists) {
      EXPECT_EQ(desk->row(list.control), before.*list.field) << list.control;
      EXPECT_EQ(static_cast<int>(desk->dialog().choice(list.control)->rows().size()), list.rows);
      desk->choose(list.control, list.row);
      EXPECT_EQ(desk->text(list.control), list.text);
      EXPECT_EQ(desk->settings.*list.field, list.at_once ? list.row : before.*list.field);
    }
  };
  desk->open(kPageOptions, [&] {
    choose_all();
    desk->cancel();
  });
  for (const List& list : lists) {
    EXPECT_EQ(desk->settings.*list.field, list.at_once ? list.row : before.*list.field);
    EXPECT_NE(desk->number(list.name), list.row) << list.control;
  }
  desk->settings = before;
  desk->open(kPageOptions, [&] {
    choose_all();
    desk->ok();
  });
  for (const List& list : lists) {
    EXPECT_EQ(desk->settings.*list.field, list.row);
    EXPECT_EQ(desk->number(list.name), list.row) << list.control;
  }
  EXPECT_EQ(desk->number(u"weekstartmonth"), -1) << "only for weeks that are counted from a date";
}

TEST_P(SettingsContract, WeekOneIsAskedForWhereItCounts) {
  const auto seen = [&] {
    EXPECT_EQ(desk->bench->seen(kOptionsWeekOne), desk->bench->seen(kOptionsWeekOneLabel));
    return desk->bench->seen(kOptionsWeekOne);
  };
  desk->settings.weekstartmonth = 2;
  desk->settings.weekstartday = 31;  // a day that there is not: it is only shown as another
  desk->open(kPageOptions, [&] {
    EXPECT_FALSE(seen());
    desk->choose(kOptionsWeekNumber, 2);
    EXPECT_TRUE(seen());
    EXPECT_EQ(desk->dialog().date(kOptionsWeekOne)->date(), (MonthDayYear{2, 28, 2026}));
    desk->choose(kOptionsWeekNumber, 0);
    EXPECT_FALSE(seen());
    desk->choose(kOptionsWeekNumber, 2);
    desk->ok();
  });
  EXPECT_EQ(desk->number(u"weekstartday"), 31);
  desk->open(kPageOptions, [&] {
    EXPECT_TRUE(seen());
    desk->bench->pick_date(kOptionsWeekOne, {3, 3, 2026});
    desk->ok();
  });
  EXPECT_EQ(desk->settings.weekstartmonth, 3);
  EXPECT_EQ(desk->number(u"weekstartmonth"), 3);
  EXPECT_EQ(desk->number(u"weekstartday"), 3);
}

TEST_P(SettingsContract, TheDefaultCategoryIsTrimmedAndTheDevicesOwn) {
  addCategory(desk->volume, u"Work");
  struct Typed {
    TextView text, stored;
    std::vector<Text> labels;
  };
  for (const Typed& typed :
       {Typed{u"  Trips ", u"Trips", {u"Work", u"Trips"}},
        Typed{u"Work", u"Work", {u"Work", u"Trips"}},
        Typed{u"Home,  Trips,", u"Home,  Trips,", {u"Work", u"Trips", u"Home"}},
        Typed{u"   ", u"(None)", {u"Work", u"Trips", u"Home"}},
        Typed{u"0123456789012345678901234567890123456789XYZ",
              u"012345678901234567890123456789012345678",
              {u"Work", u"Trips", u"Home", u"01234567890123456789012345678"}}}) {
    desk->open(kPageOptions, [&] {
      desk->type(kOptionsCategory, typed.text);
      desk->ok();
    });
    EXPECT_EQ(desk->settings.strdefcategory, typed.stored);
    EXPECT_EQ(desk->stored_text(u"strdefcategory"), typed.stored);
    EXPECT_EQ(device_labels(*desk), typed.labels);
  }
  desk->open(kPageOptions, [&] {
    std::vector<Text> rows = device_labels(*desk);
    rows.insert(rows.begin(), u"(None)");
    EXPECT_EQ(desk->dialog().choice(kOptionsCategory)->rows(), rows);
    desk->choose(kOptionsCategory, 0);
    desk->ok();
  });
  EXPECT_EQ(desk->stored_text(u"strdefcategory"), u"(None)");
  EXPECT_TRUE(desk->boxes_shown().empty());
  desk->device.databases.fail_read_at = 0;
  desk->settings.strdefcategory = u"Work";
  desk->open(kPageOptions, [&] {
    EXPECT_EQ(desk->dialog().choice(kOptionsCategory)->rows(), std::vector<Text>{u"(None)"});
    EXPECT_EQ(desk->text(kOptionsCategory), u"Work");
  });
  const Messages told = desk->boxes_shown();
  EXPECT_NE(std::find(told.begin(), told.end(), "Error: Handle Read Failure"), told.end());
}

TEST_P(SettingsContract, TheDevicesCalendarIsSwitchedOnlyByATap) {
  desk->device.registry.put(RegistryRoot::local_machine, kShellCalendarKey, u"1",
                            {true, 0, u"another"});
  const auto shell = [&] {
    return desk->device.registry.get(RegistryRoot::local_machine, kShellCalendarKey, u"1")->text;
  };
  const auto confirm = [&](int taps) {
    desk->open(kPageOptions, [&] {
      for (int i = 0; i < taps; ++i) desk->tap(kOptionsDefault);
      desk->ok();
    });
  };
  for (const std::int32_t value : {0, 2}) {
    desk->settings.defaultscalendar = value;
    for (const int taps : {0, 2}) {
      confirm(taps);
      EXPECT_EQ(shell(), u"another");
      EXPECT_EQ(desk->number(u"defaultscalendar"), value);
    }
  }
  confirm(1);
  EXPECT_EQ(desk->number(u"defaultscalendar"), 1);
  EXPECT_EQ(shell().front(), u'"');
  confirm(1);
  EXPECT_EQ(desk->number(u"defaultscalendar"), 0);
  EXPECT_EQ(shell(), u":MSPOUTLOOK calendar");
  for (int i = 0; i < 2; ++i) {
    confirm(1);
    EXPECT_EQ(desk->device.shell.starts, HeadlessShell::kThisProgram);
    desk->device.shell.starts = "another";  // somebody chose it elsewhere
  }
}

TEST_P(SettingsContract, AClockThatThereIsNotIsNoChoice) {
  desk->settings.timeformat = 1;
  desk->open(kPageOptions, [&] {
    desk->type(kOptionsClock, u"36-Hour");
    EXPECT_EQ(desk->settings.timeformat, 1);
    desk->dialog().focus(kOptionsDefault);
    desk->bench->settle();
    EXPECT_EQ(desk->text(kOptionsClock), u"24-Hour");
    desk->type(kOptionsClock, u"12-Hour");
    EXPECT_EQ(desk->settings.timeformat, 0);
    desk->type(kOptionsClock, u"12");
    desk->ok();
  });
  EXPECT_EQ(desk->number(u"timeformat"), 0);
}

TEST_P(SettingsContract, ThePreviewFollowsTheChoices) {
  EXPECT_EQ(shading_bitmap(0, 1, true), 112);
  EXPECT_EQ(shading_bitmap(0, 0, false), 168);
  EXPECT_EQ(shading_bitmap(1, 1, true), 113);
  EXPECT_EQ(shading_bitmap(1, 1, false), 169);
  EXPECT_EQ(shading_bitmap(1, 0, true), 114);
  EXPECT_EQ(shading_bitmap(1, 0, false), 170);
  desk->open(kPageOptions, [&] {
    const auto place = [&] {
      const Rect area = desk->dialog().place(kOptionsPreview);
      RecordingCanvas canvas({area.width, area.height});
      desk->watched.paint(kOptionsPreview, canvas);
      const auto images = canvas.of_kind(DrawnOperation::Kind::image);
      return images.empty() ? Rect{} : images[0].box;
    };
    const Rect area = desk->dialog().place(kOptionsPreview);
    const Image picture = load_bitmap(kBitmapShadedRowsLow);
    const int middle = (area.width - picture.width) / 2;
    EXPECT_EQ(place(),
              (Rect{middle, (area.height - picture.height) / 2, picture.width, picture.height}));
    desk->settings.calendarcolorstyle = 7;
    EXPECT_TRUE(place().empty());
  });
}

}  // namespace
}  // namespace orvello::test
