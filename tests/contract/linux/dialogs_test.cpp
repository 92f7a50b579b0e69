// What every implementation of dialogs promises: run on widgets and on the host without a screen.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include "hosts/headless/headless_dialogs.h"
#include "hosts/qt/qt_dialogs.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

DialogTemplate small_form() {
  DialogTemplate dialog;
  dialog.id = 510;
  dialog.controls = {{Kind::edit, 11, u"start", {8, 8, 200, 24}},
                     {Kind::list, 12, u"", {8, 40, 200, 80}},
                     {Kind::check_box, 13, u"All day", {8, 124, 100, 24}},
                     {Kind::default_button, 1, u"OK", {8, 160, 66, 26}}};
  return dialog;
}

struct Log : DialogProcedure {
  void handle(Dialog& dialog, const DialogEvent& event) override {
    if (event.kind == Event::focus_lost || event.kind == Event::paint) return;
    events.push_back({event.kind, event.control});
    if (act) act(dialog, event);
  }
  bool saw(Event kind, int control) const {
    return std::find(events.begin(), events.end(), std::pair{kind, control}) != events.end();
  }
  std::vector<std::pair<Event, int>> events;
  std::function<void(Dialog&, const DialogEvent&)> act;
};

struct QtKit {
  QtKit() { test.show(); }
  Dialogs& dialogs() { return port; }
  void person(std::function<void(QtKit&)> act) {
    QTimer::singleShot(80, [this, act] { act(*this); });
  }
  template <typename Widget>
  Widget* find(int id) {
    return test.window->shell()->findChild<Widget*>(QStringLiteral("control%1").arg(id));
  }
  void press(int id) { QTest::mouseClick(find<QPushButton>(id), Qt::LeftButton); }
  void type(int id, const char* text) {
    find<QLineEdit>(id)->selectAll();
    QTest::keyClicks(find<QLineEdit>(id), QLatin1String(text));
  }
  void tap_row(int id, int row) {
    auto* list = find<QListWidget>(id);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(row)).center());
  }
  void close() { test.window->shell()->close(); }
  TestWindow test;
  QtDialogs port{*test.window};
};

struct HeadlessKit {
  Dialogs& dialogs() { return port; }
  void person(std::function<void(HeadlessKit&)> act) {
    port.person = [this, act](HeadlessDialog& dialog) {
      shown = &dialog;
      act(*this);
    };
  }
  void press(int id) { shown->press(id); }
  void type(int id, const char* text) { shown->type(id, to_utf16(text)); }
  void tap_row(int id, int row) { shown->tap_row(id, row); }
  void close() {}  // an unattended dialog is closed when the person has gone
  HeadlessDialogs port;
  HeadlessDialog* shown = nullptr;
};

template <typename Kit>
class DialogsContract : public ::testing::Test {
 protected:
  Kit kit;
  Log log;
};

using Kits = ::testing::Types<QtKit, HeadlessKit>;
TYPED_TEST_SUITE(DialogsContract, Kits);

TYPED_TEST(DialogsContract, InitComesFirstAndSettersAreSilent) {
  this->log.act = [](Dialog& dialog, const DialogEvent& event) {
    if (event.kind != Event::init) return;
    EXPECT_EQ(dialog.text(11), u"start");
    EXPECT_TRUE(dialog.list(12)->selected().empty());
    dialog.set_text(11, u"новый");
    dialog.list(12)->set_rows({u"a", u"b"});
    dialog.list(12)->select({1});
    dialog.set_checked(13, true);
    dialog.enable(99, false);
    EXPECT_EQ(dialog.text(11), u"новый");
    EXPECT_EQ(dialog.list(12)->selected(), std::vector<int>{1});
    EXPECT_TRUE(dialog.checked(13));
    dialog.close(9);
  };
  EXPECT_EQ(this->kit.dialogs().run_modal(small_form(), this->log), 9);
  ASSERT_EQ(this->log.events.size(), 1u);
  EXPECT_EQ(this->log.events[0].first, Event::init);
}

TYPED_TEST(DialogsContract, WhatAPersonDoesIsToldAndCanBeRead) {
  Text typed;
  int row = -1;
  this->log.act = [&](Dialog& dialog, const DialogEvent& event) {
    if (event.kind == Event::init) dialog.list(12)->set_rows({u"a", u"b", u"c"});
    if (event.kind != Event::command || event.control != 1) return;
    typed = dialog.text(11);
    row = dialog.list(12)->selected().at(0);
    dialog.close(5);
  };
  this->kit.person([](auto& kit) {
    kit.type(11, "typed");
    kit.tap_row(12, 2);
    kit.press(1);
  });
  EXPECT_EQ(this->kit.dialogs().run_modal(small_form(), this->log), 5);
  EXPECT_EQ(typed, u"typed");
  EXPECT_EQ(row, 2);
  EXPECT_TRUE(this->log.saw(Event::changed, 11));
  EXPECT_TRUE(this->log.saw(Event::changed, 12));
}

TYPED_TEST(DialogsContract, ClosingTheWindowIsToldAndEndsWithNothing) {
  this->kit.person([](auto& kit) { kit.close(); });
  EXPECT_EQ(this->kit.dialogs().run_modal(small_form(), this->log), 0);
  EXPECT_TRUE(this->log.saw(Event::close, 0));
}

}  // namespace
}  // namespace orvello
