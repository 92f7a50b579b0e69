#include "hosts/qt/guarded_application.h"

#include <iostream>
#include <new>
#include <stdexcept>

namespace orvello {

std::string failure_sentence(const std::exception& fault) {
  const bool memory =
      dynamic_cast<const std::bad_alloc*>(&fault) || dynamic_cast<const std::length_error*>(&fault);
  if (memory) return "There is not enough memory to go on. What was saved is safe.";
  return std::string("Orvello cannot go on: ") + fault.what() + ". What was saved is safe.";
}

bool GuardedApplication::guard(const std::function<void()>& action) {
  try {
    action();
    return true;
  } catch (const std::exception& fault) {
    tell(fault);
  }
  return false;
}

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
  bool taken = true;
  guard([&] { taken = QApplication::notify(receiver, event); });
  return taken;
}

void GuardedApplication::tell(const std::exception& fault) {
  const std::string sentence = failure_sentence(fault);
  std::cerr << "orvello: " << sentence << std::endl;
  // A second one, while the first is told, has nothing to add.
  if (told_ || !failed) return;
  told_ = true;
  guard([&] { failed(sentence); });
}

}  // namespace orvello
