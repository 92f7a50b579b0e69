// What a message box offers, and which of it is the careful answer, on every host that draws one.
#pragma once

#include <vector>

#include "ports/message_box.h"
#include "resources/ids.h"

namespace orvello {

struct BoxChoice {
  BoxAnswer answer;
  StringId text;
};

// In their order; the last one is the careful answer, which a box that is left without a choice
// gives.
inline std::vector<BoxChoice> box_choices(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::ok_cancel:
    case BoxButtons::ok_cancel_losing:
      return {{BoxAnswer::ok, StringId::ok}, {BoxAnswer::cancel, StringId::cancel}};
    case BoxButtons::yes_no:
    case BoxButtons::yes_no_losing:
      return {{BoxAnswer::yes, StringId::box_yes}, {BoxAnswer::no, StringId::box_no}};
    case BoxButtons::yes_no_cancel:
      return {{BoxAnswer::yes, StringId::box_yes},
              {BoxAnswer::no, StringId::box_no},
              {BoxAnswer::cancel, StringId::cancel}};
    case BoxButtons::ok:
      break;
  }
  return {{BoxAnswer::ok, StringId::ok}};
}

// Return gives the careful answer then, else the first one.
inline bool may_lose(BoxButtons buttons) {
  return buttons == BoxButtons::ok_cancel_losing || buttons == BoxButtons::yes_no_losing;
}

}  // namespace orvello
