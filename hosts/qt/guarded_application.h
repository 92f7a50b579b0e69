// The one place where a fault of the program's own ends up that nothing else has caught, such as no
// memory being left: the toolkit must never see it.
#pragma once

#include <QApplication>
#include <exception>
#include <functional>
#include <string>

namespace orvello {

// What to tell a person about it.
std::string failure_sentence(const std::exception& fault);

class GuardedApplication : public QApplication {
 public:
  using QApplication::QApplication;

  // Told of the first fault, after it was written to standard error. The program ends then.
  std::function<void(const std::string& sentence)> failed;

  // False when something came out of `action`, which has been told.
  bool guard(const std::function<void()>& action);
  bool notify(QObject* receiver, QEvent* event) override;

 private:
  void tell(const std::exception& fault);
  bool told_ = false;
};

}  // namespace orvello
