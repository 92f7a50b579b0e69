#include <gtest/gtest.h>

#include <QAccessible>
#include <QPushButton>
#include <QTimer>

#include "hosts/qt/modal_layer.h"
#include "hosts/qt/qt_dialogs.h"
#include "hosts/qt/qt_message_boxes.h"
#include "tests/qt/dialog_events.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

DialogTemplate form() {
  DialogTemplate dialog;
  dialog.id = 500;
  dialog.title = u"Настройки";
  dialog.controls = {{Kind::label, 10, u"Subject <b>&</b>", {8, 8, 60, 20}},
                     {Kind::edit, 11, u"", {72, 6, 160, 24}},
                     {Kind::list, 12, u"", {8, 40, 224, 120}},
                     {Kind::check_box, 13, u"All day", {8, 168, 100, 24}},
                     {Kind::multi_line_edit, 14, u"", {8, 196, 224, 36}},
                     {Kind::default_button, 1, u"OK", {90, 238, 66, 26}},
                     {Kind::button, 2, u"Cancel", {164, 238, 68, 26}}};
  return dialog;
}

template <typename Widget>
Widget* find(TestWindow& test, int id) {
  return test.window->shell()->findChild<Widget*>(QStringLiteral("control%1").arg(id));
}

TEST(Dialog, AModelessOneFollowsTheContentAndMayDestroyItselfFromAnEvent) {
  TestWindow test;
  test.show();
  EventLog listener;
  QtDialogs dialogs(*test.window);
  auto dialog = dialogs.open_modeless(form(), listener);
  test.window->move({0, 0, 240, 290});
  QWidget* sheet = test.window->shell()->findChild<QWidget*>(QStringLiteral("dialog500"));
  ASSERT_NE(sheet, nullptr);
  EXPECT_EQ(sheet->size(), QSize(240, 290));
  dialog->set_timer(1, 5);
  listener.act = [&](Dialog&, const DialogEvent& event) {
    if (event.kind == Event::command) dialog.reset();
  };
  ASSERT_TRUE(wait_until([&] { return listener.count(Event::timer, 1) > 0; }));
  QTest::mouseClick(find<QPushButton>(test, 1), Qt::LeftButton);
  settle();
  EXPECT_EQ(dialog, nullptr);
  EXPECT_EQ(test.window->shell()->findChild<QWidget*>(QStringLiteral("dialog500")), nullptr);
  const auto events = listener.events.size();
  settle();
  EXPECT_EQ(listener.events.size(), events) << "its timer has stopped";
}

struct ModalRun {
  explicit ModalRun(TestWindow& test) : dialogs(*test.window) {}
  int run(std::function<void()> person) {
    QTimer::singleShot(80, std::move(person));
    return dialogs.run_modal(form(), listener);
  }
  EventLog listener;
  QtDialogs dialogs;
};

TEST(Dialog, ClosingTheWindowAsksTheModalOneFirstAndTheFocusComesBack) {
  TestWindow test;
  test.show();
  ModalRun modal(test);
  EXPECT_EQ(modal.run([&] { test.window->shell()->close(); }), 0);
  EXPECT_EQ(modal.listener.count(Event::close, 0), 1);
  EXPECT_EQ(test.recorder.count(kMessageClose), 0);
  EXPECT_TRUE(test.content()->hasFocus());
  EXPECT_EQ(test.window->shell()->cover(), nullptr);
}

TEST(Dialog, NothingBelowAModalOneIsReachedAndThePenIsLetGo) {
  TestWindow test;
  test.show();
  QTest::mousePress(test.content(), Qt::LeftButton, {}, QPoint(5, 5));
  test.recorder.messages.clear();
  ModalRun modal(test);
  bool pen_down = true;
  modal.run([&] {
    pen_down = test.window->pen_is_down();
    for (int i = 0; i < 20; ++i) {
      QWidget* focus = test.window->shell()->focusWidget();
      ASSERT_NE(focus, nullptr);
      EXPECT_TRUE(test.window->shell()->cover()->isAncestorOf(focus));
      QTest::keyClick(focus, Qt::Key_Tab);
    }
    QTest::keyClick(test.window->shell()->cover(), Qt::Key_Left);
    test.window->shell()->close();
  });
  EXPECT_FALSE(pen_down);
  EXPECT_EQ(test.recorder.count(kMessageKeyDown), 0);
}

// As a turned screen has the view below made anew, with another menu bar.
TEST(Dialog, WhatIsMadeBelowAModalOneGetsNothingUntilThatIsOver) {
  TestWindow test;
  test.show();
  ModalRun modal(test);
  EventLog below_log;
  DialogTemplate list;
  list.id = 510;
  list.controls = {{Kind::custom, 20, u"List", {0, 0, 240, 200}}};
  std::unique_ptr<Dialog> below;
  modal.run([&] {
    auto* bar = new QPushButton(QStringLiteral("New"), test.window->shell());
    test.window->shell()->set_bar(bar, 30);
    below = modal.dialogs.open_modeless(list, below_log);
    below->focus(20);
    auto* area = test.content()->findChild<QWidget*>(QStringLiteral("control20"));
    QWidget* cover = test.window->shell()->cover();
    // The keyboard, the pointer, and what a screen reader may press.
    EXPECT_TRUE(cover->isAncestorOf(test.window->shell()->focusWidget()));
    const QPoint middle = test.window->shell()->rect().center();
    EXPECT_TRUE(cover->isAncestorOf(test.window->shell()->childAt(middle)));
    EXPECT_NE(bar, test.window->shell()->childAt(bar->geometry().center()));
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(area)->state().disabled);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(bar)->state().disabled);
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(cover)->state().modal);
    // One more above it, and back.
    QtMessageBoxes boxes(*test.window, u"en");
    QTimer::singleShot(50, [&] {
      EXPECT_FALSE(cover->isEnabled());
      test.window->shell()->close();
    });
    boxes.show(u"text", u"caption", BoxIcon::none, BoxButtons::ok, true);
    EXPECT_EQ(test.window->shell()->cover(), cover);
    EXPECT_TRUE(cover->isAncestorOf(test.window->shell()->focusWidget()));
    EXPECT_FALSE(area->isEnabled());
    test.window->shell()->close();
  });
  EXPECT_EQ(below_log.count(Event::key, 20), 0);
  auto* area = test.content()->findChild<QWidget*>(QStringLiteral("control20"));
  EXPECT_TRUE(area->hasFocus()) << "as it was wanted while it could not be";
  test.window->shell()->set_bar(nullptr, 0);
}

// A box that came before the window was shown keeps the window from taking input: what opens then
// has to stand above it.
TEST(Dialog, WhatOpensWhileABoxStandsAloneStandsAboveIt) {
  TestWindow test;
  ModalRun modal(test);
  QtMessageBoxes boxes(*test.window, u"en");
  modal.listener.act = [](Dialog& dialog, const DialogEvent& event) {
    if (event.kind == Event::command && event.control == 1) dialog.close(42);
  };
  int result = 0;
  QTimer::singleShot(50, [&] {
    QWidget* box = QApplication::activeModalWidget();
    test.window->show();
    result = modal.run([&] {
      QWidget* dialog = QApplication::activeModalWidget();
      ASSERT_NE(dialog, box);
      dialog->findChild<QPushButton*>(QStringLiteral("control1"))->click();
    });
    EXPECT_EQ(QApplication::activeModalWidget(), box);
    box->close();
  });
  boxes.show(u"Unable to load", u"Error", BoxIcon::warning, BoxButtons::ok, false);
  EXPECT_EQ(result, 42);
}

TEST(Dialog, QuittingEndsAModalOne) {
  TestWindow test;
  test.show();
  ModalRun modal(test);
  EXPECT_EQ(modal.run([&] {
    test.window->destroy();
    test.window->post_quit(0);
  }),
            0);
}

QPushButton* box_button(TestWindow& test, const char* text) {
  for (auto* button : test.window->shell()->findChildren<QPushButton*>())
    if (button->text() == QLatin1String(text)) return button;
  return nullptr;
}

TEST(MessageBox, ALongTextFitsASmallScreenAndTheButtonsCanBeTapped) {
  TestWindow test({240, 320}, 96);
  test.show();
  QtMessageBoxes boxes(*test.window, u"en");
  Text text;
  for (int i = 0; i < 200; ++i) text += u"The calendar file could not be opened. ";
  QTimer::singleShot(80, [&] {
    QPushButton* yes = box_button(test, "Yes");
    ASSERT_NE(yes, nullptr);
    const QRect place(yes->mapTo(test.window->shell(), QPoint(0, 0)), yes->size());
    EXPECT_TRUE(test.window->shell()->rect().contains(place));
    EXPECT_GE(place.height(), 26);
    QTest::mouseClick(yes, Qt::LeftButton);
  });
  EXPECT_EQ(boxes.show(text, u"Error", BoxIcon::error, BoxButtons::yes_no, true), BoxAnswer::yes);
}

}  // namespace
}  // namespace orvello
