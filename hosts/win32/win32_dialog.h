// One dialog on the screen, or one page of a sheet, as its procedure knows it.
#pragma once

#include <functional>
#include <memory>
#include <set>

#include "hosts/shared/event_queue.h"
#include "hosts/win32/form_window.h"
#include "hosts/win32/win32_window.h"

namespace orvello {

// Posted by the window's loop.
std::shared_ptr<EventQueue> make_event_queue(Win32Window& window);

class Win32Dialog : public Dialog {
 public:
  // The queue is shared by the pages of a sheet. The form has been made.
  Win32Dialog(Win32Window& window, std::shared_ptr<FormWindow> form, DialogProcedure& procedure,
              std::shared_ptr<EventQueue> queue);
  ~Win32Dialog() override;

  std::function<void(int)> closed;  // none: it is modeless, and is not closed by itself
  std::function<void(const Text&)> titled;
  bool is_closed() const { return is_closed_; }
  int result() const { return result_; }
  DialogProcedure& procedure() { return procedure_; }
  FormWindow& form() { return *form_; }

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
  void set_checked(int control, bool checked) override { form_->set_checked(control, checked); }
  void enable(int control, bool enabled) override { form_->set_enabled(control, enabled); }
  void show(int control, bool shown) override { form_->set_shown(control, shown); }
  void focus(int control, Caret caret) override { form_->focus(control, caret); }
  void set_step(int step) override { form_->set_step(step); }
  Rect place(int control) const override;
  void set_place(int control, const Rect& place) override { form_->set_place(control, place); }
  ChoiceControl* choice(int control) override;
  ListControl* list(int control) override;
  DateControl* date(int control) override;
  RangeControl* range(int control) override;
  NotesControl* notes(int control) override;
  ReportList* report(int control) override;
  DrawnControl* drawn(int control) override;
  void set_timer(int id, int milliseconds) override;
  void set_seen(bool seen) override { form_->set_seen(seen); }
  void close(int result) override;

 private:
  void listen_to_form();
  void stop_timers();
  void tick(int id);
  void add(std::function<void()> action);

  Win32Window& window_;
  std::shared_ptr<FormWindow> form_;
  DialogProcedure& procedure_;
  std::shared_ptr<EventQueue> queue_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
  std::set<int> timers_;
  std::set<int> ticked_;  // their ticks wait to be told
  bool is_closed_ = false;
  int result_ = 0;
};

}  // namespace orvello
