#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QTimer>

#include "hosts/qt/bar_button.h"
#include "hosts/qt/qt_menu_bar.h"
#include "resources/ids.h"
#include "resources/menus.h"
#include "tests/qt/test_window.h"

namespace orvello {
namespace {

Image strip_of(int side) {
  Image strip{4 * side, side, std::vector<Color>(static_cast<std::size_t>(4 * side * side))};
  for (std::size_t i = 0; i < strip.pixels.size(); ++i)
    strip.pixels[i] = i % 3 ? kMagenta : rgb(10, 20, 30);
  return strip;
}

struct TestBar : TestWindow {
  explicit TestBar(Size size = {240, 320}, int dpi = 96, Language language = Language::russian)
      : TestWindow(size, dpi), bar(*window) {
    EXPECT_TRUE(bar.create(main_menu_bar(language, strip_of(dpi >= 130 ? 32 : 16), 26)));
    show();
  }
  BarButton* button(std::uint32_t command) {
    for (QWidget* child : window->shell()->findChildren<QWidget*>())
      if (auto* found = dynamic_cast<BarButton*>(child);
          found && found->content().command == command)
        return found;
    return nullptr;
  }
  std::vector<BarButton*> buttons() {
    std::vector<BarButton*> all;
    for (QWidget* child : window->shell()->findChildren<QWidget*>())
      if (auto* found = dynamic_cast<BarButton*>(child)) all.push_back(found);
    return all;
  }
  QtMenuBar bar;
};

struct BarCase {
  Size screen;
  int dpi;
  Language language;
};

TEST(MenuBar, EveryButtonFitsWholeAndIsBigEnoughForAFinger) {
  std::vector<BarCase> cases;
  for (const LanguageInfo& info : all_languages())
    for (const auto& [screen, dpi] : {std::pair(Size{240, 320}, 96), std::pair(Size{480, 640}, 192),
                                      std::pair(Size{320, 240}, 96), std::pair(Size{480, 640}, 96)})
      cases.push_back({screen, dpi, info.language});
  for (const BarCase& c : cases) {
    TestBar test(c.screen, c.dpi, c.language);
    const int least = c.dpi == 96 ? 26 : 52;
    EXPECT_GE(test.bar.height(), least);
    ASSERT_EQ(test.buttons().size(), 7u);
    for (BarButton* button : test.buttons()) {
      const QRect place(button->mapTo(test.window->shell(), QPoint(0, 0)), button->size());
      EXPECT_TRUE(test.window->shell()->rect().contains(place)) << button->content().command;
      EXPECT_GE(button->width(), button->shows_image() ? least : button->text_width());
      for (BarButton* other : test.buttons())
        EXPECT_TRUE(other == button || !other->geometry().intersects(button->geometry()));
    }
    EXPECT_LE(test.content()->geometry().bottom(), c.screen.height - test.bar.height());
  }
}

TEST(MenuBar, CanBeReachedAndPressedWithKeysAlone) {
  TestBar test;
  QTest::keyClick(test.content(), Qt::Key_Tab);
  ASSERT_TRUE(test.button(kCommandNew)->hasFocus());
  QTest::keyClick(test.button(kCommandNew), Qt::Key_Tab);
  QTest::keyClick(test.button(kCommandOptions), Qt::Key_Tab);
  ASSERT_TRUE(test.button(kCommandExit)->hasFocus());
  QTest::keyClick(test.button(kCommandExit), Qt::Key_Return);
  EXPECT_TRUE(test.button(kCommandExit)->hasFocus());
  QTest::mouseClick(test.button(kCommandNew), Qt::LeftButton);
  EXPECT_FALSE(test.button(kCommandNew)->hasFocus()) << "a tap leaves the keyboard where it is";
  settle();
  ASSERT_EQ(test.recorder.count(kMessageCommand), 2);
  EXPECT_EQ(test.recorder.of(kMessageCommand)[0].wparam, kCommandExit);
}

TEST(MenuBar, ItsPlaceGoesToTheContentWhenItGoes) {
  TestBar test;
  test.bar.destroy();
  settle();
  EXPECT_EQ(test.content()->height(), 320);
  EXPECT_TRUE(test.bar.create(main_menu_bar(Language::english, strip_of(16), 26)));
  EXPECT_EQ(test.content()->height(), 320 - test.bar.height());
}

TEST(MenuBar, HasNamesForThoseWhoCannotSeeIt) {
  TestBar test({240, 320}, 96, Language::english);
  test.bar.set_button_text(6, u"New Appt");
  for (BarButton* button : test.buttons()) EXPECT_FALSE(button->accessibleName().isEmpty());
  EXPECT_EQ(test.button(kCommandYearView)->accessibleName(),
            test.button(kCommandYearView)->toolTip());
  EXPECT_NE(test.button(kCommandYearView)->accessibleName(), QStringLiteral("New Appt"));
  EXPECT_FALSE(test.content()->accessibleName().isEmpty());
}

TEST(MenuBar, AMenuThatKeysOpenStandsOnItsFirstRowWhichIsSeen) {
  TestBar test({240, 320}, 96, Language::english);
  const auto opened = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
  const auto ground = [&](int row) {
    const QRect place = opened()->actionGeometry(opened()->actions()[row]);
    return opened()->grab().toImage().pixelColor(place.left() + 4, place.center().y());
  };
  int seen = 0;
  QTimer::singleShot(50, [&] {
    ASSERT_NE(opened(), nullptr);
    EXPECT_EQ(opened()->activeAction(), nullptr);
    EXPECT_EQ(ground(0), ground(1));
    ++seen;
    opened()->close();
  });
  QTest::mouseClick(test.button(kCommandOptions), Qt::LeftButton);
  QTimer::singleShot(50, [&] {
    ASSERT_NE(opened(), nullptr);
    ASSERT_EQ(opened()->activeAction(), opened()->actions()[0]);
    EXPECT_NE(ground(0), ground(1));
    ++seen;
    opened()->close();
  });
  test.button(kCommandOptions)->setFocus(Qt::TabFocusReason);
  QTest::keyClick(test.button(kCommandOptions), Qt::Key_Return);
  EXPECT_EQ(seen, 2);
}

}  // namespace
}  // namespace orvello
