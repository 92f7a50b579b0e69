// A person with a mouse and a keyboard in front of real widgets: acts go to the window, which finds
// out by itself whom they reach.
#pragma once

#include <QAbstractItemView>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QTabBar>
#include <QTimer>

#include "hosts/qt/choice_box.h"
#include "hosts/qt/date_picker.h"
#include "hosts/qt/form_widget.h"
#include "hosts/qt/month_calendar.h"
#include "hosts/qt/notes_pane.h"
#include "hosts/qt/qt_dialogs.h"
#include "hosts/qt/qt_report.h"
#include "hosts/qt/qt_text.h"
#include "tests/contract/dialogs_bench.h"
#include "tests/qt/test_window.h"

namespace orvello::test {

// As soon as a menu stands; 0: it is left by Escape.
void choose_in_next_menu(QObject& context, std::uint32_t command);

class QtPerson : public DialogsBench {
 public:
  explicit QtPerson(Size size = {240, 320}, int dpi = 96, const DesktopLook& look = {})
      : window_(size, dpi, look) {
    window_.show();
  }
  Dialogs& dialogs() override { return dialogs_; }
  QWidget* shell() { return window_.window->shell(); }
  TestWindow& window() { return window_; }

  void in_front(std::function<void()> person) override;
  void choose_in_menu(std::uint32_t command) override;
  void settle() override;
  void wait(int timer_id) override;
  void tap(int control) override;
  void tap_row(int control, int row) override;
  void choose_row(int control, int row) override;
  void type(TextView text) override;
  void key(std::uint32_t key, bool control_held, bool shift_held) override;
  void tab(bool back) override;
  void pick_date(int control, const MonthDayYear& date) override;
  void slide(int control, int position) override;
  void pen_down(int control, Point point) override {
    pen(QEvent::MouseButtonPress, control, point);
  }
  void pen_move(int control, Point point) override { pen(QEvent::MouseMove, control, point); }
  void pen_up(int control, Point point) override {
    pen(QEvent::MouseButtonRelease, control, point);
  }
  void press_other_button(int control, Point point) override;
  void turn_wheel(int control, Point point, int notches, bool sideways) override;
  void draw(int notes, const std::vector<Point>& stroke) override;
  void select_text(int notes, int start, int length) override;
  void press_beside() override { click(*shell(), {2, 2}); }
  void press_close() override;
  void show_page(int page) override;
  void press_ok() override { press("ok"); }
  void press_cancel() override { press("cancel"); }
  int focused() override;
  bool seen(int control) override;
  bool enabled(int control) override;
  Text title() override;
  int dropped_down() override;

  QWidget* find(int control);  // null: not to be seen
  void click(QWidget& widget, QPoint at);

 private:
  QWidget* top();               // what takes input: a modal layer or the content
  FormWidget* form();           // the shown one on it
  QWidget* reach(int control);  // scrolled to; null: cannot be reached
  void press(const char* name);
  void mouse(QEvent::Type type, QWidget& widget, QPoint at);
  void pen(QEvent::Type type, int control, Point point);
  void pick_in(MonthCalendar& calendar, const MonthDayYear& date);

  TestWindow window_;
  QtDialogs dialogs_{*window_.window};
  QObject alive_;
};

}  // namespace orvello::test
