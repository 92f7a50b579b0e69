// The chooser: its rows, its letters, its dialog in both modes.
#include "editor/chooser.h"

#include <gtest/gtest.h>

#include "base/letters.h"
#include "editor/chooser_rules.h"
#include "ports/messages.h"
#include "settings/category_list.h"
#include "tests/editor/editor_bench.h"

namespace orvello {
namespace {

std::vector<std::string> names_of(const std::vector<ChooserRow>& rows) {
  std::vector<std::string> names;
  for (const ChooserRow& row : rows) names.push_back((row.chosen ? "+" : "") + to_utf8(row.name));
  return names;
}

TEST(ChooserRules, LabelsOfListAndAppointmentAreMerged) {
  const HeadlessLocale locale;
  const std::vector<Text> carried = labels_of(u"Work, Zoo,,Work," + Text(40, u'w'));
  EXPECT_EQ(carried, (std::vector<Text>{u"Work", u"Zoo", Text(29, u'w')}));
  const auto rows =
      category_rows({u"Zoo", u"apple", u"Work", u"", u"Zoo", u"work", u"яма"}, carried, locale);
  EXPECT_EQ(names_of(rows), (std::vector<std::string>{"apple", "+Work", "work", "+Zoo", "яма"}));
  EXPECT_EQ(chosen_categories(rows), u"Work,Zoo");
  EXPECT_EQ(chosen_categories({}), u"");
}

TEST(ChooserRules, EachAddressIsARowAndNobodyWhoAttendsIsLost) {
  const Text long_name(60, u'l');
  const std::vector<StoreContact> contacts = {
      {1, u"Jones", u"Ann", u" ", u"Jones", u"Acme", {u"a@x", u"", u"ann@y"}, {}},
      {2, u"Long", long_name, {}, {}, {}, {u"l@x"}, {}},
      {3, u"Plumber", {}, {}, {}, u"Pipes", {u"p@x"}, {}},
      {4, u"Nobody", u"No", {}, u"Body", {}, {u" "}, {}},
      {5, u"Jones 2", u"Ann", {}, u"Jones", {}, {u"a@x"}, {}}};
  const std::vector<StoreRecipient> attendees = {
      {u"Bob", u"b@x"}, {u"Ann Jones", u"a@x"}, {long_name, u"l@x"}, {u"Ann Jones", u"other@x"}};
  const auto rows = attendee_rows(contacts, attendees);
  EXPECT_EQ(names_of(rows),
            (std::vector<std::string>{"+Bob", "+Ann Jones", "+Ann Jones", "Ann Jones",
                                      "+" + std::string(60, 'l'), "Plumber", "+Ann Jones"}));
  const std::vector<StoreRecipient> chosen = {
      {u"Bob", u"b@x"}, {u"Ann Jones", u"other@x"}, {u"Ann Jones", u"a@x"}, {long_name, u"l@x"}};
  EXPECT_EQ(chosen_attendees(rows), chosen);
}

TEST(ChooserRules, LettersLeadThroughAnyAlphabet) {
  const auto rows_of = [](const std::vector<Text>& names) {
    std::vector<ChooserRow> rows;
    for (const Text& name : names) rows.push_back({.name = name});
    return rows;
  };
  LetterBar bar;
  auto rows = rows_of({u"bee", u"", u"3 o'clock", u"Ant", u"Élan", u"Ёж"});
  bar.set_rows(rows);
  Text picked;
  for (int i = 0; i < 4; ++i) picked += bar.tap(0);
  EXPECT_EQ(picked, u"#AB#");
  EXPECT_EQ(bar.tap(8), u'X') << "another cell begins anew";
  EXPECT_EQ(bar.tap(0), u'#');
  EXPECT_EQ(first_row_of(rows, u'B'), 0);
  EXPECT_EQ(first_row_of(rows, u'A'), 3);
  EXPECT_EQ(first_row_of(rows, u'#'), 1);
  EXPECT_EQ(first_row_of(rows, u'Q'), -1);
  rows = rows_of({u"ёлка", u"Яма", u"юла", u"Щука", u"work"});
  EXPECT_EQ(first_row_of(rows, u'#'), -1) << "these are letters";
  bar.set_rows(rows);
  for (const auto& [cell, row] : {std::pair{2, 0}, {8, 3}})
    EXPECT_EQ(first_row_of(rows, bar.tap(cell)), row) << cell;
  // Every Cyrillic letter is under some symbol.
  for (char16_t letter = u'А'; letter <= u'Я'; ++letter) {
    bool found = false;
    for (int cell = 0; cell < kLetterCells; ++cell)
      for (const char16_t symbol : bar.label(cell))
        found = found || (symbol != u'#' && first_row_of(rows_of({Text(1, letter)}), symbol) == 0);
    EXPECT_TRUE(found) << to_utf8(Text(1, letter));
  }
  EXPECT_EQ(in_capitals(u"straße ёжž"), u"STRAßE ЁЖŽ");
}

struct ChooserDialogTest : testing::Test, EditorBench {
  ChooserDialogTest() {
    session.Open(nullptr);
    device.databases.create(kObjectStore, kCategoriesDatabase, 0);
    for (const TextView label : {u"Work", u"Home", u"Birthday"}) addCategory(volume, label);
  }
  void on(TextView setting) { WriteNumberSetting(device.registry, setting, 1); }
  std::int32_t setting(TextView name) {
    std::int32_t value = -1;
    ReadNumberSetting(device.registry, name, value);
    return value;
  }
  bool choose(std::function<void(HeadlessDialog&)> acts) {
    person(std::move(acts));
    return choose_categories(context, categories);
  }
  static Messages shown(HeadlessDialog& form) {
    Messages rows;
    for (const ReportRow& row : form.rows(kControlChooserList).content().rows)
      rows.push_back((row.mark == ReportMark::set ? "+" : "") + to_utf8(row.cells[1]));
    return rows;
  }
  Text categories = u"Work,Zoo";
};

TEST_F(ChooserDialogTest, TappedLabelsAreTheResult) {
  EXPECT_TRUE(choose([](HeadlessDialog& form) {
    EXPECT_EQ(form.title(), u"Categories");
    EXPECT_EQ(shown(form), (Messages{"Birthday", "Home", "+Work", "+Zoo"}));
    form.tap_row(kControlChooserList, 2);
    form.tap_row(kControlChooserList, 0);
    form.key(kControlChooserList, kKeyDown);
    form.key(kKeySpace);
    EXPECT_EQ(shown(form), (Messages{"+Birthday", "+Home", "Work", "+Zoo"}));
    form.press(kControlHeaderOk);
  }));
  EXPECT_EQ(categories, u"Birthday,Home,Zoo");
  EXPECT_TRUE(choose([](HeadlessDialog& form) {
    form.press(kControlSelectAll);
    EXPECT_EQ(shown(form)[2], "+Work");
    form.press(kControlSelectNone);
    form.key(kControlChooserList, kKeyReturn);
  }));
  EXPECT_EQ(categories, u"");
  EXPECT_FALSE(choose([](HeadlessDialog& form) {
    form.tap_row(kControlChooserList, 0);
    form.press_close();
  }));
  EXPECT_EQ(categories, u"");
}

TEST_F(ChooserDialogTest, BarsAreRememberedHoweverItIsLeft) {
  const auto list_height = [](HeadlessDialog& form) {
    return form.place(kControlChooserList).height;
  };
  choose([&](HeadlessDialog& form) {
    EXPECT_FALSE(form.seen(kControlLetterBar));
    const int height = list_height(form);
    form.press(kControlLetterBarToggle);
    EXPECT_TRUE(form.seen(kControlLetterBar));
    form.press(kControlLabelBarToggle);
    EXPECT_TRUE(form.seen(kControlLabel));
    EXPECT_LT(list_height(form), height);
    form.press(kControlHeaderCancel);
  });
  EXPECT_EQ(setting(u"abcbarshow"), 1);
  EXPECT_EQ(setting(u"adddeletebarshow"), 1);
  choose([&](HeadlessDialog& form) {
    EXPECT_TRUE(form.seen(kControlLetterBar));
    EXPECT_TRUE(form.seen(kControlLabel));
    form.press(kControlLetterBarToggle);
    form.press_close();
  });
  EXPECT_EQ(setting(u"abcbarshow"), 0);
}

TEST_F(ChooserDialogTest, LabelsAreAddedAndRemoved) {
  on(u"adddeletebarshow");
  settings.strdefcategory = u"Home";
  EXPECT_TRUE(choose([this](HeadlessDialog& form) {
    EXPECT_FALSE(form.reachable(kControlAddLabel));
    form.tap_row(kControlChooserList, 0);
    EXPECT_EQ(form.text(kControlLabel), u"Birthday");
    form.type(kControlLabel, u" WORK ");
    form.press(kControlAddLabel);
    EXPECT_EQ(boxes_shown(), Messages{"Error: The category label you entered is already in the "
                                      "Category Database!"});
    form.type(kControlLabel, u" Garden  ");
    form.press(kControlAddLabel);
    EXPECT_EQ(shown(form), (Messages{"+Birthday", "+Garden", "Home", "+Work", "+Zoo"}));
    EXPECT_EQ(form.text(kControlLabel), u"");
    EXPECT_EQ(form.focused, kControlLabel);
    form.type(kControlLabel, u"Home");
    form.press(kControlRemoveLabel);
    EXPECT_EQ(boxes_shown().size(), 1u) << "it is the default";
    form.tap_row(kControlChooserList, 3);
    form.press(kControlRemoveLabel);
    EXPECT_EQ(shown(form), (Messages{"+Birthday", "+Garden", "Home", "+Zoo"}));
    EXPECT_FALSE(form.reachable(kControlRemoveLabel));
    EXPECT_TRUE(boxes_shown().empty());
    form.press(kControlHeaderOk);
  }));
  EXPECT_EQ(categories, u"Birthday,Garden,Zoo");
  std::vector<Text> kept;
  readCategoryList(volume, 2, nullptr, kept);
  EXPECT_EQ(kept, (std::vector<Text>{u"Home", u"Birthday", u"Garden"}));
  // Where labels are only what the items carry, a new one stays in this list.
  generation = 3;
  EXPECT_TRUE(choose([](HeadlessDialog& form) {
    form.type(kControlLabel, u"Sea");
    form.press(kControlAddLabel);
    EXPECT_EQ(shown(form), (Messages{"+Birthday", "+Garden", "+Sea", "+Zoo"}));
    form.press(kControlHeaderOk);
  }));
  EXPECT_EQ(categories, u"Birthday,Garden,Sea,Zoo");
  readCategoryList(volume, 2, nullptr, kept);
  EXPECT_EQ(kept.size(), 3u);
}

TEST_F(ChooserDialogTest, WhatIsChosenStaysWhereTheListCannotBeReadAgain) {
  on(u"adddeletebarshow");
  EXPECT_TRUE(choose([this](HeadlessDialog& form) {
    form.tap_row(kControlChooserList, 0);
    device.databases.fail_open = DatabaseError::not_enough_memory;
    form.type(kControlLabel, u"Garden");
    form.press(kControlAddLabel);
    EXPECT_EQ(shown(form), (Messages{"+Birthday", "+Work", "+Zoo"}));
    EXPECT_EQ(form.text(kControlLabel), u"Garden") << "what was typed as well";
    EXPECT_EQ(boxes_shown(), (Messages{"Error: Not enough memory", "Error: Not enough memory"}));
    form.press(kControlHeaderOk);
  }));
  EXPECT_EQ(categories, u"Birthday,Work,Zoo");
}

TEST_F(ChooserDialogTest, AnEmptyListSaysSoAndOffersToAdd) {
  categories.clear();
  generation = 3;
  EXPECT_TRUE(choose([](HeadlessDialog& form) {
    EXPECT_EQ(shown(form), Messages{"There are no categories yet"});
    form.tap_row(kControlChooserList, 0);
    form.key(kControlChooserList, kKeyDown);
    form.key(kKeySpace);
    EXPECT_TRUE(form.seen(kControlLabel));
    form.press(kControlHeaderOk);
  }));
  EXPECT_EQ(categories, u"");
}

TEST_F(ChooserDialogTest, LettersScrollToTheFirstOfTheirRows) {
  on(u"abcbarshow");
  for (int i = 0; i < 60; ++i) addCategory(volume, format(u"%s %d", i < 30 ? u"k" : u"M", i));
  categories.clear();
  choose([](HeadlessDialog& form) {
    const Size bar = form.size_of(kControlLetterBar);
    const Point third{bar.width * 7 / 18, bar.height / 2};  // IJK
    HeadlessReport& list = form.rows(kControlChooserList);
    for (int i = 0; i < 3; ++i) form.tap(kControlLetterBar, third);
    const int row = list.selected.at(0);
    EXPECT_EQ(list.content().rows[static_cast<std::size_t>(row)].cells[1][0], u'k');
    EXPECT_EQ(list.row_place(row).y, list.titles_height() + form.place(kControlChooserList).y);
    form.key(kControlLetterBar, kKeyRight);
    EXPECT_EQ(list.selected.at(0), row) << "nothing begins with L";
    form.key(kKeySpace);
    EXPECT_EQ(list.selected.at(0), row + 30);
    const int before = list.scrolled;
    form.pen_down(kControlChooserList, {50, 60});
    form.pen_move(kControlChooserList, {50, 30});
    form.pen_up(kControlChooserList, {50, 30});
    EXPECT_EQ(list.scrolled, before + 30) << "drawn by the pen";
    EXPECT_EQ(std::count_if(list.content().rows.begin(), list.content().rows.end(),
                            [](const ReportRow& one) { return one.mark == ReportMark::set; }),
              0);
  });
}

TEST_F(ChooserDialogTest, AttendeesAreContactsAndWhoAttendsAlready) {
  device.store.put_contact({0, u"Smith", u"Zoe", {}, u"Smith", {}, {u"z@x", u"zoe@y"}, {}});
  device.store.put_contact({0, u"Adams", u"Bo", {}, u"Adams", {}, {u"b@x"}, {}});
  std::vector<StoreRecipient> attendees = {{u"Zoe Smith", u"z@x"}, {u"Guest", u"g@x"}};
  person([](HeadlessDialog& form) {
    EXPECT_EQ(form.title(), u"Attendees");
    EXPECT_FALSE(form.seen(kControlLabelBarToggle));
    EXPECT_EQ(shown(form), (Messages{"+Guest", "Bo Adams", "+Zoe Smith", "Zoe Smith"}));
    form.tap_row(kControlChooserList, 1);
    form.press(kControlHeaderOk);
  });
  EXPECT_TRUE(choose_attendees(context, attendees));
  const std::vector<StoreRecipient> chosen = {
      {u"Guest", u"g@x"}, {u"Bo Adams", u"b@x"}, {u"Zoe Smith", u"z@x"}};
  EXPECT_EQ(attendees, chosen);
  device.store.faults.contacts = true;
  person([](HeadlessDialog& form) {
    EXPECT_EQ(shown(form), (Messages{"+Guest", "+Bo Adams", "+Zoe Smith"}));
    form.press(kControlHeaderOk);
  });
  EXPECT_TRUE(choose_attendees(context, attendees));
  EXPECT_EQ(attendees, chosen) << "nobody is lost with the folder";
  EXPECT_EQ(boxes_shown(), Messages{"Error: Could not open Contacts Folder!"});
}

}  // namespace
}  // namespace orvello
