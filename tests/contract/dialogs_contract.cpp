#include "tests/contract/dialogs_contract.h"

#include <algorithm>

#include "ports/messages.h"

namespace orvello::test {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(DialogsContract);

using Event = DialogEvent::Kind;

namespace {

const std::vector<Text> kRows = {u"one", u"two", u"three"};

bool lies_at(float a, int b) {
  return a > static_cast<float>(b) - 2 && a < static_cast<float>(b) + 2;
}

}  // namespace

ReportContent report_rows(int count) {
  ReportContent content;
  content.columns = {{0, Align::left, u"Name"}, {400, Align::left, u"Address"}};
  for (int i = 0; i < count; ++i) {
    ReportRow row;
    row.cells = {u"row", u"cell"};
    row.height = 20;
    row.mark = ReportMark::clear;
    content.rows.push_back(row);
  }
  return content;
}

void DialogsContract::fill(Dialog& dialog) {
  dialog.choice(kDropList)->set_rows(kRows);
  dialog.choice(kCombo)->set_rows(kRows);
  dialog.list(kList)->set_rows(kRows);
  dialog.list(kMultiList)->set_rows(kRows);
  for (const int date : {kDate, kCalendar}) {
    dialog.date(date)->set_calendar({11, 21, 2026}, true);
    dialog.date(date)->set_date({11, 20, 2026});
  }
  dialog.date(kDate)->set_picture(u"MMMM,dd");
  dialog.range(kSlider)->set_range(5, 15);
  dialog.range(kSlider)->set_position(10);
  dialog.report(kReport)->set_content(report_rows(3));
}

void DialogsContract::open() {
  dialog_ = bench_->dialogs().open_modeless(every_kind_form(), told_);
  ASSERT_NE(dialog_, nullptr);
  fill(*dialog_);
  bench_->settle();
  EXPECT_EQ(told_.take(), Told{"init"}) << "no setter is told, and no focus was given";
}

Told DialogsContract::after(const std::function<void()>& act) {
  told_.take();
  act();
  bench_->settle();
  EXPECT_FALSE(told_.told_inside);
  return told_.take();
}

Told DialogsContract::run(const DialogTemplate& dialog, const std::function<void()>& person) {
  bench_->in_front(person);
  result_ = bench_->dialogs().run_modal(dialog, told_);
  bench_->settle();
  return told_.take();
}

TEST_P(DialogsContract, AHandleIsOfItsControlsKindAndNullForOthers) {
  open();
  for (int control = kLabel - 1; control <= kButton; ++control) {
    SCOPED_TRACE(control);
    const auto is_one_of = [&](std::initializer_list<int> ids) {
      return std::find(ids.begin(), ids.end(), control) != ids.end();
    };
    EXPECT_EQ(dialog_->choice(control) != nullptr, is_one_of({kDropList, kCombo}));
    EXPECT_EQ(dialog_->list(control) != nullptr, is_one_of({kList, kMultiList}));
    EXPECT_EQ(dialog_->date(control) != nullptr, is_one_of({kDate, kCalendar}));
    EXPECT_EQ(dialog_->range(control) != nullptr, is_one_of({kSlider}));
    EXPECT_EQ(dialog_->notes(control) != nullptr, is_one_of({kNotes}));
    EXPECT_EQ(dialog_->report(control) != nullptr, is_one_of({kReport}));
    EXPECT_EQ(dialog_->drawn(control) != nullptr, is_one_of({kReport, kCustom, kPicture}));
    EXPECT_EQ(dialog_->choice(control), dialog_->choice(control)) << "as old as the dialog";
  }
  // Nothing happens to what is not there, nor to what is of another kind.
  EXPECT_EQ(after([&] {
              dialog_->set_text(99, u"text");
              dialog_->set_checked(99, true);
              dialog_->set_checked(kEdit, true);
              dialog_->enable(99, false);
              dialog_->show(99, false);
              dialog_->focus(99);
              dialog_->focus(kLabel);
              dialog_->set_place(99, {0, 0, 1, 1});
            }),
            Told());
  EXPECT_TRUE(dialog_->text(99).empty());
  EXPECT_FALSE(dialog_->checked(99) || dialog_->checked(kEdit));
  EXPECT_TRUE(dialog_->place(99).empty());
}

TEST_P(DialogsContract, TextsAreWhatStandsInAControl) {
  open();
  EXPECT_EQ(after([&] {
              for (const int control : {kLabel, kLine, kEdit, kMultiLine, kCombo, kCheck, kToggle,
                                        kRadioOne, kButton, kPicture, 0}) {
                dialog_->set_text(control, u"a & b");
                EXPECT_EQ(dialog_->text(control), u"a & b") << control;
              }
              for (const int control : {kDate, kSlider, kReport, kCalendar, kNotes, kCustom}) {
                dialog_->set_text(control, u"text");
                EXPECT_EQ(dialog_->text(control), u"") << control;
              }
              dialog_->set_text(kMultiLine, u"two\nlines");
              EXPECT_EQ(dialog_->text(kMultiLine), u"two\nlines");
              dialog_->set_text(kEdit, u"123456789");
              EXPECT_EQ(dialog_->text(kEdit), u"12345678");
              dialog_->set_text(kCombo, u"1234567890123");
              EXPECT_EQ(dialog_->text(kCombo), u"123456789012");
            }),
            Told());
}

TEST_P(DialogsContract, FreshRowsAreNotSelectedAndTheTextOfAListIsItsRow) {
  open();
  ChoiceControl& drop = *dialog_->choice(kDropList);
  EXPECT_EQ(drop.rows(), kRows);
  EXPECT_EQ(drop.selected(), -1);
  EXPECT_EQ(dialog_->text(kDropList), u"");
  drop.select(2);
  EXPECT_EQ(dialog_->text(kDropList), u"three");
  dialog_->set_text(kDropList, u"two");
  EXPECT_EQ(drop.selected(), 1);
  dialog_->set_text(kDropList, u"Two");
  EXPECT_EQ(drop.selected(), -1);
  drop.select(1);
  drop.set_rows({u"four"});
  EXPECT_EQ(drop.selected(), -1);
  EXPECT_EQ(dialog_->text(kDropList), u"");

  ChoiceControl& combo = *dialog_->choice(kCombo);
  EXPECT_EQ(combo.selected(), -1);
  dialog_->set_text(kCombo, u"two");
  EXPECT_EQ(combo.selected(), 1) << "the row that stands there";
  dialog_->set_text(kCombo, u"other");
  EXPECT_EQ(combo.selected(), -1);
  combo.set_rows({u"other", u"five"});
  EXPECT_EQ(dialog_->text(kCombo), u"other") << "fresh rows leave a combo's text";
  combo.select(1);
  EXPECT_EQ(dialog_->text(kCombo), u"five");

  for (const int control : {kList, kMultiList}) {
    ListControl& list = *dialog_->list(control);
    EXPECT_TRUE(list.selected().empty());
    EXPECT_EQ(dialog_->text(control), u"");
    dialog_->set_text(control, u"three");
    EXPECT_EQ(list.selected(), std::vector<int>{2});
    list.select({2, 1, 7, -1});
    EXPECT_EQ(list.selected(), control == kList ? std::vector<int>{2} : (std::vector<int>{1, 2}));
    EXPECT_EQ(dialog_->text(control), control == kList ? u"three" : u"two");
    list.select({7});
    EXPECT_TRUE(list.selected().empty());
  }
  EXPECT_EQ(after([] {}), Told());
}

TEST_P(DialogsContract, DatesAndPositionsStayWithinWhatThereIs) {
  open();
  for (const int control : {kDate, kCalendar}) {
    dialog_->date(control)->set_date({2, 30, 2026});
    EXPECT_EQ(dialog_->date(control)->date(), (MonthDayYear{11, 20, 2026}));
    dialog_->date(control)->set_date({2, 29, 2028});
    EXPECT_EQ(dialog_->date(control)->date(), (MonthDayYear{2, 29, 2028}));
  }
  RangeControl& range = *dialog_->range(kSlider);
  range.set_position(99);
  EXPECT_EQ(range.position(), 15);
  range.set_range(0, 7);
  EXPECT_EQ(range.position(), 7);
  EXPECT_EQ(after([] {}), Told());
}

TEST_P(DialogsContract, WhatIsPressedIsTold) {
  open();
  int had = 0;
  for (const int control : {kLine, kButton, kDefault, kPicture, kCheck, kToggle, kRadioOne}) {
    Told expected;
    if (had != 0) expected.push_back(id("focus_lost", had));
    expected.push_back(id("focus_gained", control));
    expected.push_back(id("command", control));
    EXPECT_EQ(after([&] { bench_->tap(control); }), expected);
    EXPECT_EQ(bench_->focused(), control);
    had = control;
  }
  EXPECT_TRUE(dialog_->checked(kCheck) && dialog_->checked(kToggle) && dialog_->checked(kRadioOne));
  bench_->tap(kCheck);
  EXPECT_EQ(after([&] { bench_->key(kKeySpace); }), Told{id("command", kCheck)});
  EXPECT_TRUE(dialog_->checked(kCheck));
  EXPECT_EQ(after([&] { bench_->tap(kLabel); }), Told());
}

TEST_P(DialogsContract, RowsDatesAndPositionsAreToldWhenTheyChangeAndWhenTheyAreTaken) {
  open();
  const auto changed_and_taken = [](int control) {
    return Told{id("focus_gained", control), id("changed", control), id("taken", control)};
  };
  const auto leave = [&] { dialog_->focus(0); };
  EXPECT_EQ(after([&] { bench_->choose_row(kDropList, 1); }), changed_and_taken(kDropList));
  EXPECT_EQ(dialog_->choice(kDropList)->selected(), 1);
  EXPECT_EQ(bench_->dropped_down(), 0);
  EXPECT_EQ(after([&] { bench_->choose_row(kDropList, 1); }), Told{id("taken", kDropList)});
  EXPECT_EQ(after(leave), Told{id("focus_lost", kDropList)});
  EXPECT_EQ(after([&] { bench_->choose_row(kCombo, 2); }), changed_and_taken(kCombo));
  EXPECT_EQ(dialog_->text(kCombo), u"three");
  EXPECT_EQ(after(leave), Told{id("focus_lost", kCombo)});
  EXPECT_EQ(after([&] { bench_->tap_row(kList, 0); }), changed_and_taken(kList));
  EXPECT_EQ(after([&] { bench_->tap_row(kList, 0); }), Told{id("taken", kList)});
  EXPECT_EQ(after([&] { bench_->key(kKeyDown); }), Told{id("changed", kList)});
  EXPECT_EQ(dialog_->text(kList), u"two");
  EXPECT_EQ(after(leave), (Told{id("taken", kList), id("focus_lost", kList)})) << "left changed";
  EXPECT_EQ(after([&] { bench_->tap_row(kMultiList, 2); }), changed_and_taken(kMultiList));
  bench_->tap_row(kMultiList, 0);
  EXPECT_EQ(dialog_->list(kMultiList)->selected(), (std::vector<int>{0, 2}));
  bench_->tap_row(kMultiList, 2);
  EXPECT_EQ(dialog_->list(kMultiList)->selected(), std::vector<int>{0});
  leave();
  const MonthDayYear day{12, 3, 2026};
  for (const int control : {kDate, kCalendar}) {
    bench_->settle();
    EXPECT_EQ(after([&] { bench_->pick_date(control, day); }), changed_and_taken(control));
    EXPECT_EQ(dialog_->date(control)->date(), day);
    leave();
  }
  bench_->settle();
  EXPECT_EQ(after([&] { bench_->slide(kSlider, 12); }), changed_and_taken(kSlider));
  EXPECT_EQ(dialog_->range(kSlider)->position(), 12);
}

TEST_P(DialogsContract, TypingStopsAtTheLimitAndGoesWhereTheCaretIs) {
  open();
  dialog_->set_text(kEdit, u"old");
  dialog_->focus(kEdit, Caret::all);
  bench_->settle();
  EXPECT_EQ(after([&] { bench_->type(u"abc"); }), Told{id("changed", kEdit)});
  EXPECT_EQ(dialog_->text(kEdit), u"abc");
  EXPECT_EQ(after([&] { bench_->key(kKeyDown); }), Told{id("key", kEdit)}) << "it has one line";
  EXPECT_EQ(told_.last.key, kKeyDown);
  dialog_->focus(kEdit, Caret::end);
  EXPECT_EQ(after([&] { bench_->type(u"defghij"); }), Told{id("changed", kEdit)});
  EXPECT_EQ(dialog_->text(kEdit), u"abcdefgh");
  EXPECT_EQ(after([&] { bench_->type(u"z"); }), Told());
  dialog_->choice(kCombo)->select(1);
  dialog_->focus(kCombo, Caret::end);
  bench_->settle();
  EXPECT_EQ(after([&] { bench_->type(u"!"); }), Told{id("changed", kCombo)});
  EXPECT_EQ(dialog_->text(kCombo), u"two!");
  EXPECT_EQ(dialog_->choice(kCombo)->selected(), -1);
  EXPECT_EQ(after([&] { bench_->tap(kButton); }).front(), id("focus_lost", kCombo))
      << "typed text is not taken";
  dialog_->focus(kMultiLine, Caret::end);
  bench_->settle();
  bench_->type(u"a");
  EXPECT_EQ(after([&] { bench_->key(kKeyReturn); }), Told{id("changed", kMultiLine)});
  EXPECT_EQ(dialog_->text(kMultiLine), u"a\n");
}

TEST_P(DialogsContract, AProgramsMoveOfTheFocusIsToldAfterwards) {
  open();
  told_.act = [&](Dialog& dialog, const DialogEvent& event) {
    if (event.kind == Event::command && event.control == kButton) {
      dialog.focus(kEdit);
      dialog.focus(kCombo);
      dialog.set_text(kEdit, u"set");
    }
  };
  EXPECT_EQ(after([&] { bench_->tap(kButton); }),
            (Told{id("focus_gained", kButton), id("command", kButton), id("focus_lost", kButton),
                  id("focus_gained", kEdit), id("focus_lost", kEdit), id("focus_gained", kCombo)}));
  EXPECT_EQ(after([&] { dialog_->focus(kCombo); }), Told()) << "it is there";
  EXPECT_EQ(after([&] { dialog_->focus(0); }), Told{id("focus_lost", kCombo)});
  EXPECT_EQ(bench_->focused(), 0);
  // What goes away has no focus, and passes it on to nothing.
  for (const bool hide : {true, false}) {
    dialog_->focus(kEdit);
    bench_->settle();
    EXPECT_EQ(after([&] { hide ? dialog_->show(kEdit, false) : dialog_->enable(kEdit, false); }),
              Told{id("focus_lost", kEdit)});
    EXPECT_EQ(bench_->focused(), 0);
    EXPECT_EQ(after([&] { dialog_->focus(kEdit); }), Told()) << "not while it is away";
    EXPECT_EQ(after([&] { bench_->tap(kEdit); }), Told());
    EXPECT_EQ(dialog_->place(kEdit).empty(), hide);
    EXPECT_EQ(bench_->seen(kEdit), !hide);
    EXPECT_EQ(bench_->enabled(kEdit), hide);
    dialog_->show(kEdit, true);
    dialog_->enable(kEdit, true);
    EXPECT_EQ(bench_->focused(), 0);
  }
}

TEST_P(DialogsContract, ALineGivesItsPlaceToAnEditAndGetsTheTextBack) {
  open();
  told_.act = [](Dialog& dialog, const DialogEvent& event) {
    const bool opens = event.kind == Event::command && event.control == kLine;
    const bool gives_back = event.kind == Event::focus_lost && event.control == kLineEdit;
    const bool opened = event.kind == Event::focus_gained && event.control == kLineEdit;
    if (opened) dialog.focus(kLineEdit, Caret::all);
    if (!opens && !gives_back) return;
    dialog.show(kLine, gives_back);
    dialog.show(kLineEdit, opens);
    if (opens) dialog.set_text(kLineEdit, dialog.text(kLine));
    if (opens) dialog.focus(kLineEdit, Caret::all);
    if (gives_back) dialog.set_text(kLine, dialog.text(kLineEdit));
  };
  EXPECT_TRUE(dialog_->place(kLineEdit).empty()) << "hidden until it is shown";
  const Rect place = dialog_->place(kLine);
  EXPECT_FALSE(place.empty());
  EXPECT_EQ(after([&] { bench_->tap(kLine); }),
            (Told{id("focus_gained", kLine), id("command", kLine), id("focus_lost", kLine),
                  id("focus_gained", kLineEdit)}));
  EXPECT_EQ(dialog_->place(kLineEdit), place);
  bench_->type(u"typed");
  EXPECT_EQ(
      after([&] { bench_->tap(kButton); }),
      (Told{id("focus_lost", kLineEdit), id("focus_gained", kButton), id("command", kButton)}));
  EXPECT_EQ(dialog_->text(kLine), u"typed");
  EXPECT_TRUE(bench_->seen(kLine) && !bench_->seen(kLineEdit));
  dialog_->focus(kLine);
  bench_->settle();
  bench_->type(u"anew");
  bench_->settle();
  EXPECT_EQ(dialog_->text(kLineEdit), u"anew") << "what is typed on a line is meant for its edit";
}

TEST_P(DialogsContract, AProgramOpensAListAndEscapeClosesThatAlone) {
  told_.act = [&](Dialog& dialog, const DialogEvent& event) {
    if (event.kind == Event::init) fill(dialog);
    if (event.kind == Event::command && event.control == kButton) dialog.choice(kDropList)->open();
  };
  const Told told = run(every_kind_form(), [&] {
    EXPECT_EQ(after([&] { bench_->tap(kButton); }).back(), id("focus_gained", kDropList));
    EXPECT_EQ(bench_->dropped_down(), kDropList);
    EXPECT_EQ(after([&] { bench_->key(kKeyEscape); }), Told());
    EXPECT_EQ(bench_->dropped_down(), 0);
    EXPECT_EQ(bench_->focused(), kDropList);
  });
  EXPECT_EQ(told, (Told{"may_close", "close"}));
}

TEST_P(DialogsContract, RadioButtonsOfANumberAreAGroupAndStepsShareTheirPlace) {
  dialog_ = bench_->dialogs().open_modeless(step_form(), told_);
  dialog_->set_step(1);
  bench_->settle();
  EXPECT_TRUE(bench_->seen(kType) && bench_->seen(kNext) && !bench_->seen(kOften));
  dialog_->set_checked(kOften, true);
  dialog_->set_checked(kForever, true);
  dialog_->focus(kType);
  EXPECT_EQ(after([&] { dialog_->set_step(2); }),
            (Told{id("focus_gained", kType), id("focus_lost", kType)}));
  EXPECT_TRUE(!bench_->seen(kType) && bench_->seen(kNext) && bench_->seen(kOften));
  EXPECT_TRUE(dialog_->place(kType).empty());
  EXPECT_EQ(after([&] { bench_->tap(kSeldom); }).back(), id("command", kSeldom));
  const auto chosen = [&] {
    std::vector<int> found;
    for (const int radio : {kOften, kUntil, kSeldom, kForever})
      if (dialog_->checked(radio)) found.push_back(radio);
    return found;
  };
  EXPECT_EQ(chosen(), (std::vector<int>{kSeldom, kForever}));
  bench_->tap(kUntil);
  EXPECT_EQ(chosen(), (std::vector<int>{kUntil, kSeldom}));
  EXPECT_EQ(after([&] {
              dialog_->set_checked(kOften, true);
              dialog_->set_checked(kUntil, false);
            }),
            Told());
  EXPECT_EQ(chosen(), std::vector<int>{kOften}) << "also the last one of a group goes out";
  dialog_->focus(kOften);
  bench_->settle();
  EXPECT_EQ(after([&] { bench_->key(kKeyDown); }).back(), id("command", kSeldom));
  EXPECT_EQ(chosen(), std::vector<int>{kSeldom});
  dialog_->show(kForever, false);
  dialog_->set_step(3);
  dialog_->set_step(2);
  EXPECT_FALSE(bench_->seen(kForever)) << "a step shows nothing that was hidden";
}

TEST_P(DialogsContract, TitlePicturesAndPlacesCanBeSet) {
  told_.act = [&](Dialog& dialog, const DialogEvent& event) {
    if (event.kind != Event::init) return;
    EXPECT_EQ(dialog.text(0), u"Every kind");
    dialog.set_text(0, u"Another title");
    dialog.drawn(kPicture)->set_image({8, 8, std::vector<Color>(64, kBlack)});
    dialog.set_place(kCheck, {8, 206, 100, 30});
  };
  run(every_kind_form(), [&] { EXPECT_EQ(bench_->title(), u"Another title"); });
  told_.act = nullptr;
  open();
  const Rect before = dialog_->place(kCheck), other = dialog_->place(kToggle);
  dialog_->set_place(kCheck, {8, 226, 100, 30});
  const Rect now = dialog_->place(kCheck);
  EXPECT_GT(now.y, before.y);
  EXPECT_GT(now.height, before.height);
  EXPECT_EQ(dialog_->place(kToggle), other);
  EXPECT_EQ(after([] {}), Told());
}

TEST_P(DialogsContract, WhatIsDrawnTakesThePointerAndKeysAndOpensMenus) {
  open();
  EXPECT_EQ(after([&] {
              bench_->pen_down(kCustom, {20, 10});
            }),
            (Told{id("focus_gained", kCustom), id("pointer_down", kCustom)}));
  EXPECT_EQ(told_.last.point, (Point{20, 10}));
  EXPECT_EQ(told_.last.size.width, dialog_->place(kCustom).width);
  bench_->pen_move(kCustom, {30, 10});
  EXPECT_EQ(told_.last.kind, Event::pointer_move);
  EXPECT_EQ(after([&] {
              bench_->pen_up(kCustom, {30, 500});
            }),
            Told{id("pointer_up", kCustom)})
      << "also beside the control";
  EXPECT_EQ(told_.last.point, (Point{30, 500}));
  EXPECT_EQ(after([&] { bench_->key(kKeyReturn, true, true); }), Told{id("key", kCustom)});
  EXPECT_TRUE(told_.last.key == kKeyReturn && told_.last.control_held && told_.last.shift_held);
  const std::vector<MenuItem> items = {{70, u"Open", true, false}, {71, u"Paste", false, false}};
  for (const std::uint32_t command : {70u, 71u, 0u}) {
    bench_->choose_in_menu(command);
    EXPECT_EQ(dialog_->drawn(kCustom)->track_menu(items, {10, 10}), command == 70 ? 70u : 0u);
  }
  EXPECT_EQ(after([] {}), Told()) << "a menu gives the focus back";
  dialog_->enable(kCustom, false);
  bench_->settle();
  EXPECT_EQ(after([&] { bench_->tap(kCustom); }), Told()) << "it is only looked at";
}

TEST_P(DialogsContract, ARowOfAReportIsWhereItSaysAndItsMarkIsTheProcedures) {
  open();
  ReportList& report = *dialog_->report(kReport);
  report.set_content(report_rows(30));
  EXPECT_EQ(report.row_at({5, 2}), -1) << "the titles";
  EXPECT_GT(report.row_place(0).y, dialog_->place(kReport).y);
  EXPECT_TRUE(report.row_place(30).empty());
  int tapped = -1;
  told_.act = [&](Dialog&, const DialogEvent& event) {
    if (event.kind != Event::pointer_down) return;
    tapped = report.row_at(event.point);
    report.set_mark(tapped, ReportMark::set);
    report.select({tapped});
  };
  EXPECT_EQ(
      after([&] { bench_->tap_row(kReport, 1); }),
      (Told{id("focus_gained", kReport), id("pointer_down", kReport), id("pointer_up", kReport)}));
  EXPECT_EQ(tapped, 1);
  EXPECT_EQ(after([&] { bench_->pen_down(kReport, {5, 2}); }), Told()) << "a title is no row";
  bench_->pen_up(kReport, {5, 2});
  const int top = report.row_place(0).y;
  report.show_row(20);
  EXPECT_LE(report.row_place(20).bottom(), dialog_->place(kReport).bottom());
  EXPECT_GT(report.row_place(20).y, dialog_->place(kReport).y);
  report.set_content(report_rows(30));
  EXPECT_EQ(report.row_place(0).y, top) << "fresh rows stand at the top";
}

TEST_P(DialogsContract, NotesAreTextStylesAndStrokes) {
  open();
  NotesControl& notes = *dialog_->notes(kNotes);
  NotesContent content;
  content.text = u"Plain and bold\nsecond";
  content.runs = {{10, 4, {true, false, false, false}}};
  content.strokes = {{kBlack, 2, {{10, 10, 1}, {30, 30, 0.5f}}}};
  content.width = 180;
  notes.set_content(content);
  EXPECT_EQ(notes.content(), content);
  EXPECT_FALSE(notes.undo()) << "what the program did is no change of the person's";
  EXPECT_FALSE(notes.can_undo() || notes.can_redo());
  dialog_->focus(kNotes);
  bench_->settle();
  EXPECT_EQ(after([&] { bench_->select_text(kNotes, 10, 4); }), (Told{id("taken", kNotes)}))
      << "the caret came to stand in another style";
  EXPECT_TRUE(notes.style().bold);
  EXPECT_EQ(after([&] { bench_->select_text(kNotes, 0, 5); }), (Told{id("taken", kNotes)}));
  NotesStyle italic;
  italic.italic = true;
  EXPECT_EQ(after([&] { notes.set_style(italic); }), Told());
  EXPECT_EQ(notes.style(), italic);
  EXPECT_TRUE(notes.can_undo()) << "a style is set for the person";
  EXPECT_EQ(notes.content().runs,
            (std::vector<NotesRun>{{0, 5, italic}, {10, 4, {true, false, false, false}}}));
  dialog_->focus(kNotes, Caret::end);
  bench_->settle();
  notes.set_style({});
  EXPECT_EQ(after([&] { bench_->type(u"!"); }), (Told{id("changed", kNotes)}));
  EXPECT_EQ(notes.content().text, u"Plain and bold\nsecond!");

  notes.set_tool(NotesTool::pen);
  EXPECT_EQ(after([&] {
              bench_->draw(kNotes, {{40, 20}, {60, 20}, {80, 40}});
            }),
            Told{id("changed", kNotes)});
  ASSERT_EQ(notes.content().strokes.size(), 2u);
  EXPECT_EQ(notes.content().width, 180);
  EXPECT_EQ(after([&] { bench_->type(u"?"); }), (Told{id("changed", kNotes)})) << "keys write on";
  EXPECT_TRUE(notes.undo());
  const std::vector<StrokePoint> drawn = notes.content().strokes[1].points;
  EXPECT_TRUE(lies_at(drawn.front().x, 40) && lies_at(drawn.front().y, 20));
  EXPECT_TRUE(lies_at(drawn.back().x, 80) && lies_at(drawn.back().y, 40));
  notes.set_tool(NotesTool::eraser);
  EXPECT_EQ(after([&] { bench_->draw(kNotes, {{30, 30}}); }), Told{id("changed", kNotes)});
  ASSERT_EQ(notes.content().strokes.size(), 1u) << "the stroke that it touched, as a whole";
  EXPECT_TRUE(lies_at(notes.content().strokes[0].points.front().x, 40));

  EXPECT_EQ(after([&] {
              EXPECT_TRUE(notes.undo());
              EXPECT_EQ(notes.content().strokes.size(), 2u);
              EXPECT_TRUE(notes.undo());
              EXPECT_EQ(notes.content().strokes.size(), 1u);
              EXPECT_TRUE(notes.undo());
              EXPECT_EQ(notes.content().text, content.text);
              EXPECT_TRUE(notes.undo());
              EXPECT_EQ(notes.content().runs, content.runs);
              EXPECT_FALSE(notes.undo() || notes.can_undo());
              for (int i = 0; i < 3; ++i) EXPECT_TRUE(notes.can_redo() && notes.redo());
              EXPECT_EQ(notes.content().text, content.text + u"!");
              EXPECT_EQ(notes.content().strokes.size(), 2u);
              notes.set_content({});
              EXPECT_FALSE(notes.undo() || notes.redo());
            }),
            Told());
  EXPECT_EQ(notes.content().width, 0);
  notes.set_tool(NotesTool::pen);
  bench_->draw(kNotes, {{20, 20}});
  EXPECT_GT(notes.content().width, 0) << "text stays under the first stroke";
  notes.undo();
  EXPECT_EQ(notes.content(), NotesContent());
}

TEST_P(DialogsContract, ReturnOnAButtonPressesThatOne) {
  open();
  dialog_->focus(kButton);
  bench_->settle();
  EXPECT_EQ(after([&] { bench_->key(kKeyReturn); }), Told{id("command", kButton)});
}

TEST_P(DialogsContract, ListsGoOnWithReturnAndNotesKeepTheirLimit) {
  open();
  NotesControl& notes = *dialog_->notes(kNotes);
  NotesStyle bullet;
  bullet.bullet = true;
  dialog_->focus(kNotes, Caret::end);
  bench_->settle();
  bench_->type(u"a");
  notes.set_style(bullet);
  bench_->key(kKeyReturn);
  bench_->type(u"b");
  EXPECT_EQ(notes.content().runs, (std::vector<NotesRun>{{0, 3, bullet}}));
  bench_->key(kKeyReturn);
  bench_->key(kKeyReturn);
  EXPECT_FALSE(notes.style().bullet) << "an empty line ends the list";
  bench_->type(u"c");
  EXPECT_EQ(notes.content().text, u"a\nb\nc");

  // 40 units: room for one more unit, and the next takes two.
  NotesContent full;
  full.text.assign(39, u'x');
  notes.set_content(full);
  dialog_->focus(kNotes, Caret::end);
  EXPECT_EQ(after([&] { bench_->type(u"\U0001F4C5"); }), Told());
  EXPECT_EQ(notes.content(), full) << "no half of a pair";
  bench_->type(u"y");
  EXPECT_EQ(after([&] { bench_->type(u"z"); }), Told());
  EXPECT_EQ(notes.content().text, full.text + u"y");
  full.text.assign(90, u'x');
  notes.set_content(full);
  EXPECT_EQ(notes.content(), full) << "what an item has more of stays";
}

}  // namespace orvello::test
