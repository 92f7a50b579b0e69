// Message boxes that say the same thing only once while the program starts: what is wrong with a
// file would else be told by each of the operations that read it.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "ports/message_box.h"

namespace orvello {

class OnceBoxes : public MessageBoxes {
 public:
  explicit OnceBoxes(MessageBoxes& boxes) : boxes_(boxes) {}

  BoxAnswer show(TextView text, TextView caption, BoxIcon icon, BoxButtons buttons,
                 bool owned) override {
    if (starting_ && buttons == BoxButtons::ok) {
      std::pair<Text, Text> box{text, caption};
      if (std::find(said_.begin(), said_.end(), box) != said_.end()) return BoxAnswer::ok;
      said_.push_back(std::move(box));
    }
    return boxes_.show(text, caption, icon, buttons, owned);
  }
  void beep(Beep beep) override { boxes_.beep(beep); }
  Text language() const override { return boxes_.language(); }
  void started() {
    starting_ = false;
    said_.clear();
  }

 private:
  MessageBoxes& boxes_;
  bool starting_ = true;
  std::vector<std::pair<Text, Text>> said_;
};

}  // namespace orvello
