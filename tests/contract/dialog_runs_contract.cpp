// The part of the dialog contract that is about what runs: modal dialogs, timers, popups, sheets,
// boxes, wheels and lists that glide.
#include <algorithm>
#include <utility>

#include "ports/messages.h"
#include "tests/contract/dialogs_contract.h"

namespace orvello::test {

using Event = DialogEvent::Kind;

TEST_P(DialogsContract, AModalOneEndsWithItsResultAndTellsNothingAfterwards) {
  told_.act = [](Dialog& dialog, const DialogEvent& event) {
    if (event.kind != Event::command) return;
    dialog.close(42);
    dialog.close(43);
    dialog.focus(kEdit);
    dialog.set_timer(1, 1);
  };
  // The first control that takes it has the focus, Return presses the default button, and Tab goes
  // by the template past what is off or hidden.
  const Told told = run(every_kind_form(), [&] {
    EXPECT_EQ(bench_->focused(), kLine);
    EXPECT_EQ(after([&] { bench_->tab(); }),
              (Told{id("focus_lost", kLine), id("focus_gained", kEdit)}));
    EXPECT_EQ(after([&] { bench_->tab(true); }).back(), id("focus_gained", kLine));
    bench_->tab();
    told_.take();
    bench_->key(kKeyReturn);
  });
  EXPECT_EQ(told, Told{id("command", kDefault)});
  EXPECT_EQ(result_, 42);
  // Closed before it was shown.
  told_.act = [](Dialog& dialog, const DialogEvent&) { dialog.close(7); };
  EXPECT_EQ(run(every_kind_form(), [] {}), Told{"init"});
  EXPECT_EQ(result_, 7);
}

TEST_P(DialogsContract, AProcedureMayKeepAPersonFromClosing) {
  told_.agrees = false;
  Told told = run(step_form(), [&] {
    EXPECT_EQ(after([&] { bench_->press_close(); }), Told{"may_close"});
    EXPECT_EQ(after([&] { bench_->key(kKeyEscape); }), Told{"may_close"});
    EXPECT_EQ(after([&] { bench_->tap(kNext); }).back(), id("command", kNext)) << "it is open";
    told_.agrees = true;
    bench_->press_close();
  });
  EXPECT_EQ(told, (Told{"may_close", "close"}));
  EXPECT_EQ(result_, 0);
  told_.act = [](Dialog& dialog, const DialogEvent& event) {
    if (event.kind == Event::close) dialog.close(3);
  };
  run(step_form(), [&] { bench_->press_close(); });
  EXPECT_EQ(result_, 3);
}

TEST_P(DialogsContract, WhatStandsBelowWaits) {
  open();
  RecordingProcedure above;
  told_.act = [&](Dialog& dialog, const DialogEvent& event) {
    if (event.kind != Event::command) return;
    dialog.set_timer(1, 1);
    dialog.set_text(kEdit, u"set");
    bench_->in_front([&] {
      bench_->wait(1);
      bench_->tap(kButton);  // there is none on this one
      bench_->tap(kNext);
    });
    bench_->dialogs().run_modal(step_form(), above);
    dialog.set_timer(1, 0);
    told_.take();
  };
  const Told told = after([&] { bench_->tap(kButton); });
  EXPECT_TRUE(told.empty() || told == Told{"timer 1"}) << "neither the focus nor a press";
  EXPECT_EQ(bench_->focused(), kButton);
  const Told heard = above.take();
  EXPECT_EQ(std::count(heard.begin(), heard.end(), id("command", kNext)), 1);
}

TEST_P(DialogsContract, ATimerRepeatsUntilItIsStopped) {
  open();
  dialog_->set_timer(3, 5);
  EXPECT_GE(after([&] { bench_->wait(3); }).size(), 1u);
  EXPECT_GE(after([&] { bench_->wait(3); }).size(), 1u);
  EXPECT_EQ(told_.last.control, 3);
  dialog_->set_timer(3, 0);
  EXPECT_EQ(after([&] { bench_->wait(3); }), Told());
}

TEST_P(DialogsContract, APressBesideAPopupAndEscapeAreTold) {
  DialogTemplate popup = step_form();
  popup.popup = true;
  popup.full_screen = false;
  popup.place = {20, 40, 200, 160};
  told_.act = [](Dialog& dialog, const DialogEvent& event) {
    if (event.kind == Event::focus_lost && event.control == 0) dialog.close(5);
  };
  EXPECT_EQ(run(popup, [&] { bench_->press_beside(); }).back(), "focus_lost");
  EXPECT_EQ(result_, 5);
  const Told told = run(popup, [&] { bench_->key(kKeyEscape); });
  EXPECT_EQ(Told(told.end() - 2, told.end()), (Told{"may_close", "close"}));
  EXPECT_EQ(result_, 0);
}

namespace {

// Three procedures that write into one list, each with its page's name in front, without the focus.
struct SheetRun {
  explicit SheetRun(DialogsBench& with) : bench(with) {
    const std::vector<DialogTemplate> forms = sheet_pages();
    for (int i = 0; i < kPages; ++i) {
      procedures.push_back(std::make_unique<RecordingProcedure>(std::to_string(i) + ":", &told));
      procedures.back()->act = [this, i](Dialog& dialog, const DialogEvent& event) {
        if (event.kind == Event::init) dialogs.push_back(&dialog);
        if (act) act(i, dialog, event);
      };
      pages.push_back({forms[static_cast<std::size_t>(i)], procedures.back().get()});
    }
  }
  int run(const std::function<void()>& person) {
    bench.in_front(person);
    return bench.dialogs().run_sheet(u"Sheet", pages);
  }
  Told take() {
    Told kept;
    for (const std::string& one : std::exchange(told, {}))
      if (one.find("focus") == std::string::npos) kept.push_back(one);
    return kept;
  }
  Told after(const std::function<void()>& what) {
    take();
    what();
    bench.settle();
    return take();
  }

  DialogsBench& bench;
  Told told;
  std::vector<std::unique_ptr<RecordingProcedure>> procedures;
  std::vector<SheetPage> pages;
  std::vector<Dialog*> dialogs;
  std::function<void(int, Dialog&, const DialogEvent&)> act;
};

}  // namespace

TEST_P(DialogsContract, PagesOfASheetExistFromTheStartAndAreAppliedInOrder) {
  SheetRun sheet(*bench_);
  const int result = sheet.run([&] {
    EXPECT_EQ(sheet.take(), (Told{"0:init", "1:init", "2:init", "0:page_shown"}));
    EXPECT_EQ(bench_->title(), u"Sheet");
    ASSERT_EQ(sheet.dialogs.size(), 3u);
    sheet.dialogs[2]->set_text(kPageEdit, u"set");
    EXPECT_EQ(sheet.dialogs[2]->text(kPageEdit), u"set");
    EXPECT_TRUE(sheet.dialogs[2]->place(kPageEdit).empty());
    EXPECT_FALSE(sheet.dialogs[0]->place(kPageEdit).empty());
    EXPECT_EQ(sheet.after([&] { bench_->tap(kPageButton); }), Told{id("0:command", kPageButton)});
    sheet.procedures[0]->agrees = false;
    EXPECT_EQ(sheet.after([&] { bench_->show_page(2); }), Told{"0:may_leave"});
    EXPECT_EQ(sheet.after([&] { bench_->press_ok(); }), Told{"0:may_leave"});
    EXPECT_EQ(sheet.after([&] { bench_->press_cancel(); }), Told{"0:may_close"});
    sheet.procedures[0]->agrees = true;
    EXPECT_EQ(sheet.after([&] { bench_->show_page(2); }),
              (Told{"0:may_leave", "0:page_left", "2:page_shown"}));
    EXPECT_TRUE(sheet.dialogs[0]->place(kPageEdit).empty());
    EXPECT_EQ(sheet.after([&] { bench_->tap(kPageButton); }), Told{id("2:command", kPageButton)});
    sheet.dialogs[2]->focus(kPageEdit);
    bench_->settle();
    bench_->key(kKeyReturn);  // the sheet's default button
  });
  EXPECT_EQ(result, kSheetOk);
  EXPECT_EQ(sheet.take(), (Told{"2:may_leave", "2:page_left", "0:page_applied", "1:page_applied",
                                "2:page_applied"}));
}

TEST_P(DialogsContract, ACancelledSheetTellsEveryPageAndAPageCanEndIt) {
  SheetRun sheet(*bench_);
  EXPECT_EQ(sheet.run([&] {
    sheet.take();
    bench_->press_cancel();
  }),
            kSheetCancelled);
  EXPECT_EQ(sheet.take(), (Told{"0:may_close", "0:close", "1:close", "2:close"}));
  sheet.act = [](int page, Dialog& dialog, const DialogEvent& event) {
    if (page == 1 && event.kind == Event::page_shown) dialog.focus(kPageEdit);
    if (page == 1 && event.kind == Event::command) dialog.close(9);
  };
  EXPECT_EQ(sheet.run([&] {
    bench_->show_page(1);
    EXPECT_EQ(bench_->focused(), kPageEdit);
    bench_->type(u"typed");
    EXPECT_EQ(sheet.dialogs.back()->text(kPageEdit), u"");
    sheet.take();
    bench_->key(kKeyReturn);  // the page's own comes first
  }),
            9);
  EXPECT_EQ(sheet.take(), Told{id("1:command", kPageButton)});
}

TEST_P(DialogsContract, APopupThatIsNotSeenKeepsThePointerThatWasPressedOnIt) {
  DialogTemplate popup;
  popup.id = 540;
  popup.popup = true;
  popup.size = {100, 60};
  popup.place = {40, 50, 100, 60};
  popup.controls = {{ControlTemplate::Kind::custom, kCustom, u"", {0, 0, 100, 60}}};
  Dialog* shown = nullptr;
  told_.act = [&](Dialog& dialog, const DialogEvent&) { shown = &dialog; };
  run(popup, [&] {
    Dialog& dialog = *shown;
    bench_->pen_down(kCustom, {20, 10});
    const Rect place = dialog.place(kCustom);
    dialog.set_seen(false);
    EXPECT_FALSE(bench_->seen(kCustom));
    EXPECT_EQ(dialog.place(kCustom), place);
    bench_->pen_move(kCustom, {-30, 90});
    EXPECT_TRUE(told_.last.kind == Event::pointer_move && told_.last.point == (Point{-30, 90}));
    told_.take();
    bench_->pen_up(kCustom, {-30, 90});
    EXPECT_EQ(told_.take(), Told{id("pointer_up", kCustom)});
    bench_->pen_down(kCustom, {20, 10});
    EXPECT_NE(told_.last.kind, Event::pointer_down);
    dialog.set_seen(true);
    EXPECT_TRUE(bench_->seen(kCustom));
    told_.take();
    bench_->pen_down(kCustom, {70, 50});
    EXPECT_EQ(told_.take(), Told{id("pointer_down", kCustom)});
    bench_->pen_up(kCustom, {70, 50});
  });
}

TEST_P(DialogsContract, AWheelThatNothingScrollsWithAndTheOtherButtonAreTold) {
  open();
  ReportList& report = *dialog_->report(kReport);
  report.set_content(report_rows(1));
  for (const int control : {kCustom, kReport}) {
    bench_->tap(control);
    EXPECT_EQ(after([&] {
                bench_->press_other_button(control, {20, 30});
              }),
              Told{id("context_menu", control)});
    EXPECT_EQ(told_.last.point, (Point{20, 30}));
    EXPECT_EQ(after([&] {
                bench_->turn_wheel(control, {20, 30}, -1, false);
              }),
              Told{id("wheel", control)});
    EXPECT_TRUE(told_.last.notches == -1 && !told_.last.sideways);
  }
  bench_->turn_wheel(kCustom, {20, 10}, 1, true);
  EXPECT_TRUE(told_.last.notches == 1 && told_.last.sideways);
  report.set_content(report_rows(30));
  bench_->tap(kReport);
  const int top = report.row_place(0).y;
  EXPECT_EQ(after([&] { bench_->turn_wheel(kReport, {20, 30}, -1, false); }), Told());
  EXPECT_LT(report.row_place(0).y, top);
}

TEST_P(DialogsContract, AGlidingListIsStoppedByThePressThatIsToldOfIt) {
  open();
  ReportList& report = *dialog_->report(kReport);
  report.set_content(report_rows(30));
  EXPECT_FALSE(report.gliding());
  bool glided = false;
  told_.act = [&](Dialog&, const DialogEvent& event) {
    if (event.kind == Event::pointer_down) glided = report.gliding();
  };
  report.glide(900);
  EXPECT_TRUE(report.gliding());
  bench_->pen_down(kReport, {20, 40});
  EXPECT_TRUE(glided);
  EXPECT_FALSE(report.gliding());
  bench_->pen_up(kReport, {20, 40});
  for (const auto& end : {std::function<void()>([&] { report.scroll_by(10); }),
                          std::function<void()>([&] { report.show_row(29); }),
                          std::function<void()>([&] { report.set_content(report_rows(30)); }),
                          std::function<void()>([&] { report.glide(0); })}) {
    report.glide(-900);
    end();
    EXPECT_FALSE(report.gliding());
  }
}

}  // namespace orvello::test
