#include "hosts/qt/guarded_application.h"

#include "hosts/qt/callbacks.h"

namespace orvello {

void tell_caught() noexcept {
  if (auto* application = dynamic_cast<GuardedApplication*>(QCoreApplication::instance()))
    application->take_caught();
}

GuardedApplication::GuardedApplication(int& argc, char** argv) : QApplication(argc, argv) {
  later = [this](std::function<void()> action) { orvello::later(this, std::move(action)); };
  give_up = [] { QCoreApplication::exit(1); };
}

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (...) {
    ++uncaught_;
    take_caught();
  }
  return true;
}

}  // namespace orvello
