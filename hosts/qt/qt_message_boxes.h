// Message boxes as sheets on the window.
#pragma once

#include <functional>
#include <optional>

#include "hosts/qt/qt_main_window.h"
#include "ports/message_box.h"

namespace orvello {

class QtMessageBoxes : public MessageBoxes {
 public:
  QtMessageBoxes(QtMainWindow& window, Text language)
      : window_(window), language_(std::move(language)) {}
  BoxAnswer show(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons,
                 bool owned) override;
  void beep(Beep beep) override;
  Text language() const override { return language_; }

  // Answers in the person's place while it is set.
  std::function<BoxAnswer(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons)>
      answer;

 private:
  QtMainWindow& window_;
  Text language_;
};

}  // namespace orvello
