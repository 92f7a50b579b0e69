#include <gtest/gtest.h>

#include <QAccessible>

#include "hosts/qt/qt_dialogs.h"
#include "tests/contract/cell_view.h"
#include "tests/qt/dialog_events.h"
#include "tests/qt/right_to_left.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

struct Reader {
  Reader() {
    test.window->set_accessible_view(&view);
    test.show();
    content = QAccessible::queryAccessibleInterface(test.content());
  }
  ~Reader() { test.window->set_accessible_view(nullptr); }
  CellView view;
  TestWindow test;
  QAccessibleInterface* content = nullptr;
};

TEST(Accessible, TheViewIsATableOfItsCells) {
  Reader reader;
  ASSERT_NE(reader.content, nullptr);
  EXPECT_EQ(reader.content->role(), QAccessible::Table);
  EXPECT_EQ(reader.content->text(QAccessible::Name), QStringLiteral("November 2026"));
  ASSERT_EQ(reader.content->childCount(), 6);
  QAccessibleInterface* cell = reader.content->child(4);
  EXPECT_EQ(cell->role(), QAccessible::Cell);
  EXPECT_EQ(cell->text(QAccessible::Name), QStringLiteral("Day 4"));
  EXPECT_EQ(cell->parent(), reader.content);
  EXPECT_EQ(reader.content->indexOfChild(cell), 4);
  EXPECT_EQ(cell->rect(),
            QRect(reader.test.content()->mapToGlobal(QPoint(80, 100)), QSize(80, 100)));
  const QPoint inside = cell->rect().center();
  EXPECT_EQ(reader.content->childAt(inside.x(), inside.y()), cell);
  EXPECT_EQ(reader.content->tableInterface()->cellAt(1, 1), cell);
  EXPECT_EQ(cell->tableCellInterface()->rowIndex(), 1);
  ASSERT_EQ(cell->childCount(), 2);
  EXPECT_EQ(cell->child(1)->role(), QAccessible::ListItem);
  EXPECT_EQ(cell->child(1)->text(QAccessible::Name), QStringLiteral("Lunch"));
  EXPECT_EQ(cell->child(1)->parent(), cell);
  cell->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(reader.view.chosen, 4);
  EXPECT_EQ(reader.view.asked, 1) << "what was told is kept until something changes";
}

TEST(Accessible, CellsAndLabelsLieWhereARightToLeftScreenShowsThem) {
  const RightToLeft mirrored_screen;
  Reader reader;
  EXPECT_EQ(reader.content->child(3)->rect(),
            QRect(reader.test.content()->mapToGlobal(QPoint(160, 100)), QSize(80, 100)));
  reader.test.window->show_label({{10, 20, 50, 30}, u"Friday", {}});
  const auto* label = reader.test.window->shell()->findChild<QWidget*>(QStringLiteral("hover"));
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->geometry(), QRect(180, 20, 50, 30));
}

TEST(Accessible, TheKeyboardStandsOnTheSelectedCellAndAChangeIsSeen) {
  Reader reader;
  ASSERT_TRUE(reader.content->child(2)->state().focused);
  reader.view.selected = 5;
  EXPECT_EQ(reader.content->focusChild(), reader.content->child(2)) << "not told yet";
  reader.test.window->accessible_changed();
  EXPECT_EQ(reader.content->focusChild(), reader.content->child(5));
  EXPECT_FALSE(reader.content->child(2)->state().selected);
}

TEST(Accessible, ADialogStandsInTheViewsPlaceAndItsPartsCanBePressed) {
  Reader reader;
  QAccessibleInterface* cell = reader.content->child(4);
  DialogTemplate form;
  form.id = 540;
  form.controls = {{ControlTemplate::Kind::custom, 20, u"Header", {0, 0, 240, 30}}};
  EventLog log;
  QtDialogs dialogs(*reader.test.window);
  auto dialog = dialogs.open_modeless(form, log);
  settle();
  EXPECT_NE(reader.content->role(), QAccessible::Table);
  ASSERT_EQ(reader.content->childCount(), 1);
  dialog->drawn(20)->set_parts({{u"Today", {0, 0, 30, 30}}, {u"Monday", {40, 0, 30, 30}, true}});
  auto* strip = reader.test.window->shell()->findChild<QWidget*>(QStringLiteral("control20"));
  QAccessibleInterface* header = QAccessible::queryAccessibleInterface(strip);
  ASSERT_EQ(header->childCount(), 2);
  EXPECT_EQ(header->text(QAccessible::Name), QStringLiteral("Header"));
  EXPECT_EQ(header->child(1)->text(QAccessible::Name), QStringLiteral("Monday"));
  EXPECT_EQ(header->child(1)->rect().size(), QSize(30, 30));
  log.events.clear();
  header->child(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  ASSERT_EQ(log.of(20).size(), 2u);
  EXPECT_EQ(log.of(20)[0].point, (Point{55, 15}));
  EXPECT_EQ(log.of(20)[1].kind, DialogEvent::Kind::pointer_up);
  dialog.reset();
  settle();
  EXPECT_EQ(reader.content->role(), QAccessible::Table);
  EXPECT_TRUE(cell->isValid());
  reader.test.window->set_accessible_view(nullptr);
  EXPECT_FALSE(cell->isValid());
  EXPECT_EQ(reader.content->childCount(), 0);
}

TEST(Label, StandsOverTheContentAndLetsThePointerThrough) {
  TestWindow test;
  test.show();
  HoverLabel label{
      {20, 30, 120, 50}, u"First\nsecond", {12, 400, false}, rgb(0, 0, 160), rgb(255, 255, 220)};
  test.window->show_label(label);
  settle();
  const QImage picture = test.window->shell()->grab().toImage();
  EXPECT_EQ(picture.pixel(139, 79), qRgb(0, 0, 160));
  EXPECT_EQ(picture.pixel(21, 31), qRgb(255, 255, 220));
  EXPECT_EQ(picture.pixel(140, 55), qRgb(255, 255, 255));
  int inked_rows = 0;
  for (int y = 31; y < 79; ++y) {
    bool inked = false;
    for (int x = 21; x < 139; ++x) inked |= picture.pixel(x, y) != qRgb(255, 255, 220);
    inked_rows += inked;
  }
  EXPECT_GT(inked_rows, 14) << "two lines";
  EXPECT_EQ(test.window->shell()->childAt(60, 50), test.content());
}

}  // namespace
}  // namespace orvello
