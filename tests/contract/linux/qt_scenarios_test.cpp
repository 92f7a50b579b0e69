#include <unistd.h>

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <fstream>

#include "hosts/headless/memory_record_databases.h"
#include "hosts/headless/memory_registry.h"
#include "hosts/qt/qt_host.h"
#include "hosts/qt/qt_keys.h"
#include "hosts/qt/qt_shell.h"
#include "tests/contract/scenarios.h"

namespace orvello {
namespace {

namespace fs = std::filesystem;

// The Linux host's window on the offscreen platform, driven through the toolkit's own events.
class QtDevice : public ScenarioDevice {
 public:
  QtDevice() {
    folder_ = fs::temp_directory_path() / ("orvello-scenario-" + std::to_string(getpid()));
    fs::create_directories(folder_);
    std::ofstream(folder_ / "settings.vol");  // not the first use: nobody answers its note
    QtHostOptions options;
    options.paths = {folder_.string(), folder_.string(), folder_.string()};
    options.now = static_cast<LocalSeconds>(day_number(2026, 11, 21)) * kSecondsPerDay + 36000;
    options.russian = false;
    options.screen = Size{240, 320};
    options.dpi = 96;
    options.offscreen = true;
    qt_ = std::make_unique<QtHost>(argc_, argv_, options, registry_, databases_, store_);
  }
  ~QtDevice() override {
    qt_.reset();
    fs::remove_all(folder_);
  }
  Host host() override { return qt_->host(); }
  MemoryStore& store() override { return store_; }

  void press(Point point) override { QTest::mousePress(content(), Qt::LeftButton, {}, at(point)); }
  void move(Point point) override { QTest::mouseMove(content(), at(point)); }
  void release(Point point) override {
    QTest::mouseRelease(content(), Qt::LeftButton, {}, at(point));
  }
  bool hold(Point point) override {
    bool opened = false;
    // The popup runs a loop of its own; this closes it from within.
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [&] {
      QWidget* cover = shell()->cover();
      if (!cover) return;
      opened = true;
      for (QPushButton* button : cover->findChildren<QPushButton*>())
        if (button->isVisible() && button->isDefault()) return button->click();
      if (!cover->findChildren<QPushButton*>().isEmpty())
        cover->findChildren<QPushButton*>().last()->click();
    });
    closer.start(50);
    press(point);
    for (int i = 0; i < 12; ++i) QTest::qWait(50);
    release(point);
    return opened;
  }
  void key(std::uint32_t key_code) override {
    static constexpr std::pair<std::uint32_t, Qt::Key> kKeys[] = {
        {kKeyPageUp, Qt::Key_PageUp}, {kKeyPageDown, Qt::Key_PageDown}, {kKeyHome, Qt::Key_Home},
        {kKeyLeft, Qt::Key_Left},     {kKeyRight, Qt::Key_Right},       {kKeyUp, Qt::Key_Up},
        {kKeyDown, Qt::Key_Down},
    };
    for (const auto& [code, key] : kKeys)
      if (code == key_code) QTest::keyClick(content(), key);
  }
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
  void settle() override {
    for (int i = 0; i < 3; ++i) QTest::qWait(10);
  }

 private:
  static QPoint at(Point point) { return {point.x, point.y}; }
  Shell* shell() const {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (auto* found = dynamic_cast<Shell*>(widget)) return found;
    return nullptr;
  }
  ContentArea* content() const { return &shell()->content(); }

  int argc_ = 1;
  char name_[8] = "orvello";
  char* argv_[2] = {name_, nullptr};
  fs::path folder_;
  MemoryRegistry registry_;
  MemoryRecordDatabases databases_;
  class FixedClock : public Clock {
   public:
    SystemTime local_time() const override { return {2026, 11, 6, 21, 10, 0, 0, 0}; }
    UtcSeconds utc_now() const override { return 0; }
    std::string zone_name() const override { return "UTC"; }
    LocalSeconds to_local(UtcSeconds utc) const override { return utc; }
    UtcSeconds to_utc(LocalSeconds local) const override { return local; }
  } clock_;
  MemoryStore store_{clock_};
  std::unique_ptr<QtHost> qt_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, Scenarios, QtDevice);

}  // namespace
}  // namespace orvello
