// The ports' contracts on the desktop.
#include <QAbstractButton>
#include <QMenu>
#include <QTimer>
#include <QWheelEvent>

#include "hosts/linux/desktop_input.h"
#include "hosts/linux/device_path.h"
#include "hosts/linux/linux_files.h"
#include "hosts/linux/system_clock.h"
#include "hosts/qt/bar_button.h"
#include "hosts/qt/hover_text.h"
#include "hosts/qt/modal_layer.h"
#include "hosts/qt/qt_keys.h"
#include "hosts/qt/qt_locale.h"
#include "hosts/qt/qt_menu_bar.h"
#include "hosts/qt/qt_message_boxes.h"
#include "hosts/qt/qt_surface.h"
#include "hosts/qt/qt_text.h"
#include "tests/contract/canvas_contract.h"
#include "tests/contract/clock_contract.h"
#include "tests/contract/files_contract.h"
#include "tests/contract/input_methods_contract.h"
#include "tests/contract/linux/qt_person.h"
#include "tests/contract/locale_contract.h"
#include "tests/contract/main_window_contract.h"
#include "tests/contract/menu_bar_contract.h"
#include "tests/contract/message_boxes_contract.h"
#include "tests/qt/test_window.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

template <typename Case, typename Made>
auto only(const char* name) {
  return ::testing::Values(Case{name, [] { return std::make_unique<Made>(); }});
}

struct QtWindowDevice : WindowDevice {
  QtWindowDevice() {
    need_application();
    QtWindowOptions options;
    options.screen = Size{240, 320};
    options.dpi = 96;
    port = std::make_unique<QtMainWindow>(options);
  }
  MainWindow& window() override { return *port; }
  void deliver() override { settle(); }
  void press(Point p) override { QTest::mousePress(content(), Qt::LeftButton, {}, at(p)); }
  void drag(Point p) override { QTest::mouseMove(content(), at(p)); }
  void release(Point p) override { QTest::mouseRelease(content(), Qt::LeftButton, {}, at(p)); }
  void hover(Point p) override { QTest::mouseMove(content(), at(p)); }
  void key(std::uint32_t, int held) override {
    Qt::KeyboardModifiers keys;
    if (held & kControlHeld) keys |= Qt::ControlModifier;
    if (held & kShiftHeld) keys |= Qt::ShiftModifier;
    QTest::keyClick(content(), Qt::Key_Left, keys);
  }
  void press_other_button(Point p) override {
    QTest::mouseClick(content(), Qt::RightButton, {}, at(p));
  }
  void wheel(Point p, int notches, bool sideways) override {
    const QPoint turned(sideways ? -120 * notches : 0, sideways ? 0 : 120 * notches);
    // In two parts: a touchpad turns by less than a notch.
    for (const QPoint& part : {turned / 4, turned - turned / 4}) {
      QWheelEvent event(QPointF(at(p)), content()->mapToGlobal(QPointF(at(p))), {}, part,
                        Qt::NoButton, {}, Qt::NoScrollPhase, false);
      QCoreApplication::sendEvent(content(), &event);
    }
  }
  void choose_in_menu(std::uint32_t command) override {
    test::choose_in_next_menu(person, command);
  }
  void close() override { port->shell()->close(); }
  void turn(Size screen) override {
    port->shell()->setFixedSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    port->shell()->setMinimumSize(0, 0);
    port->shell()->resize(screen.width, screen.height);
    for (int i = 0; i < 3; ++i) settle();  // the window waits for the last of a row
  }
  void let_timer_fire(int) override { settle(); }
  bool waits() override { return QGuiApplication::overrideCursor() != nullptr; }
  std::optional<Text> label() override { return shown(false); }
  std::optional<Text> notice() override { return shown(true); }

  std::optional<Text> shown(bool notice) {
    for (auto* child : port->shell()->findChildren<QWidget*>())
      if (auto* text = dynamic_cast<HoverText*>(child);
          text && !text->isHidden() && (text->objectName() == QStringLiteral("notice")) == notice)
        return text->text();
    return std::nullopt;
  }
  static QPoint at(Point point) { return {point.x, point.y}; }
  QWidget* content() { return &port->shell()->content(); }
  std::unique_ptr<QtMainWindow> port;
  QObject person;
};
INSTANTIATE_TEST_SUITE_P(Qt, MainWindowContract, (only<WindowCase, QtWindowDevice>("qt")));

struct QtBarDevice : MenuBarDevice {
  QtBarDevice() { test.show(); }
  MenuBar& bar() override { return port; }
  Recorder& recorder() override { return test.recorder; }
  void deliver() override { settle(); }
  void tap(std::uint32_t command) override { QTest::mouseClick(button(command), Qt::LeftButton); }
  std::vector<Text> choose(std::uint32_t menu, std::uint32_t item) override {
    std::vector<Text> texts;
    QTimer::singleShot(50, [&texts, item] {
      auto* shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(shown, nullptr);
      for (QAction* action : shown->actions())
        texts.push_back(from_qt(action->text().replace(QStringLiteral("&&"), QStringLiteral("&"))));
      for (QAction* action : shown->actions())
        if (action->data().toUInt() == item && !action->isSeparator())
          QTest::mouseClick(shown, Qt::LeftButton, {}, shown->actionGeometry(action).center());
      if (shown->isVisible()) shown->close();
    });
    tap(menu);
    return texts;
  }
  Text text(std::uint32_t command) override { return from_qt(button(command)->text()); }
  bool checked(std::uint32_t command) override { return button(command)->isChecked(); }
  Text highlight(std::uint32_t command) override {
    const BarButton& found = *button(command);
    return found.is_highlighted() ? from_qt(found.accessibleName()) : Text();
  }

  BarButton* button(std::uint32_t command) {
    return dynamic_cast<BarButton*>(
        test.window->shell()->findChild<QWidget*>(QStringLiteral("bar%1").arg(command)));
  }
  TestWindow test;
  QtMenuBar port{*test.window};
};
INSTANTIATE_TEST_SUITE_P(Qt, MenuBarContract, (only<MenuBarCase, QtBarDevice>("qt")));

struct QtBoxDevice : BoxDevice {
  QtBoxDevice() { need_application(); }
  MessageBoxes& boxes() override { return port; }
  void make_window() override {
    window.create(u"Orvello", u"Orvello", 320, recorder);
    window.show();
    settle();
  }
  void person(std::optional<int> button) override {
    QTimer::singleShot(50, [this, button] {
      QWidget* box = window.shell() ? window.shell()->cover() : QApplication::activeModalWidget();
      ASSERT_NE(box, nullptr);
      if (!button) return (void)(window.shell() ? window.shell() : box)->close();
      QTest::mouseClick(box->findChildren<QAbstractButton*>().at(*button), Qt::LeftButton);
    });
  }
  void press_return() override {
    QTimer::singleShot(50, [this] {
      QWidget* box = window.shell() ? window.shell()->cover() : QApplication::activeModalWidget();
      ASSERT_NE(box, nullptr);
      QWidget* focused = box->window()->focusWidget();
      QTest::keyClick(focused ? focused : box, Qt::Key_Return);
    });
  }
  Recorder recorder;
  QtMainWindow window{{}};
  QtMessageBoxes port{window, u"en"};
};
INSTANTIATE_TEST_SUITE_P(Qt, MessageBoxesContract, (only<BoxCase, QtBoxDevice>("qt")));

// The machine's clock in a zone that the environment names, until it goes.
class ZonedClock : public SystemClock {
 public:
  ZonedClock(const char* zone, LocalSeconds standing) : SystemClock(standing), zone_("TZ", zone) {
    ::tzset();
  }

 private:
  VariableGuard zone_;
};
INSTANTIATE_TEST_SUITE_P(Linux, ClockContract,
                         ::testing::Values(ClockCase{"system", [](const char* zone, auto standing) {
                                                       return std::make_unique<ZonedClock>(
                                                           zone, standing);
                                                     }}));

struct QtSurfaceDevice : SurfaceDevice {
  QtSurfaceDevice() { need_application(); }
  Surfaces& surfaces() override { return port; }
  std::vector<Color> shown(Surface& surface) override {
    const QImage picture = static_cast<QtSurface&>(surface).front();
    std::vector<Color> pixels;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) {
        const QRgb pixel = picture.pixel(x, y);
        pixels.push_back(rgb(qRed(pixel), qGreen(pixel), qBlue(pixel)));
      }
    return pixels;
  }
  QtSurfaces port;
};
INSTANTIATE_TEST_SUITE_P(Qt, SurfacesContract, (only<SurfaceCase, QtSurfaceDevice>("qt")));
INSTANTIATE_TEST_SUITE_P(Qt, CanvasContract, (only<SurfaceCase, QtSurfaceDevice>("qt")));

struct LinuxFilesDevice : FilesDevice {
  Files& files() override { return port; }
  void put(TextView path) override { put_content(host_path(path), "no bitmap"); }
  void put_bitmap(TextView path, const Image& image) override {
    QImage picture(image.width, image.height, QImage::Format_RGB888);
    for (int y = 0; y < image.height; ++y)
      for (int x = 0; x < image.width; ++x) {
        const Color c = image.at(x, y);
        picture.setPixelColor(x, y, QColor(red_of(c), green_of(c), blue_of(c)));
      }
    ASSERT_TRUE(picture.save(QString::fromStdString(host_path(path)), "BMP"));
  }
  std::vector<Text> diagnostic_lines() override {
    std::vector<Text> lines = split(to_utf16(content_of(folder / "state/diag.txt")), u'\n');
    lines.pop_back();  // behind the last line's end
    return lines;
  }
  void fail_appending() override { std::filesystem::remove_all(folder / "state"); }
  ScratchFolder folder;
  LinuxFiles port{{folder.path(), folder.path(), folder / "state"}};
  bool made = std::filesystem::create_directory(folder / "state");
};
INSTANTIATE_TEST_SUITE_P(Linux, FilesContract, (only<FilesCase, LinuxFilesDevice>("linux")));

LocaleCase locale_of(const char* name) {
  return {name, [name] { return std::make_unique<QtLocale>(name, name, ""); }};
}
INSTANTIATE_TEST_SUITE_P(Qt, LocaleContract,
                         ::testing::Values(locale_of("ru_RU.UTF-8"), locale_of("C"),
                                           locale_of("en_US.UTF-8"), locale_of("de_DE.UTF-8"),
                                           locale_of("pl_PL.UTF-8"), locale_of("hu_HU.UTF-8"),
                                           locale_of("ja_JP.UTF-8"), locale_of("ar_EG.UTF-8")));
INSTANTIATE_TEST_SUITE_P(Linux, InputMethodsContract, (only<InputCase, DesktopInput>("desktop")));

}  // namespace
}  // namespace orvello
