// The search as a person uses it, without a screen.
#include <gtest/gtest.h>

#include "app/application.h"
#include "hosts/headless/headless_host.h"
#include "ports/messages.h"
#include "resources/dialog_templates.h"
#include "settings/profiles.h"
#include "tests/appointments.h"

namespace orvello {
namespace {

using namespace std::chrono_literals;

struct SearchTest : testing::Test {
  std::int32_t put(const MonthDayYear& date, TextView subject, TextView categories = u"") {
    AppointmentRecord record = one_hour(date, 9, subject);
    record.fields.categories = categories;
    return device.store.put(record);
  }
  std::int32_t put_series(TextView subject, std::int32_t exceptions = 0) {
    AppointmentRecord record = one_hour({10, 5, 2026}, 9, subject);
    record.rules = "RRULE:FREQ=WEEKLY";
    for (std::int32_t i = 0; i < exceptions; ++i) {
      AppointmentException one;
      one.original_start = record.start + 7 * kSecondsPerDay;
      one.start = one.original_start + 3600;
      one.end = one.start + 3600;
      one.fields = record.fields;
      one.fields.subject = u"Piano with Zoë";
      record.exceptions.push_back(one);
    }
    return device.store.put(record);
  }
  void start(int view = 1) {
    device.input.panel_height = 80;
    device.files.present.insert(u"\\Program Files\\Orvello\\settings.vol");
    application = std::make_unique<Application>(device.host(), StartOptions{view, {11, 9, 2026}},
                                                FormParts{});
    ASSERT_EQ(application->start_up(), StartResult::running);
    settle();
  }
  void settle() {
    device.store.poll();
    device.window.pump();
    EXPECT_TRUE(application->grid().worker().wait_until_idle(20s));
  }
  // Opens the search, and has the person do this in front of it.
  void search(std::function<void(HeadlessDialog&)> person) {
    device.dialogs.person = [&, person](HeadlessDialog& dialog) {
      if (dialog.dialog.id != kDialogSearch) return;
      ++searches;
      read(dialog);
      person(dialog);
    };
    if (application->day().is_open())
      device.dialogs.modeless->key(std::uint32_t{u'F'}, true);
    else
      device.window.key(u'F', kControlHeld);
    settle();
  }
  static void read(HeadlessDialog& dialog) {
    while (dialog.fire_timer(1)) {
    }
  }
  static void type(HeadlessDialog& dialog, TextView text) { dialog.type(kControlSearchText, text); }
  // The rows that are seen, their first words each: a selected one with ">".
  static std::string rows(HeadlessDialog& dialog) {
    HeadlessReport& list = dialog.rows(kControlSearchList);
    std::string all;
    for (std::size_t i = 0; i < list.content().rows.size(); ++i) {
      const auto& chosen = list.selected;
      if (std::count(chosen.begin(), chosen.end(), static_cast<int>(i)) != 0) all += ">";
      all += to_utf8(list.content().rows[i].cells[0]) + "|";
    }
    return all;
  }

  HeadlessHost device;
  std::unique_ptr<Application> application;
  int searches = 0;
};

TEST_F(SearchTest, FindsAsOneTypesAndOpensTheDayAtItsRow) {
  put({11, 9, 2026}, u"Other");
  const std::int32_t dentist = put({3, 5, 2019}, u"Zahnärztin");
  put_series(u"Piano", 1);
  for (const int view : {0, 1, 2}) {
    start(view);
    search([&](HeadlessDialog& dialog) {
      EXPECT_EQ(dialog.focused, kControlSearchText);
      EXPECT_TRUE(device.input.panel_up);
      EXPECT_NE(rows(dialog).find("In subjects, places"), std::string::npos) << rows(dialog);
      EXPECT_FALSE(dialog.reachable(kControlOk));
      type(dialog, u"z");
      EXPECT_EQ(rows(dialog),
                "Past|>Piano with Zoë|>Mon Oct 12, 10:00a-11:00a, repeats|Zahnärztin|"
                "Tue Mar 5, 2019, 9:00a-10:00a|");
      EXPECT_EQ(dialog.text(0), u"Found: 2");
      type(dialog, u"nothing such");
      EXPECT_EQ(rows(dialog), "Nothing found|");
      type(dialog, u"PIANO");
      EXPECT_EQ(rows(dialog), ">Piano|>Mon Nov 23, 9:00a-10:00a, repeats|");
      type(dialog, u"arzt zahn");
      dialog.key(kKeyReturn);
      EXPECT_TRUE(dialog.closed);
    });
    EXPECT_FALSE(device.input.panel_up);
    EXPECT_EQ(application->state().current, (MonthDayYear{3, 5, 2019}));
    ASSERT_TRUE(application->day().is_open());
    const DayView& day = application->day();
    ASSERT_EQ(day.selected_row(), 0);
    EXPECT_EQ(day.agenda().rows[0].oid, dentist);
    search([](HeadlessDialog& dialog) {
      EXPECT_EQ(dialog.text(kControlSearchText), u"arzt zahn") << "the last one is kept";
      EXPECT_NE(rows(dialog).find(">Zahn"), std::string::npos);
      dialog.press_close();
    });
    EXPECT_TRUE(application->day().is_open());
    application.reset();
  }
  EXPECT_EQ(searches, 6);
}

TEST_F(SearchTest, KeysGoIntoTheListAndBackAndATapOpens) {
  for (int i = 0; i < 60; ++i) put({12, 1 + i % 15, 2026}, u"Walk " + to_utf16(std::to_string(i)));
  put({1, 2, 2020}, u"Walk past");
  start();
  search([](HeadlessDialog& dialog) {
    type(dialog, u"walk");
    dialog.key(kKeyDown);
    EXPECT_EQ(dialog.focused, kControlSearchList);
    HeadlessReport& list = dialog.rows(kControlSearchList);
    const auto selected = [&] { return list.selected; };
    dialog.key(kKeyDown);
    EXPECT_EQ(selected(), (std::vector<int>{2, 3}));
    dialog.key(kKeyEnd);
    EXPECT_EQ(selected(), (std::vector<int>{121, 122}))
        << "below the line that the past begins with";
    EXPECT_GT(list.scrolled, 0);
    dialog.key(kKeyPageUp);
    EXPECT_EQ(selected().front(), 112);
    dialog.key(kKeyHome);
    EXPECT_EQ(list.scrolled, 0);
    dialog.key(kKeyUp);
    EXPECT_EQ(dialog.focused, kControlSearchText);
    EXPECT_EQ(selected().front(), 0);
    for (const ReportRow& row : list.content().rows) EXPECT_GE(row.height, 20);
    dialog.tap_row(kControlSearchList, 120);
    EXPECT_FALSE(dialog.closed) << "the line of the past is nothing to open";
    dialog.tap_row(kControlSearchList, 5);
    EXPECT_TRUE(dialog.closed);
  });
  EXPECT_EQ(application->state().current, (MonthDayYear{12, 1, 2026}));
  EXPECT_EQ(application->day()
                .agenda()
                .rows[static_cast<std::size_t>(application->day().selected_row())]
                .subject,
            u"Walk 30");
}

TEST_F(SearchTest, ManyAreCountedAndSomeHundredShown) {
  for (int i = 0; i < 1250; ++i) put({12, 1 + i % 15, 2026}, u"x");
  start();
  search([](HeadlessDialog& dialog) {
    type(dialog, u"x");
    EXPECT_EQ(dialog.rows(kControlSearchList).content().rows.size(), 401u);
    EXPECT_NE(rows(dialog).find("and 1,050 more|"), std::string::npos);
    EXPECT_EQ(dialog.text(0), u"Found: 1,250");
    type(dialog, Text(200, u'x'));
    EXPECT_EQ(rows(dialog), "Nothing found|");
  });
}

TEST_F(SearchTest, WhatTheProfileHidesIsFoundAndSeenWhenItIsOpened) {
  ASSERT_TRUE(saveProfileInfoToDatabase({device.databases, device.boxes, device.files},
                                        u"pfile-Work", {{u"Work"}, {0}}));
  put({11, 20, 2026}, u"Private thing", u"Home");
  put({11, 21, 2026}, u"Work thing", u"Work");
  start();
  device.window.command(kCommandFirstProfile + 1);
  ASSERT_EQ(application->settings().activeprofilename, u"Work");
  const auto open = [](TextView typed) {
    return [typed](HeadlessDialog& dialog) {
      type(dialog, typed);
      EXPECT_EQ(rows(dialog).find("hidden by Work") != std::string::npos, typed == u"private");
      dialog.press(kControlOk);
    };
  };
  search(open(u"work"));
  EXPECT_EQ(application->settings().activeprofilename, u"Work");
  search(open(u"private"));
  EXPECT_EQ(application->settings().activeprofilename, u"All");
  EXPECT_EQ(application->day().agenda().rows[0].subject, u"Private thing");
  EXPECT_EQ(application->day().selected_row(), 0);
}

TEST_F(SearchTest, FollowsTheStoreAndKeepsWhatIsSelected) {
  put({12, 20, 2026}, u"One");
  const std::int32_t second = put({12, 21, 2026}, u"One more");
  start();
  search([&](HeadlessDialog& dialog) {
    type(dialog, u"one");
    dialog.key(kKeyDown);
    dialog.key(kKeyDown);
    put({12, 19, 2026}, u"One before");
    EXPECT_TRUE(dialog.fire_timer(2));
    EXPECT_FALSE(dialog.fire_timer(1)) << "nobody has told of a change";
    device.store.poll();
    EXPECT_TRUE(dialog.fire_timer(2));
    read(dialog);
    EXPECT_NE(rows(dialog).find("One before|Sat"), std::string::npos) << rows(dialog);
    EXPECT_NE(rows(dialog).find(">One more|"), std::string::npos) << rows(dialog);
    device.store.erase(second);
    device.store.poll();
    dialog.fire_timer(2);
    read(dialog);
    EXPECT_EQ(rows(dialog).find("One more"), std::string::npos);
    EXPECT_NE(rows(dialog).find(">One before|"), std::string::npos) << rows(dialog);
  });
}

TEST_F(SearchTest, AReadThatBreaksOffIsSaidAndTriedAgain) {
  for (int i = 0; i < 9; ++i) put({11, 20, 2026}, u"One");
  start();
  // Of the first reading the third part fails, and all of the next.
  device.dialogs.person = [&](HeadlessDialog& dialog) {
    type(dialog, u"one");
    EXPECT_EQ(rows(dialog), "Reading...|");
    device.store.faults.read = 20;
    device.store.faults.reason = "The disk is gone.";
    read(dialog);
    EXPECT_EQ(rows(dialog), "The calendar cannot be read.|The disk is gone.|");
    EXPECT_EQ(dialog.text(0), u"Find");
    dialog.key(kKeyReturn);
    EXPECT_FALSE(dialog.closed);
    device.store.faults.unreadable = true;
    dialog.fire_timer(2);
    read(dialog);
    type(dialog, u"on");
    EXPECT_EQ(rows(dialog), "The calendar cannot be read.|The disk is gone.|");
    device.store.faults.unreadable = false;
    dialog.fire_timer(2);
    read(dialog);
    EXPECT_EQ(dialog.text(0), u"Found: 9");
    EXPECT_FALSE(dialog.fire_timer(1));
    ++searches;
  };
  device.window.command(kCommandSearch);
  EXPECT_EQ(searches, 1);
}

}  // namespace
}  // namespace orvello
