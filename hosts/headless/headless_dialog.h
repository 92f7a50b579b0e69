// A dialog without a screen: what the program does to it is there to look at, and a person's acts
// are functions. Events wait in a queue, and are told when the procedure has returned from the one
// before.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "hosts/headless/headless_controls.h"
#include "ports/dialog.h"

namespace orvello {

class HeadlessDialog : public Dialog {
 public:
  enum class Role { modeless, modal, page };
  HeadlessDialog(const DialogTemplate& dialog, DialogProcedure& procedure, Role role);
  HeadlessDialog(const HeadlessDialog&) = delete;
  HeadlessDialog& operator=(const HeadlessDialog&) = delete;

  Text text(int control) const override;
  void set_text(int control, TextView text) override;
  bool checked(int control) const override;
  void set_checked(int control, bool checked) override;
  void enable(int control, bool enabled) override;
  void show(int control, bool shown) override;
  void focus(int control, Caret caret = Caret::unchanged) override;
  void set_step(int step) override;
  Rect place(int control) const override;
  void set_place(int control, const Rect& place) override;
  ChoiceControl* choice(int control) override;
  ListControl* list(int control) override;
  DateControl* date(int control) override;
  RangeControl* range(int control) override;
  NotesControl* notes(int control) override;
  ReportList* report(int control) override;
  DrawnControl* drawn(int control) override;
  void set_timer(int id, int milliseconds) override;
  void set_seen(bool seen) override { is_seen_ = seen; }
  void close(int result) override;

  // What a person does; it does nothing to what cannot be reached.
  void press(int control);                // a tap in its middle
  void type(TextView text);               // where the focus is, at the caret
  void type(int control, TextView text);  // in place of all that stands there
  void tap_row(int control, int row);     // of a list; of a report where it stands
  void choose_row(int control, int row);  // of a drop list or combo
  void choose_date(int control, const MonthDayYear& date);
  void slide(int control, int position);
  void select_text(int notes, int start, int length);
  void draw(int control, const std::vector<Point>& stroke);
  // Times are those of the events, in milliseconds.
  void pen_down(int control, Point point, bool second = false, std::uint64_t time = 0);
  void pen_move(int control, Point point, std::uint64_t time = 0);
  void pen_up(int control, Point point, std::uint64_t time = 0);
  void tap(int control, Point point);
  void read_out_tap(int control, Point point);  // a screen reader's
  void press_other_button(int control, Point point);
  void turn_wheel(int control, Point point, int notches, bool sideways = false);
  void key(std::uint32_t key, bool control_held = false, bool shift_held = false);
  void key(int control, std::uint32_t key, bool control_held = false, bool shift_held = false);
  void tab(bool back = false);
  bool fire_timer(int id);  // false: not started
  void press_beside();      // of a popup
  void press_close();       // the close button, or Escape

  // What a person sees.
  bool seen(int control) const { return is_seen_ && stands(control); }
  bool reachable(int control) const;
  const Text& title() const { return title_; }
  HeadlessReport& rows(int control) { return *controls.at(control).report; }
  Size size_of(int control) const;

  // What a person picks from a menu; without it nothing.
  std::function<std::uint32_t(const std::vector<MenuItem>&)> menu_choice;
  std::vector<MenuItem> menu;  // the last one opened

  DialogTemplate dialog;
  bool right_to_left = false;  // points are a person's all the same
  std::map<int, HeadlessControl> controls;
  std::map<int, int> timers;
  int focused = 0;
  int dropped_down = 0;  // the control whose list or calendar is down
  int step = 0;
  bool closed = false;
  int result = 0;

  // What whoever opens it does.
  std::function<bool()> on_top;         // no modal one stands above it
  std::function<void()> press_through;  // closes a popup above that lets presses through
  bool is_on_top() const { return !on_top || on_top(); }
  std::function<void(int)> closing;  // close() was called
  std::function<void()> cancel;      // Escape on a page
  std::function<void()> accept;      // Return on a page without a default button of its own
  DialogProcedure& procedure() { return procedure_; }
  void start();  // init
  void come();   // it is seen from now on: the focus is given
  void go();     // a page that another one is shown in place of
  void tell(const DialogEvent& event) { queue_.push_back(event); }
  void tell(DialogEvent::Kind kind, int control = 0) { tell({kind, control, nullptr, {}}); }
  void deliver();

 private:
  void make(const ControlTemplate& made);
  bool stands(int control) const;  // where it would be seen
  const HeadlessControl* find(int control) const;
  HeadlessControl* find(int control);
  std::uint32_t track(const std::vector<MenuItem>& items);
  void check(HeadlessControl& control, bool checked);
  void move_focus(int to);
  void drop_unseen_focus();
  bool takes_focus(const HeadlessControl& control) const;
  bool can_focus(const HeadlessControl& control) const;
  int first_focus() const;
  bool is_tab_stop(const HeadlessControl& control) const;
  // The control, with the focus on it, or null when a person cannot reach it.
  HeadlessControl* reach(int control);
  void changed(HeadlessControl& control);
  void taken(HeadlessControl& control);
  void move_row(HeadlessControl& control, int by);
  void choose_radio(HeadlessControl& control, int by);
  bool use_key(HeadlessControl& control, std::uint32_t key);
  void press_default();
  void send_pointer(DialogEvent::Kind kind, int control, Point point, std::uint64_t time = 0);
  DialogEvent pointer_event(DialogEvent::Kind kind, int control, Point point) const;
  HeadlessControl* reach_drawn(int control);  // below a popup that lets presses through, too

  DialogProcedure& procedure_;
  Role role_;
  Text title_;
  std::deque<DialogEvent> queue_;
  bool delivering_ = false;
  bool here_ = false;
  bool is_seen_ = true;
  int pen_on_ = 0;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace orvello
