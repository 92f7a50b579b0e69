// The recurrence editor and the chooser in front of a person, on any host's dialogs.
#include "calendar/dates.h"
#include "editor/chooser.h"
#include "editor/edit_recurrence.h"
#include "ports/messages.h"
#include "resources/chooser_ids.h"
#include "resources/recurrence_ids.h"
#include "settings/category_list.h"
#include "tests/contract/editor_contract.h"

namespace orvello::test {
namespace {

// Weekly on Tuesdays from 24 November 2026, 9:00 to 10:00.
RecurrencePattern each_tuesday() {
  RecurrencePattern pattern;
  pattern.type = RecurrenceType::weekly;
  pattern.pattern_start_date = calendar_date_of({11, 24, 2026});
  pattern.start_time = 9.0 / 24;
  pattern.end_time = 10.0 / 24;
  pattern.day_of_week_mask = 4;
  return pattern;
}

TEST_P(EditorContract, ARecurrenceIsEditedWithThePenAlone) {
  DialogsBench& person = *desk->bench;
  RecurrencePattern pattern = each_tuesday();
  person.in_front([&] {
    person.choose_row(kControlRecurrenceStartTime, 47);
    EXPECT_EQ(desk->text(kControlRecurrenceEndTime), u"0:30") << "past midnight";
    person.tap_row(kControlRecurrenceType, 3);
    person.tap(kControlNextStep);
    person.choose_row(kControlYearMonth, 1);
    EXPECT_EQ(desk->dialog().choice(kControlYearDay)->rows().size(), 29u);
    person.choose_row(kControlYearDay, 28);
    person.tap(kControlNextStep);
    EXPECT_FALSE(person.seen(kControlYearDay));
    EXPECT_FALSE(person.seen(kControlNextStep));
    person.pick_date(kControlRangeEnd, {12, 31, 2026});
    EXPECT_TRUE(desk->dialog().checked(kControlEndBy)) << "whose date it is";
    person.tap(kControlDone);
    EXPECT_EQ(desk->device.boxes.shown.back().text, u"The series would end before its first day!");
    person.choose_row(kControlCount, 4);
    EXPECT_TRUE(desk->dialog().checked(kControlEndAfter));
    person.tap(kControlNoEnd);
    EXPECT_TRUE(desk->dialog().checked(kControlNoEnd));
    person.tap(kControlEndAfter);
    person.tap(kControlDone);
  });
  EXPECT_TRUE(edit_recurrence(desk->here, pattern, false));
  EXPECT_EQ(pattern.type, RecurrenceType::yearly);
  EXPECT_EQ(pattern.pattern_start_date, calendar_date_of({2, 28, 2027})) << "there is no 29th";
  EXPECT_EQ(pattern.occurrences, 5);
  EXPECT_FALSE(pattern.no_end_date);
  EXPECT_NEAR(pattern.start_time, 23.5 / 24, 1e-9);
}

TEST_P(EditorContract, ARecurrenceIsEditedWithTheKeyboardAlone) {
  DialogsBench& person = *desk->bench;
  RecurrencePattern pattern = each_tuesday();
  const auto tabs = [&](int count) {
    while (count-- > 0) person.tab();
  };
  person.in_front([&] {
    EXPECT_EQ(person.focused(), kControlRecurrenceStartTime);
    tabs(4);  // over the end, the kinds and Cancel; Back is off
    EXPECT_EQ(person.focused(), kControlNextStep);
    person.key(kKeySpace);
    EXPECT_EQ(person.focused(), kControlNextStep);
    tabs(3);  // OK, the weeks
    EXPECT_EQ(person.focused(), kControlWeekdays[1]);
    person.key(kKeySpace);
    tabs(1);
    person.key(kKeySpace);
    person.tab(true);
    person.key(kKeySpace);
    EXPECT_TRUE(desk->dialog().checked(kControlWeekdays[1])) << "the only one";
    EXPECT_EQ(desk->device.boxes.shown.size(), 1u);
    person.key(kKeyReturn);
  });
  EXPECT_TRUE(edit_recurrence(desk->here, pattern, false));
  EXPECT_EQ(pattern.day_of_week_mask, 2);
  EXPECT_EQ(pattern.pattern_start_date, calendar_date_of({11, 30, 2026}));
}

TEST_P(EditorContract, WhatIsNoTimeKeepsTheRecurrenceEditorOpen) {
  DialogsBench& person = *desk->bench;
  RecurrencePattern pattern = each_tuesday();
  person.in_front([&] {
    person.tab();
    desk->dialog().set_text(kControlRecurrenceEndTime, u"");
    person.type(u"9:75");
    person.tap(kControlHeaderOk);
    EXPECT_EQ(desk->device.boxes.shown.size(), 1u);
    EXPECT_EQ(desk->text(kControlRecurrenceEndTime), u"10:00");
    person.tap(kControlHeaderOk);
  });
  EXPECT_TRUE(edit_recurrence(desk->here, pattern, false));
  EXPECT_NEAR(pattern.end_time, 10.0 / 24, 1e-9);
}

TEST_P(EditorContract, LabelsAreChosenWithPenAndKeys) {
  DialogsBench& person = *desk->bench;
  desk->device.databases.create(kObjectStore, kCategoriesDatabase, 0);
  for (int i = 0; i < 60; ++i)
    addCategory(desk->volume, format(u"%s %.2d", i < 40 ? u"A" : u"M", i));
  Text categories = u"A 03";
  person.in_front([&] {
    EXPECT_EQ(person.focused(), kControlChooserList);
    person.key(kKeySpace);  // on the chosen one
    person.key(kKeyDown);
    person.key(kKeySpace);
    person.tap(kControlLetterBarToggle);
    const Rect bar = desk->dialog().place(kControlLetterBar);
    for (int i = 0; i < 2; ++i) {
      person.pen_down(kControlLetterBar, {bar.width / 2, bar.height / 2});  // LMN
      person.pen_up(kControlLetterBar, {bar.width / 2, bar.height / 2});
    }
    const Rect first = desk->dialog().report(kControlChooserList)->row_place(40);
    const Rect list = desk->dialog().place(kControlChooserList);
    EXPECT_EQ(intersection(first, list), first) << "M is in sight";
    person.tap_row(kControlChooserList, 41);
    person.tap(kControlLabelBarToggle);
    person.tap(kControlLabel);
    person.type(u"New");
    person.tap(kControlAddLabel);
    EXPECT_EQ(person.focused(), kControlLabel);
    person.tap(kControlHeaderOk);
  });
  EXPECT_TRUE(choose_categories(desk->here, categories));
  EXPECT_EQ(categories, u"A 04,M 41,New");
  EXPECT_TRUE(desk->device.boxes.shown.empty());
}

TEST_P(EditorContract, ThousandsOfContactsCanBeLookedThrough) {
  DialogsBench& person = *desk->bench;
  for (int i = 0; i < 2000; ++i)
    desk->device.store.put_contact({0,
                                    format(u"%.4d", i),
                                    format(u"N%.4d", i),
                                    {},
                                    {},
                                    {},
                                    {format(u"%d@example.org", i)},
                                    {}});
  std::vector<StoreRecipient> attendees;
  person.in_front([&] {
    person.key(kKeyEnd);
    person.key(kKeySpace);
    person.key(kKeyHome);
    person.key(kKeySpace);
    person.key(kKeyReturn);
  });
  EXPECT_TRUE(choose_attendees(desk->here, attendees));
  EXPECT_EQ(attendees, (std::vector<StoreRecipient>{{u"N0000", u"0@example.org"},
                                                    {u"N1999", u"1999@example.org"}}));
}

}  // namespace
}  // namespace orvello::test
