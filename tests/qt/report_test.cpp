#include <gtest/gtest.h>

#include <QAccessible>
#include <QListView>
#include <QScrollBar>

#include "hosts/qt/qt_dialogs.h"
#include "tests/qt/dialog_events.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

using Kind = ControlTemplate::Kind;
using Event = DialogEvent::Kind;

constexpr Color kPale = rgb(240, 250, 240), kRed = rgb(200, 0, 0), kBlue = rgb(0, 0, 160);

DialogTemplate day_form() {
  DialogTemplate dialog;
  dialog.id = 520;
  dialog.controls = {{Kind::custom, 20, u"", {0, 0, 240, 30}},
                     {Kind::report, 21, u"", {0, 30, 240, 238}}};
  dialog.controls[1].across = ControlTemplate::Across::stretch;
  dialog.controls[1].down = ControlTemplate::Down::stretch;
  return dialog;
}

// Two pictures, one half transparent, and rows of several heights.
ReportContent content_of(int rows) {
  ReportContent content;
  content.font = {12, 400, false};
  content.bold_font = {12, 700, false};
  content.columns = {{60, Align::right}, {40, Align::left}, {140, Align::left}};
  content.padding = 3;
  content.picture_column = 1;
  content.picture_gap = 2;
  content.pictures = {{8, 8, std::vector<Color>(64, kRed)},
                      {4, 4, std::vector<Color>(16, kMagenta)}};
  content.background = kPale;
  content.selected_background = kBlue;
  for (int i = 0; i < rows; ++i) {
    ReportRow row;
    row.cells = {u"10:00", u"", u"Row " + to_utf16(std::to_string(i))};
    row.height = i == 1 ? 40 : 20;
    if (i == 1) row.line_above = kBlue;
    if (i == 0) row.pictures = {0, 1, 0};
    content.rows.push_back(std::move(row));
  }
  return content;
}

struct DayForm {
  explicit DayForm(Size screen = {240, 320}, int dpi = 96) : test(screen, dpi) {
    test.show();
    dialog = dialogs.open_modeless(day_form(), log);
    report = dialog->report(21);
    settle();
  }
  QListView* view() {
    return test.window->shell()->findChild<QListView*>(QStringLiteral("control21"));
  }
  QImage picture() {
    settle();
    return view()->viewport()->grab().toImage();
  }

  TestWindow test;
  EventLog log;
  QtDialogs dialogs{*test.window};
  std::unique_ptr<Dialog> dialog;
  ReportList* report = nullptr;
};

TEST(Report, DrawsWhatTheContentSays) {
  DayForm form;
  form.report->set_content(content_of(3));
  form.report->select({2});
  const QImage picture = form.picture();
  ASSERT_EQ(picture.size(), QSize(240, 290));
  EXPECT_EQ(picture.pixel(239, 10), qRgb(255, 255, 255));
  EXPECT_EQ(picture.pixel(5, 200), qRgb(240, 250, 240)) << "below the rows";
  EXPECT_EQ(picture.pixel(5, 20), qRgb(0, 0, 160)) << "the line above the second row";
  EXPECT_EQ(picture.pixel(5, 21), qRgb(255, 255, 255));
  EXPECT_EQ(picture.pixel(239, 70), qRgb(0, 0, 160)) << "a selected row";
  // Red, a gap of 2, a transparent picture of 4, a gap of 2, red; in the middle of the height.
  EXPECT_EQ(picture.pixel(60, 6), qRgb(200, 0, 0));
  EXPECT_EQ(picture.pixel(67, 13), qRgb(200, 0, 0));
  for (int x = 68; x < 76; ++x) EXPECT_EQ(picture.pixel(x, 10), qRgb(255, 255, 255)) << x;
  EXPECT_EQ(picture.pixel(76, 10), qRgb(200, 0, 0));
  EXPECT_EQ(picture.pixel(60, 5), qRgb(255, 255, 255));
}

TEST(Report, KeepsTextInsideItsCell) {
  DayForm form;
  ReportContent content = content_of(1);
  content.columns[2].width = 60;
  content.rows[0].cells[2] = u"A subject that is far too long for sixty pixels";
  content.rows[0].pictures.clear();
  content.rows[0].cells[0] = u"10:00-11:00 and more";
  form.report->set_content(content);
  const QImage picture = form.picture();
  const auto inked = [&](int from, int to) {
    int count = 0;
    for (int x = from; x < to; ++x)
      for (int y = 0; y < 20; ++y) count += picture.pixel(x, y) != qRgb(255, 255, 255);
    return count;
  };
  EXPECT_EQ(inked(0, 3) + inked(57, 103) + inked(157, 240), 0);
  EXPECT_GT(inked(3, 57), 20);
  EXPECT_GT(inked(103, 157), 20);
}

TEST(Report, ScrollsSidewaysOnlyForColumnsThatAreWiderThanIt) {
  DayForm form;
  ReportContent content = content_of(5000);
  form.report->set_content(content);
  QScrollBar* bar = form.view()->horizontalScrollBar();
  EXPECT_EQ(bar->maximum(), 0) << "a scroll bar's width is no reason";
  content.columns[2].width = 300;
  content.columns[2].title = u"Title";
  form.report->set_content(content);
  settle();
  EXPECT_EQ(bar->maximum(), 400 - form.view()->viewport()->width());
  EXPECT_GT(form.report->row_place(0).y, 30) << "below the titles";
}

TEST(Report, ScrollsByPixelsKnowsItsRowsAndBringsThemIntoSight) {
  DayForm form;
  form.report->set_content(content_of(5000));
  EXPECT_EQ(form.report->place().size, (Size{240, 290}));
  EXPECT_GE(form.report->place().scroll_bar_width, 13);
  EXPECT_EQ(form.view()->viewport()->width(), 240 - form.report->place().scroll_bar_width);
  EXPECT_EQ(form.report->row_at({5, 45}), 1);
  EXPECT_EQ(form.report->row_place(2).y, 30 + 60);
  form.report->scroll_by(25);
  EXPECT_EQ(form.report->row_place(2).y, 30 + 35);
  EXPECT_EQ(form.report->row_at({5, 45}), 2);
  form.report->show_row(4000);
  EXPECT_EQ(form.report->row_place(4000).bottom(), 320);
  form.report->show_row(4001);
  EXPECT_EQ(form.report->row_place(4001).bottom(), 320) << "as little as it takes";
  form.report->scroll_by(1000000);
  EXPECT_EQ(form.report->row_place(4999).bottom(), 320);
  form.report->scroll_by(-1000000);
  EXPECT_EQ(form.report->row_place(0).y, 30);
  EXPECT_TRUE(form.report->row_place(5000).empty());
  form.report->scroll_by(200);
  form.report->set_content(content_of(2));
  EXPECT_EQ(form.report->row_place(0).y, 30);
  EXPECT_EQ(form.report->row_at({5, 100}), -1);
}

TEST(Report, CanBeFilledAndScrolledBeforeItIsShown) {
  TestWindow test;
  EventLog log;
  Rect last;
  log.act = [&](Dialog& dialog, const DialogEvent& event) {
    if (event.kind != Event::init) return;
    ReportList* report = dialog.report(21);
    report->set_content(content_of(50));
    report->show_row(40);
    last = report->row_place(40);
  };
  QtDialogs dialogs(*test.window);
  const auto dialog = dialogs.open_modeless(day_form(), log);
  EXPECT_EQ(last.bottom(), 320);
  test.show();
  EXPECT_EQ(dialog->report(21)->row_place(40), last);
}

TEST(Report, TellsThePointerAndKeysAndSelectsNothingByItself) {
  DayForm form;
  form.report->set_content(content_of(30));
  form.report->select({3, 4});
  QWidget* viewport = form.view()->viewport();
  form.dialog->focus(21);
  settle();
  form.log.events.clear();
  QTest::mousePress(viewport, Qt::LeftButton, {}, QPoint(50, 65));
  QTest::mouseMove(viewport, QPoint(50, 45));
  QTest::mouseRelease(viewport, Qt::LeftButton, {}, QPoint(50, 400));
  QTest::mouseClick(viewport, Qt::LeftButton, {}, QPoint(20, 20));
  QTest::mouseDClick(viewport, Qt::LeftButton, {}, QPoint(20, 20));
  QTest::mouseClick(viewport, Qt::RightButton, {}, QPoint(20, 20));
  QTest::keyClick(form.view(), Qt::Key_Down, Qt::ControlModifier);
  QTest::keyClick(form.view(), Qt::Key_A);
  QTest::keyClick(form.view(), Qt::Key_F2, Qt::ShiftModifier);
  const std::vector<Event> kinds = {Event::pointer_down, Event::pointer_move, Event::pointer_up,
                                    Event::pointer_down, Event::pointer_up,   Event::double_tap,
                                    Event::key,          Event::key,          Event::key};
  std::vector<DialogEvent> told = form.log.of(21);
  ASSERT_EQ(told.size(), kinds.size());
  for (std::size_t i = 0; i < told.size(); ++i) EXPECT_EQ(told[i].kind, kinds[i]) << i;
  EXPECT_EQ(told[0].point, (Point{50, 65}));
  EXPECT_EQ(told[2].point, (Point{50, 400}));
  EXPECT_EQ(told[6].key, kKeyDown);
  EXPECT_TRUE(told[6].control_held);
  EXPECT_EQ(told[8].key, 0x71u);
  EXPECT_TRUE(told[8].shift_held);
  EXPECT_EQ(form.view()->selectionModel()->selectedIndexes().size(), 2);
  QTest::keyClick(form.view(), Qt::Key_Tab);
  EXPECT_FALSE(form.view()->hasFocus());
  EXPECT_EQ(
      form.test.recorder.count(kMessageKeyDown) + form.test.recorder.count(kMessageButtonDown), 0)
      << "nothing goes through to the window";
}

// A list over the whole form has no edge that could show it.
TEST(Report, ShowsTheFocusWhileKeysAreUsed) {
  DayForm form;
  form.report->set_content(content_of(30));
  form.dialog->focus(21);
  const auto edge = [&] {
    settle();
    return form.view()->grab().toImage().pixel(0, 100);
  };
  const QRgb before = edge();
  QTest::keyClick(form.view(), Qt::Key_PageDown);
  EXPECT_NE(edge(), before);
  QTest::mouseClick(form.view()->viewport(), Qt::LeftButton, {}, QPoint(50, 65));
  EXPECT_EQ(edge(), before);
}

TEST(Report, DrawsSeveralLinesOfACell) {
  DayForm form;
  ReportContent content = content_of(1);
  content.rows[0].height = 60;
  content.rows[0].pictures.clear();
  const auto inked_lines = [&] {
    form.report->set_content(content);
    const QImage picture = form.picture();
    int lines = 0;
    bool inked = false;
    for (int y = 0; y < 60; ++y) {
      bool any = false;
      for (int x = 100; x < 225; ++x) any = any || picture.pixel(x, y) != qRgb(255, 255, 255);
      lines += any && !inked ? 1 : 0;
      inked = any;
    }
    return lines;
  };
  content.rows[0].cells[2] = u"MMM\nMMM\nMMM";
  EXPECT_EQ(inked_lines(), 1);
  content.rows[0].lines = true;
  EXPECT_EQ(inked_lines(), 3);
}

TEST(Report, AFingerIsThePointer) {
  static QPointingDevice* const screen = QTest::createTouchDevice();
  DayForm form;
  form.report->set_content(content_of(30));
  QWidget* viewport = form.view()->viewport();
  form.log.events.clear();
  QTest::touchEvent(viewport, screen).press(0, QPoint(40, 50));
  QTest::touchEvent(viewport, screen).move(0, QPoint(40, 20));
  QTest::touchEvent(viewport, screen).release(0, QPoint(40, 20));
  settle();
  ASSERT_EQ(form.log.of(21).size(), 4u) << "once, and not as a mouse again";
  EXPECT_EQ(form.log.of(21)[0].kind, Event::focus_gained);
  EXPECT_EQ(form.log.of(21)[2].kind, Event::pointer_move);
  EXPECT_EQ(form.log.of(21)[2].point, (Point{40, 20}));
  EXPECT_TRUE(form.view()->hasFocus());
  EXPECT_EQ(form.view()->verticalScrollBar()->value(), 0);
}

TEST(Report, RowsHaveNamesAndAScreenReadersChoiceIsATap) {
  DayForm form;
  ReportContent content = content_of(5);
  content.rows[1].name = u"Lunch, from noon";
  form.report->set_content(content);
  form.report->select({1, 3});
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(form.view());
  ASSERT_NE(list, nullptr);
  ASSERT_EQ(list->childCount(), 5);
  EXPECT_EQ(list->child(0)->text(QAccessible::Name), QStringLiteral("10:00 Row 0"));
  EXPECT_EQ(list->child(1)->text(QAccessible::Name), QStringLiteral("Lunch, from noon"));
  EXPECT_TRUE(list->child(3)->state().selected);
  EXPECT_EQ(form.view()->currentIndex().row(), 1);
  form.log.events.clear();
  form.view()->selectionModel()->select(form.view()->model()->index(4, 0),
                                        QItemSelectionModel::Select);
  settle();
  ASSERT_EQ(form.log.of(21).size(), 2u);
  EXPECT_EQ(form.report->row_at(form.log.of(21)[0].point), 4);
  EXPECT_EQ(form.view()->selectionModel()->selectedIndexes().size(), 2);
}

}  // namespace
}  // namespace orvello
