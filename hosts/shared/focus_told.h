// Which control of a form has the focus, as its procedure knows it. What stands above the form for
// a while (a box, a menu, another window) does not take that away.
#pragma once

#include <functional>
#include <set>
#include <utility>

#include "ports/dialog.h"

namespace orvello {

class FocusTold {
 public:
  using Tell = std::function<void(DialogEvent::Kind, int control)>;
  explicit FocusTold(Tell tell) : tell_(std::move(tell)) {}

  int control() const { return control_; }  // 0: none
  void move(int control) {
    if (control == control_) return;
    if (here_) tell_lost();
    control_ = control;
    if (here_ && control_ != 0) tell_(DialogEvent::Kind::focus_gained, control_);
  }
  // Before it is seen, and after, the focus is only remembered.
  void come() {
    if (std::exchange(here_, true)) return;
    if (control_ != 0) tell_(DialogEvent::Kind::focus_gained, control_);
  }
  void go() {
    if (std::exchange(here_, false)) tell_lost();
  }
  // A control whose row, date or position is another one than was last told as taken.
  void leave_changed(int control, bool changed) {
    if (changed)
      left_changed_.insert(control);
    else
      left_changed_.erase(control);
  }
  bool is_left_changed(int control) const { return left_changed_.count(control) > 0; }

 private:
  void tell_lost() {
    if (control_ == 0) return;
    if (is_left_changed(control_)) tell_(DialogEvent::Kind::taken, control_);
    tell_(DialogEvent::Kind::focus_lost, control_);
  }

  Tell tell_;
  std::set<int> left_changed_;
  int control_ = 0;
  bool here_ = false;
};

}  // namespace orvello
