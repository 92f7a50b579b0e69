// Message boxes: dialogs of the platform, made in memory, which speak the program's language.
#pragma once

#include <functional>

#include "calendar/locale_data.h"
#include "hosts/win32/win32_window.h"
#include "ports/message_box.h"

namespace orvello {

class Win32Boxes : public MessageBoxes {
 public:
  Win32Boxes(Win32Window& window, Text language)
      : window_(window), language_(std::move(language)) {}
  BoxAnswer show(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons,
                 bool owned) override;
  void beep(Beep beep) override;
  Text language() const override { return language_; }

  // Answers in the person's place while it is set.
  std::function<BoxAnswer(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons)>
      answer;

 private:
  Win32Window& window_;
  Text language_;
  LocaleData locale_;  // of the look, which asks it nothing that a box shows
};

}  // namespace orvello
