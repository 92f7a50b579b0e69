// Message boxes nobody is there to answer: what they say goes to standard error.
#pragma once

#include <iostream>

#include "ports/message_box.h"

namespace orvello {

class WrittenBoxes : public MessageBoxes {
 public:
  BoxAnswer show(TextView text, TextView, BoxIcon icon, BoxButtons buttons, bool) override {
    if (icon != BoxIcon::none || buttons == BoxButtons::ok)
      std::cerr << "orvello: " << to_utf8(text) << "\n";
    if (buttons == BoxButtons::yes_no_cancel) return BoxAnswer::cancel;
    const bool asks = buttons == BoxButtons::yes_no || buttons == BoxButtons::yes_no_losing;
    return asks ? BoxAnswer::no : BoxAnswer::ok;
  }
  void beep(Beep) override {}
  Text language() const override { return u"en"; }
};

}  // namespace orvello
