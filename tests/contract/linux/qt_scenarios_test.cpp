#include <QAbstractButton>
#include <QApplication>
#include <QListView>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include "hosts/headless/headless_ports.h"
#include "hosts/headless/memory_record_databases.h"
#include "hosts/headless/memory_registry.h"
#include "hosts/qt/direction.h"
#include "hosts/qt/qt_host.h"
#include "hosts/qt/qt_keys.h"
#include "hosts/qt/qt_shell.h"
#include "hosts/qt/qt_text.h"
#include "tests/contract/mirrored_device.h"
#include "tests/scratch.h"

namespace orvello {
namespace {

// The Linux host's window on the offscreen platform, driven through the toolkit's own events.
class QtDevice : public ScenarioDevice {
 public:
  explicit QtDevice(const LocaleData& locale = english_locale())
      : language_("LC_ALL", to_utf8(locale.name)) {
    put_content(folder_ / "settings.vol", "");  // not the first use: nobody answers its note
    WindowHostOptions options;
    options.paths = {folder_.path(), folder_.path(), folder_.path()};
    options.now = midnight_of(day_of(2026, 11, 21)) + 36000;
    if (!locale.right_to_left) options.language = "en";
    options.screen = Size{240, 320};
    options.dpi = 96;
    options.offscreen = true;
    qt_ = std::make_unique<QtHost>(argc_, argv_, options, registry_, databases_, store_);
    QObject::connect(&person_, &QTimer::timeout, [this] { attend(); });
    person_.start(20);
  }
  ~QtDevice() override {
    person_.stop();
    qt_.reset();
    set_right_to_left(false);  // the toolkit's, which other tests use too
  }
  Host host() override { return qt_->host(); }
  MemoryStore& store() override { return store_; }

  void press(Point point) override { QTest::mousePress(content(), Qt::LeftButton, {}, at(point)); }
  void move(Point point) override { QTest::mouseMove(content(), at(point)); }
  void release(Point point) override {
    QTest::mouseRelease(content(), Qt::LeftButton, {}, at(point));
  }
  void hold(Point point) override {
    press(point);
    for (int i = 0; i < 12; ++i) QTest::qWait(50);
    release(point);
  }
  void key(std::uint32_t key_code) override { click_key(content(), key_code, false); }
  void wheel(Point point, int notches) override {
    const QPointF where = at(point);
    QWheelEvent event(where, content()->mapToGlobal(where), {}, {0, notches * 120}, {}, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(content(), &event);
  }
  void choose(std::uint32_t command) override {
    qt_->host().window.post({kMessageCommand, command, {}, 0});
    settle();
  }
  void turn(Size screen) override {
    shell()->setFixedSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    shell()->setMinimumSize(0, 0);
    shell()->resize(screen.width, screen.height);
    for (int i = 0; i < 10; ++i) QTest::qWait(50);  // the window waits for the last of a row
  }
  void list_press(Point point) override {
    QTest::mousePress(list()->viewport(), Qt::LeftButton, {}, at(point));
  }
  void list_move(Point point) override { QTest::mouseMove(list()->viewport(), at(point)); }
  void list_release(Point point) override {
    QTest::mouseRelease(list()->viewport(), Qt::LeftButton, {}, at(point));
  }
  void list_key(std::uint32_t key_code, bool control_held) override {
    click_key(list(), key_code, control_held);
  }
  void header_tap(Point point) override {
    auto* header = control(*content(), kControlDayHeader);
    ASSERT_NE(header, nullptr);
    QTest::mouseClick(header, Qt::LeftButton, {}, at(point));
  }
  Point row_center(int row) override { return center_of(*list(), row); }
  void let_timer_fire(int) override {
    for (int i = 0; i < 14; ++i) QTest::qWait(50);
  }
  void meanwhile(std::function<void()> happens) override { happens_ = std::move(happens); }
  void key_anywhere(std::uint32_t key_code) override {
    QWidget* focus = shell()->focusWidget();
    click_key(focus ? focus : shell(), key_code, false);
  }
  void answer(Answer answer) override { answer_ = answer; }
  void pick(std::uint32_t command) override { pick_ = command; }
  Text notice() override {
    auto* shown = shell()->findChild<QWidget*>(QStringLiteral("notice"));
    return shown && shown->isVisible() ? from_qt(shown->accessibleName()) : Text();
  }
  int boxes() override { return boxes_; }
  std::vector<int> opened() override { return opened_; }
  void settle() override {
    for (int i = 0; i < 3; ++i) QTest::qWait(10);
  }

 private:
  // The person in front of what is modal: those windows and menus run a loop of their own.
  void attend() {
    if (QWidget* popup = QApplication::activePopupWidget()) return attend_menu(popup);
    QWidget* cover = shell() ? shell()->cover() : nullptr;
    if (cover == attended_) return;
    attended_ = cover;
    if (!cover) return;
    if (cover->findChild<QWidget*>(QStringLiteral("box"))) ++boxes_;
    for (const QWidget* form : cover->findChildren<QWidget*>())
      if (form->objectName().startsWith(QStringLiteral("dialog")))
        opened_.push_back(form->objectName().mid(6).toInt());
    if (const auto happens = std::exchange(happens_, nullptr)) happens();
    auto* rows = dynamic_cast<QListView*>(control(*cover, kControlDayList));
    auto* ok = dynamic_cast<QAbstractButton*>(control(*cover, kControlOk));
    if (answer_ == Answer::first_row && rows)
      QTest::mouseClick(rows->viewport(), Qt::LeftButton, {}, at(center_of(*rows, 0)));
    else if (answer_ == Answer::accept && ok)
      ok->click();
    else
      QTest::keyClick(cover, Qt::Key_Escape);
  }
  void attend_menu(QWidget* popup) {
    auto* menu = dynamic_cast<QMenu*>(popup);
    for (QAction* action : menu ? menu->actions() : QList<QAction*>())
      if (action->isEnabled() && action->data().toUInt() == pick_) {
        menu->setActiveAction(action);
        return QTest::keyClick(menu, Qt::Key_Return);
      }
    popup->close();
  }

  static QWidget* control(const QWidget& above, int id) {
    return above.findChild<QWidget*>(QStringLiteral("control%1").arg(id));
  }
  static Point center_of(const QListView& rows, int row) {
    const QPoint center = rows.visualRect(rows.model()->index(row, 0)).center();
    return {center.x(), center.y()};
  }
  QListView* list() const { return dynamic_cast<QListView*>(control(*content(), kControlDayList)); }
  static void click_key(QWidget* widget, std::uint32_t key_code, bool control_held) {
    static constexpr std::pair<std::uint32_t, Qt::Key> kKeys[] = {
        {kKeyPageUp, Qt::Key_PageUp}, {kKeyPageDown, Qt::Key_PageDown}, {kKeyHome, Qt::Key_Home},
        {kKeyLeft, Qt::Key_Left},     {kKeyRight, Qt::Key_Right},       {kKeyUp, Qt::Key_Up},
        {kKeyDown, Qt::Key_Down},     {kKeyReturn, Qt::Key_Return},     {kKeyEnd, Qt::Key_End},
        {kKeyEscape, Qt::Key_Escape}, {0x2E, Qt::Key_Delete},
    };
    Qt::Key wanted = static_cast<Qt::Key>(key_code);
    for (const auto& [code, key] : kKeys)
      if (code == key_code) wanted = key;
    QTest::keyClick(widget, wanted, control_held ? Qt::ControlModifier : Qt::NoModifier);
  }

  static QPoint at(Point point) { return {point.x, point.y}; }
  Shell* shell() const {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (auto* found = dynamic_cast<Shell*>(widget)) return found;
    return nullptr;
  }
  ContentArea* content() const { return &shell()->content(); }

  VariableGuard language_;
  int argc_ = 1;
  char name_[8] = "orvello";
  char* argv_[2] = {name_, nullptr};
  ScratchFolder folder_;
  MemoryRegistry registry_;
  MemoryRecordDatabases databases_;
  HeadlessClock clock_;
  MemoryStore store_{clock_};
  std::unique_ptr<QtHost> qt_;
  QTimer person_;
  QPointer<QWidget> attended_;
  Answer answer_ = Answer::dismiss;
  std::uint32_t pick_ = 0;
  std::vector<int> opened_;
  int boxes_ = 0;
  std::function<void()> happens_;
};

using QtDevices = testing::Types<QtDevice, MirroredDevice<QtDevice>>;
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, Scenarios, QtDevices);

}  // namespace
}  // namespace orvello
