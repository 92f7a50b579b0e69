// Which control of a form has the focus, as its procedure knows it. What stands above the form for
// a while (a box, a menu, another window) does not take that away.
#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <set>

#include "hosts/qt/callbacks.h"
#include "ports/dialog.h"

namespace orvello {

class FormFocus : public Guarded<QObject> {
 public:
  using Tell = std::function<void(DialogEvent::Kind, int control)>;
  explicit FormFocus(Tell tell) : tell_(std::move(tell)) {}

  void watch(QWidget& widget, int control);
  int control() const { return control_; }  // 0: none
  void move(int control);
  // Before it is seen, and after, the focus is only remembered.
  void come();
  void go();
  // A control whose row, date or position is another one than was last told as taken.
  void leave_changed(int control, bool changed);
  bool is_left_changed(int control) const { return left_changed_.count(control) > 0; }

  bool filter_event(QObject* object, QEvent* event) override;

 private:
  void tell_lost();

  Tell tell_;
  std::map<const QObject*, int> controls_;
  std::set<int> left_changed_;
  int control_ = 0;
  bool here_ = false;
};

}  // namespace orvello
