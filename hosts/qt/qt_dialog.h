// One dialog on the screen, or one page of a sheet, as its procedure knows it.
#pragma once

#include <QPointer>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>
#include <set>

#include "hosts/qt/form_widget.h"
#include "hosts/qt/qt_controls.h"
#include "hosts/shared/event_queue.h"

namespace orvello {

std::shared_ptr<EventQueue> make_event_queue();  // posted by the toolkit

class QtDialog : public Dialog {
 public:
  // The form belongs to its parent widget, and may go with it. The queue is shared by the pages of
  // a sheet.
  QtDialog(FormWidget* form, const Density& density, DialogProcedure& procedure,
           std::shared_ptr<EventQueue> queue);
  ~QtDialog() override;

  std::function<void(int)> closed;  // none: it is modeless, and is not closed by itself
  std::function<void(const QString&)> titled;
  bool is_closed() const { return is_closed_; }
  int result() const { return result_; }
  DialogProcedure& procedure() { return procedure_; }

  // At once, before it is seen. The procedure may destroy this dialog in this and in every other
  // event: nothing of it is touched afterwards.
  void start() { procedure_.handle(*this, {DialogEvent::Kind::init, 0, nullptr, {}}); }
  void tell(const DialogEvent& event);
  void tell(DialogEvent::Kind kind) { tell({kind, 0, nullptr, {}}); }
  // A person closes it: the procedure is asked, and told.
  void close_wanted();
  void end(int result);  // as close, without telling anybody

  Text text(int control) const override;
  void set_text(int control, TextView text) override;
  bool checked(int control) const override;
  void set_checked(int control, bool checked) override;
  void enable(int control, bool enabled) override {
    if (form_) form_->set_enabled(control, enabled);
  }
  void show(int control, bool shown) override {
    if (form_) form_->set_shown(control, shown);
  }
  void focus(int control, Caret caret) override {
    if (form_) form_->focus(control, caret);
  }
  void set_step(int step) override {
    if (form_) form_->set_step(step);
  }
  Rect place(int control) const override;
  void set_place(int control, const Rect& place) override {
    if (form_) form_->set_place(control, place);
  }
  ChoiceControl* choice(int control) override { return handles(control).choice.get(); }
  ListControl* list(int control) override { return handles(control).list.get(); }
  DateControl* date(int control) override { return handles(control).date.get(); }
  RangeControl* range(int control) override { return handles(control).range.get(); }
  NotesControl* notes(int control) override { return handles(control).notes.get(); }
  ReportList* report(int control) override { return handles(control).report.get(); }
  DrawnControl* drawn(int control) override { return handles(control).drawn.get(); }
  void set_timer(int id, int milliseconds) override;
  void set_seen(bool seen) override {
    if (form_) form_->set_seen(seen);
  }
  void close(int result) override;

 private:
  void stop_timers();
  QWidget* find(int control) const { return form_ ? form_->control(control) : nullptr; }
  const ControlHandles& handles(int control) const;
  void add(std::function<void()> action);

  QPointer<FormWidget> form_;
  const Density& density_;
  DialogProcedure& procedure_;
  std::shared_ptr<EventQueue> queue_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
  std::map<int, QPointer<QTimer>> timers_;
  std::set<int> ticked_;  // their ticks wait to be told
  std::map<int, ControlHandles> handles_;
  bool is_closed_ = false;
  int result_ = 0;
};

}  // namespace orvello
