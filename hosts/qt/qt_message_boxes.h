// Message boxes as sheets on the window.
#pragma once

#include <functional>
#include <optional>

#include "hosts/qt/qt_main_window.h"
#include "ports/message_box.h"

namespace orvello {

class QtMessageBoxes : public MessageBoxes {
 public:
  explicit QtMessageBoxes(QtMainWindow& window) : window_(window) {}
  BoxAnswer show(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons,
                 bool owned) override;
  void beep(Beep beep) override;

  // Answers in the person's place while it is set.
  std::function<BoxAnswer(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons)>
      answer;

 private:
  QtMainWindow& window_;
};

}  // namespace orvello
