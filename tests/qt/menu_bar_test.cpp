#include <gtest/gtest.h>

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

// Taps an item of the menu that is about to open; null closes it.
void choose_in_next_menu(const char16_t* text, std::vector<QString>* texts = nullptr) {
  QTimer::singleShot(50, [text, texts] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction* action : menu->actions()) {
      if (texts) texts->push_back(action->text());
      if (text && action->text() == QString::fromUtf16(text))
        return QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    }
    menu->close();
  });
}

struct BarCase {
  Size screen;
  int dpi;
  Language language;
};

TEST(MenuBar, EveryButtonFitsWholeAndIsBigEnoughForAFinger) {
  const BarCase cases[] = {
      {{240, 320}, 96, Language::russian},  {{240, 320}, 96, Language::english},
      {{480, 640}, 192, Language::russian}, {{480, 640}, 192, Language::english},
      {{320, 240}, 96, Language::russian},  {{480, 640}, 96, Language::english}};
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

TEST(MenuBar, ButtonsSendTheirCommands) {
  TestBar test;
  for (const std::uint32_t command : {kCommandNew, kCommandExit, kCommandMonthView}) {
    test.recorder.messages.clear();
    QTest::mouseClick(test.button(command), Qt::LeftButton);
    ASSERT_TRUE(wait_until([&] { return test.recorder.count(kMessageCommand) == 1; })) << command;
    EXPECT_EQ(test.recorder.of(kMessageCommand)[0].wparam, command);
  }
  EXPECT_TRUE(test.content()->hasFocus()) << "a tap leaves the keyboard with the calendar";
}

TEST(MenuBar, ADisabledButtonSendsNothingAndATapDoesNotTurnAMark) {
  TestBar test;
  test.bar.enable_button(kCommandNew, false);
  QTest::mouseClick(test.button(kCommandNew), Qt::LeftButton);
  test.bar.check_button(kCommandMonthView, true);
  QTest::mouseClick(test.button(kCommandDayView), Qt::LeftButton);
  settle();
  EXPECT_EQ(test.recorder.count(kMessageCommand), 1);
  EXPECT_FALSE(test.button(kCommandDayView)->isChecked());
  EXPECT_TRUE(test.button(kCommandMonthView)->isChecked());
  test.bar.check_button(kCommandMonthView, false);
  EXPECT_FALSE(test.button(kCommandMonthView)->isChecked());
}

TEST(MenuBar, MenusHoldWhatWasSetLastAndSendTheChosenItem) {
  TestBar test;
  test.bar.set_menu(kCommandProfileMenu, {{60000, u"All", true, true},
                                          {0, u"", true, false},
                                          {60001, u"Work & home", true, false},
                                          {60002, u"Off", false, false}});
  std::vector<QString> texts;
  choose_in_next_menu(u"Work && home", &texts);
  QTest::mouseClick(test.button(kCommandProfileMenu), Qt::LeftButton);
  ASSERT_TRUE(wait_until([&] { return test.recorder.count(kMessageCommand) == 1; }));
  EXPECT_EQ(test.recorder.of(kMessageCommand)[0].wparam, 60001u);
  ASSERT_GE(texts.size(), 2u);
  EXPECT_EQ(texts[0], QStringLiteral("All"));
  choose_in_next_menu(nullptr);
  QTest::mouseClick(test.button(kCommandOptions), Qt::LeftButton);
  settle();
  EXPECT_EQ(test.recorder.count(kMessageCommand), 1) << "a closed menu chooses nothing";
}

TEST(MenuBar, CanBeReachedAndPressedWithKeysAlone) {
  TestBar test;
  QTest::keyClick(test.content(), Qt::Key_Tab);
  ASSERT_TRUE(test.button(kCommandNew)->hasFocus());
  QTest::keyClick(test.button(kCommandNew), Qt::Key_Tab);
  QTest::keyClick(test.button(kCommandOptions), Qt::Key_Tab);
  ASSERT_TRUE(test.button(kCommandExit)->hasFocus());
  QTest::keyClick(test.button(kCommandExit), Qt::Key_Return);
  settle();
  ASSERT_EQ(test.recorder.count(kMessageCommand), 1);
  EXPECT_EQ(test.recorder.of(kMessageCommand)[0].wparam, kCommandExit);
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

TEST(MenuBar, ACommandMayDestroyTheBarAndItsPlaceGoesToTheContent) {
  TestBar test;
  test.recorder.on_message = [&](const Message& message) {
    if (message.id == kMessageCommand) test.bar.destroy();
    return true;
  };
  QTest::mouseClick(test.button(kCommandExit), Qt::LeftButton);
  ASSERT_TRUE(wait_until([&] { return !test.bar.exists(); }));
  settle();
  EXPECT_EQ(test.bar.height(), 0);
  EXPECT_EQ(test.content()->height(), 320);
  EXPECT_TRUE(test.bar.create(main_menu_bar(Language::english, strip_of(16), 26)));
  EXPECT_EQ(test.content()->height(), 320 - test.bar.height());
}

}  // namespace
}  // namespace orvello
