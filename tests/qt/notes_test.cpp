#include <gtest/gtest.h>

#include <QPointingDevice>
#include <QScrollBar>
#include <QTabletEvent>

#include "hosts/qt/notes_pane.h"
#include "hosts/qt/qt_look.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

struct Page {
  explicit Page(int dpi = 96) {
    need_application();
    density.dpi = dpi;
    pane = std::make_unique<NotesPane>(nullptr, density);
    pane->resize(200 * dpi / 96, 150 * dpi / 96);
    pane->changed = [this] { ++changes; };
    pane->show();
    settle();
  }
  // A pen's event, in pixels at 96 dpi.
  void pen(QEvent::Type type, double x, double y, double pressure = 1, bool eraser = false) {
    using Device = QPointingDevice;
    static const Device tip(QStringLiteral("tip"), 7, QInputDevice::DeviceType::Stylus,
                            Device::PointerType::Pen, QInputDevice::Capability::Pressure, 1, 1);
    static const Device end(QStringLiteral("end"), 8, QInputDevice::DeviceType::Stylus,
                            Device::PointerType::Eraser, QInputDevice::Capability::Pressure, 1, 1);
    const QPointF at(x * density.unit(), y * density.unit());
    const bool down = type != QEvent::TabletRelease;
    QTabletEvent event(type, eraser ? &end : &tip, at, pane->viewport()->mapToGlobal(at), pressure,
                       0, 0, 0, 0, 0, Qt::NoModifier, Qt::LeftButton,
                       down ? Qt::LeftButton : Qt::NoButton);
    QCoreApplication::sendEvent(pane->viewport(), &event);
  }
  void stroke(double x, double y, double length, bool eraser = false) {
    pen(QEvent::TabletPress, x, y, 0.25, eraser);
    pen(QEvent::TabletMove, x + length, y, 0.75, eraser);
    pen(QEvent::TabletRelease, x + length, y, 0, eraser);
  }
  std::vector<NotesStroke> ink() const { return pane->content().strokes; }
  Text text() const { return pane->content().text; }

  Density density;
  std::unique_ptr<NotesPane> pane;
  int changes = 0;
};

TEST(Notes, APenDrawsByItsPressureAlikeOnEveryScreenAndItsOtherEndErases) {
  for (const int dpi : {96, 192}) {
    Page page(dpi);
    page.pane->set_tool(NotesTool::pen);
    page.stroke(20, 30, 40);
    ASSERT_EQ(page.ink().size(), 1u);
    EXPECT_EQ(page.ink()[0].points, (std::vector<StrokePoint>{{20, 30, 0.25f}, {60, 30, 0.75f}}));
    QWidget* viewport = page.pane->viewport();
    QTest::mousePress(viewport, Qt::LeftButton, {}, QPoint(10, 60) * dpi / 96);
    QTest::mouseMove(viewport, QPoint(50, 60) * dpi / 96);
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, QPoint(50, 60) * dpi / 96);
    ASSERT_EQ(page.ink().size(), 2u);
    EXPECT_EQ(page.ink()[1].points[0].pressure, 1) << "a mouse does not know";
    page.pane->set_tool(NotesTool::text);
    page.stroke(40, 10, 0, true);
    EXPECT_EQ(page.ink().size(), 2u) << "beside them";
    page.pen(QEvent::TabletPress, 40, 10, 1, true);
    page.pen(QEvent::TabletMove, 40, 90, 1, true);
    page.pen(QEvent::TabletRelease, 40, 90, 0, true);
    EXPECT_TRUE(page.ink().empty()) << "crossed between two points";
    EXPECT_TRUE(page.pane->undo_step());
    EXPECT_EQ(page.ink().size(), 2u) << "one move, one step";
    EXPECT_EQ(page.changes, 3);
  }
}

TEST(Notes, WordsAndStrokesAreTakenBackInTheirOrder) {
  Page page;
  QTest::keyClicks(page.pane.get(), QStringLiteral("one"));
  page.pane->set_tool(NotesTool::pen);
  page.stroke(20, 60, 40);
  page.pane->set_tool(NotesTool::text);
  QTest::keyClicks(page.pane.get(), QStringLiteral("two"));
  QTest::keyClick(page.pane.get(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(page.text() == u"one" && page.ink().size() == 1);
  EXPECT_TRUE(page.pane->undo_step());
  EXPECT_TRUE(page.text() == u"one" && page.ink().empty());
  EXPECT_TRUE(page.pane->undo_step());
  EXPECT_EQ(page.text(), u"");
  EXPECT_FALSE(page.pane->undo_step());
  while (page.pane->redo_step()) continue;
  EXPECT_TRUE(page.text() == u"onetwo" && page.ink().size() == 1);
  QTest::keyClick(page.pane.get(), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(page.pane.get(), Qt::Key_B, Qt::ControlModifier);
  EXPECT_EQ(page.pane->content().runs, (std::vector<NotesRun>{{0, 6, {true}}}));
}

TEST(Notes, BulletsAreOfParagraphsAndSurviveTyping) {
  Page page;
  NotesContent content;
  content.text = u"first\nsecond\nthird";
  content.runs = {{6, 7, {false, false, false, true}}};
  page.pane->set_content(content);
  EXPECT_EQ(page.pane->content(), content) << "as it was set";
  QTest::keyClicks(page.pane.get(), QStringLiteral("x"));
  EXPECT_EQ(page.pane->content().runs,
            (std::vector<NotesRun>{{7, 6, {false, false, false, true}}}));
  page.pane->selectAll();
  page.pane->set_style({false, false, false, true});
  EXPECT_EQ(page.pane->content().runs,
            (std::vector<NotesRun>{{0, 19, {false, false, false, true}}}));
  page.pane->set_style({});
  EXPECT_TRUE(page.pane->content().runs.empty());
}

TEST(Notes, InkBeyondTheTextCanBeScrolledToAndTextKeepsToThePane) {
  Page page;
  NotesContent content;
  for (int i = 0; i < 60; ++i) content.text += u"word ";
  page.pane->set_content(content);
  EXPECT_EQ(page.pane->horizontalScrollBar()->maximum(), 0);
  const int lines = page.pane->verticalScrollBar()->maximum();
  content.strokes = {{kBlack, 2, {{10, 10, 1}, {500, 900, 1}}}};
  page.pane->set_content(content);
  EXPECT_GE(page.pane->horizontalScrollBar()->maximum(), 500 - page.pane->viewport()->width());
  EXPECT_GE(page.pane->verticalScrollBar()->maximum(), 900 - page.pane->viewport()->height());
  content.strokes.clear();
  page.pane->set_content(content);
  EXPECT_EQ(page.pane->verticalScrollBar()->maximum(), lines);

  // Text that was drawn on wraps as it did then.
  const auto height = [&] { return page.pane->document()->size().height(); };
  page.pane->set_content({u"short", {}, {}});
  page.pane->set_tool(NotesTool::pen);
  page.stroke(20, 20, 60);
  page.stroke(20, 140, 60);
  EXPECT_GT(page.pane->verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(page.pane->horizontalScrollBar()->maximum(), 0) << "the bar had its room before";
  page.pane->set_tool(NotesTool::text);
  page.pane->set_content(content);
  const double drawn = height();
  const int drawn_width = page.pane->viewport()->width();
  page.pane->set_tool(NotesTool::pen);
  page.stroke(20, 20, 5);
  page.pane->set_tool(NotesTool::text);
  page.pane->resize(400, 150);
  settle();
  EXPECT_EQ(height(), drawn);
  EXPECT_EQ(page.pane->content().width, static_cast<float>(drawn_width));
  page.pane->resize(120, 150);
  settle();
  EXPECT_EQ(height(), drawn);
  EXPECT_GT(page.pane->horizontalScrollBar()->maximum(), 0);
}

}  // namespace
}  // namespace orvello
