#include <gtest/gtest.h>

#include <QTimer>

#include "hosts/qt/modal_layer.h"
#include "hosts/qt/month_calendar.h"
#include "hosts/qt/qt_dialogs.h"
#include "tests/qt/dialog_events.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

DialogTemplate bubble(const Rect& place, std::vector<Point> outline = {}) {
  DialogTemplate dialog;
  dialog.id = 530;
  dialog.popup = true;
  dialog.size = {100, 60};
  dialog.place = place;
  dialog.outline = std::move(outline);
  dialog.controls = {{Kind::custom, 20, u"", {0, 0, 100, 60}}};
  dialog.controls[0].across = ControlTemplate::Across::stretch;
  dialog.controls[0].down = ControlTemplate::Down::stretch;
  return dialog;
}

struct PopupRun {
  PopupRun() { test.show(); }
  int run(const DialogTemplate& dialog, std::function<void()> person) {
    QTimer::singleShot(80, std::move(person));
    return dialogs.run_modal(dialog, log);
  }
  QWidget* find(const char* name) {
    return test.window->shell()->findChild<QWidget*>(QLatin1String(name));
  }
  QWidget* shell() { return test.window->shell(); }
  void press(QPoint point) {
    QWidget* at = shell()->childAt(point);
    QTest::mouseClick(at, Qt::LeftButton, {}, at->mapFrom(shell(), point));
  }
  TestWindow test;
  EventLog log;
  QtDialogs dialogs{*test.window};
};

TEST(Popup, StandsWhereItIsWantedInsideTheWindowAndDimsNothing) {
  PopupRun popup;
  QRect place, moved;
  QRgb corner = 0;
  popup.log.paint = [](const DialogEvent& event) {
    event.canvas->fill_rect({0, 0, event.size.width, event.size.height}, rgb(255, 255, 200));
  };
  popup.run(bubble({40, 50, 120, 80}), [&] {
    place = popup.find("dialog530")->geometry();
    corner = popup.shell()->grab().toImage().pixel(5, 300);
    QTest::keyClick(popup.find("control20"), Qt::Key_Escape);
  });
  EXPECT_EQ(place, QRect(39, 49, 122, 82)) << "its border is around it";
  EXPECT_EQ(corner, qRgb(255, 255, 255));
  popup.run(bubble({200, 300, 120, 80}), [&] {
    moved = popup.find("dialog530")->geometry();
    popup.shell()->close();
  });
  EXPECT_EQ(moved, QRect(118, 238, 122, 82));
  EXPECT_EQ(popup.log.count(Event::close, 0), 2);
  EXPECT_EQ(popup.log.count(Event::key, 20), 0) << "Escape is the popup's, not its control's";
}

TEST(Popup, APressBesideItOrOutsideItsOutlineIsToldAndGoesNowhereElse) {
  PopupRun popup;
  popup.log.act = [](Dialog& dialog, const DialogEvent& event) {
    if (event.kind == Event::focus_lost && event.control == 0) dialog.close(5);
  };
  EXPECT_EQ(popup.run(bubble({40, 50, 120, 80}), [&] { popup.press({10, 10}); }), 5);
  const std::vector<Point> triangle = {{0, 0}, {120, 0}, {0, 80}};
  int inside = 0;
  EXPECT_EQ(popup.run(bubble({40, 50, 120, 80}, triangle),
                      [&] {
                        popup.press({50, 60});
                        inside = popup.log.count(Event::pointer_down, 20);
                        popup.press({155, 125});
                      }),
            5);
  EXPECT_EQ(inside, 1);
  EXPECT_EQ(popup.log.count(Event::pointer_down, 20), 1);
  EXPECT_EQ(popup.test.recorder.count(kMessageButtonDown), 0);
}

TEST(Popup, HearsTheEndOfAPressThatOpenedIt) {
  PopupRun popup;
  QTest::mousePress(popup.test.content(), Qt::LeftButton, {}, QPoint(60, 70));
  Point up;
  popup.log.act = [&](Dialog& dialog, const DialogEvent& event) {
    if (event.kind != Event::pointer_up) return;
    up = event.point;
    dialog.close(6);
  };
  EXPECT_EQ(popup.run(bubble({40, 50, 120, 80}, {{0, 0}, {120, 0}, {120, 80}, {0, 80}}),
                      [&] {
                        QTest::mouseRelease(popup.test.content(), Qt::LeftButton, {},
                                            QPoint(60, 70));
                        popup.shell()->close();
                      }),
            6);
  ASSERT_EQ(popup.log.count(Event::pointer_up, 20), 1);
  EXPECT_EQ(up, (Point{20, 20}));
  EXPECT_EQ(popup.test.recorder.count(kMessageButtonUp), 0);
}

struct CalendarForm {
  CalendarForm() {
    popup.test.show();
    DialogTemplate form;
    form.id = 533;
    form.controls = {{Kind::month_calendar, 30, u"", {4, 4, 232, 200}}};
    dialog = popup.dialogs.open_modeless(form, popup.log);
    settle();
    dialog->date(30)->set_calendar({11, 20, 2026}, true);
    dialog->date(30)->set_date({11, 21, 2026});
    calendar = dynamic_cast<MonthCalendar*>(popup.find("control30"));
  }
  void tap(int part) {
    const Rect place = calendar->accessible_parts()[static_cast<std::size_t>(part)].place;
    QTest::mouseClick(calendar, Qt::LeftButton, {}, QPoint(place.center().x, place.center().y));
  }
  MonthDayYear date() { return dialog->date(30)->date(); }
  PopupRun popup;
  std::unique_ptr<Dialog> dialog;
  MonthCalendar* calendar = nullptr;
};

TEST(Calendar, ArrowsTurnMonthsAndYearsAndATappedDayIsTaken) {
  CalendarForm form;
  ASSERT_NE(form.calendar, nullptr);
  EXPECT_TRUE(form.popup.log.of(30).empty()) << "a setter is silent";
  form.tap(0);
  EXPECT_EQ(form.date(), (MonthDayYear{10, 21, 2026}));
  form.tap(3);
  EXPECT_EQ(form.date(), (MonthDayYear{10, 21, 2027}));
  EXPECT_EQ(form.popup.log.count(Event::changed, 30), 2);
  EXPECT_EQ(form.popup.log.count(Event::taken, 30), 0);
  // October 2027 starts on a Friday: the first place is Monday 27 September.
  form.tap(4 + 4);
  EXPECT_EQ(form.date(), (MonthDayYear{10, 1, 2027}));
  form.tap(4);
  EXPECT_EQ(form.date(), (MonthDayYear{9, 27, 2027}));
  EXPECT_EQ(form.popup.log.count(Event::taken, 30), 2);
  form.dialog->date(30)->set_calendar({}, false);
  form.dialog->date(30)->set_date({10, 1, 2027});
  form.tap(4);
  EXPECT_EQ(form.date(), (MonthDayYear{9, 26, 2027})) << "weeks from Sunday";
}

TEST(Calendar, CanBeUsedWithKeysAlone) {
  CalendarForm form;
  for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_End})
    QTest::keyClick(form.calendar, key);
  EXPECT_EQ(form.date(), (MonthDayYear{12, 31, 2026}));
  QTest::keyClick(form.calendar, Qt::Key_PageUp, Qt::ShiftModifier);
  EXPECT_EQ(form.date(), (MonthDayYear{12, 31, 2025}));
  EXPECT_EQ(form.popup.log.count(Event::taken, 30), 0);
  QTest::keyClick(form.calendar, Qt::Key_Return);
  EXPECT_EQ(form.popup.log.count(Event::taken, 30), 1);
  EXPECT_EQ(form.popup.log.count(Event::changed, 30), 5);
}

}  // namespace
}  // namespace orvello
