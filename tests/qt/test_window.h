// A real window on the offscreen platform and what arrived at its handler.
#pragma once

#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "hosts/qt/guarded_application.h"
#include "hosts/qt/qt_main_window.h"
#include "ports/messages.h"

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

class Recorder : public MessageHandler {
 public:
  bool handle_message(const Message& message) override {
    messages.push_back(message);
    return on_message && on_message(message);
  }
  std::vector<Message> of(std::uint32_t id) const {
    std::vector<Message> found;
    for (const Message& message : messages)
      if (message.id == id) found.push_back(message);
    return found;
  }
  int count(std::uint32_t id) const { return static_cast<int>(of(id).size()); }
  std::vector<Message> messages;
  std::function<bool(const Message&)> on_message;
};

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "orvello-test-XXXXXX").string();
    path_ = ::mkdtemp(name.data()) ? name : "";
  }
  ~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

struct TestWindow {
  explicit TestWindow(Size size = {240, 320}, int dpi = 96) {
    need_application();
    QtWindowOptions options;
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
