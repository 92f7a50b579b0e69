// One dialog on the screen, as its procedure knows it.
#pragma once

#include <QPointer>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>

#include "hosts/qt/form_widget.h"
#include "hosts/qt/qt_controls.h"
#include "hosts/qt/qt_report.h"

namespace orvello {

class QtDialog : public Dialog {
 public:
  // The form belongs to its parent widget, and may go with it.
  QtDialog(FormWidget* form, const Density& density, DialogProcedure& procedure);
  ~QtDialog() override;

  std::function<void(int)> closed;
  bool is_closed() const { return is_closed_; }
  int result() const { return result_; }

  // The procedure may destroy this dialog: nothing of it is touched afterwards.
  void handle(const DialogEvent& event);

  Text text(int control) const override;
  void set_text(int control, TextView text) override;
  bool checked(int control) const override;
  void set_checked(int control, bool checked) override;
  void enable(int control, bool enabled) override {
    if (QWidget* widget = find(control)) widget->setEnabled(enabled);
  }
  void show(int control, bool shown) override {
    if (form_) form_->show_control(control, shown);
  }
  void focus(int control, Caret caret) override;
  void set_step(int step) override;
  Rect place(int control) const override;
  void set_place(int control, const Rect& place) override;
  ChoiceControl* choice(int) override { return nullptr; }
  ListControl* list(int control) override;
  DateControl* date(int control) override;
  RangeControl* range(int) override { return nullptr; }
  NotesControl* notes(int) override { return nullptr; }
  ReportList* report(int control) override;
  DrawnControl* drawn(int control) override;
  void set_timer(int id, int milliseconds) override;
  void close(int result) override;

 private:
  QWidget* find(int control) const { return form_ ? form_->control(control) : nullptr; }

  QPointer<FormWidget> form_;
  const Density& density_;
  DialogProcedure& procedure_;
  std::map<int, QTimer*> timers_;
  std::map<int, std::unique_ptr<QtReport>> reports_;
  std::map<int, std::unique_ptr<QtList>> lists_;
  std::map<int, std::unique_ptr<QtCalendar>> dates_;
  std::map<int, std::unique_ptr<QtDrawn>> drawn_;
  bool is_closed_ = false;
  int result_ = 0;
};

}  // namespace orvello
