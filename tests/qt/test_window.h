// A real window on the offscreen platform and what arrived at its handler.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <functional>

#include "hosts/qt/guarded_application.h"
#include "hosts/qt/qt_main_window.h"
#include "tests/contract/message_log.h"
#include "tests/scratch.h"

namespace orvello {

// Made once and never taken down: static objects of the toolkit outlive the tests.
inline void need_application() {
  if (QCoreApplication::instance()) return;
  static int argc = 1;
  static char name[] = "test";
  static char* argv[] = {name, nullptr};
  QApplication::setDesktopSettingsAware(false);
  static auto* application = new GuardedApplication(argc, argv);
  application->setQuitOnLastWindowClosed(false);
}

inline bool wait_until(const std::function<bool()>& done, int milliseconds = 3000) {
  QElapsedTimer timer;
  timer.start();
  while (!done()) {
    if (timer.elapsed() > milliseconds) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return true;
}

inline void settle() {
  wait_until([] { return false; }, 150);
}

struct TestWindow {
  explicit TestWindow(Size size = {240, 320}, int dpi = 96, const DesktopLook& look = {}) {
    need_application();
    QtWindowOptions options;
    options.look = look;
    options.screen = size;
    options.dpi = dpi;
    window = std::make_unique<QtMainWindow>(std::move(options));
    window->create(u"Orvello", u"Orvello", size.height, recorder);
  }
  ContentArea* content() { return &window->shell()->content(); }
  void show() {
    window->show();
    settle();
    recorder.messages.clear();
  }

  Recorder recorder;
  std::unique_ptr<QtMainWindow> window;
};

}  // namespace orvello
