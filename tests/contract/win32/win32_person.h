// A person in front of the Windows host's dialogs, who presses and types what the platform sends.
#pragma once

#include "hosts/win32/date_controls.h"
#include "hosts/win32/form_window.h"
#include "hosts/win32/win32_dialogs.h"
#include "tests/contract/dialogs_bench.h"
#include "tests/contract/win32/window_bench.h"

namespace orvello::test {

// The first form that is seen, the window itself or below it; null: none.
FormWindow* form_in(HWND window);

class Win32Person : public DialogsBench {
 public:
  explicit Win32Person(Win32WindowOptions options = small_screen(),
                       const LocaleData& locale = english_locale());
  Dialogs& dialogs() override { return dialogs_; }
  Win32Window& window() { return window_; }
  Soon& soon() { return soon_; }
  FormWindow* form();  // the shown one on what takes input; null: none

  void in_front(std::function<void()> person) override;
  void choose_in_menu(std::uint32_t command) override { choose_in_next_menu(soon_, command); }
  void settle() override;
  void wait(int timer_id) override;
  void tap(int control) override;
  void tap_row(int control, int row) override;
  void choose_row(int control, int row) override;
  void type(TextView text) override;
  void key(std::uint32_t key, bool control_held, bool shift_held) override;
  void tab(bool back) override { key(VK_TAB, false, back); }
  void pick_date(int control, const MonthDayYear& date) override;
  void slide(int control, int position) override;
  void pen_down(int control, Point point) override;
  void pen_move(int control, Point point) override { pen(WM_MOUSEMOVE, control, point); }
  void pen_up(int control, Point point) override { pen(WM_LBUTTONUP, control, point); }
  void press_other_button(int control, Point point) override;
  void turn_wheel(int control, Point point, int notches, bool sideways) override;
  void draw(int notes, const std::vector<Point>& stroke) override;
  void select_text(int notes, int start, int length) override;
  void press_beside() override;
  void press_close() override;
  void show_page(int page) override;
  void press_ok() override { press(L"OK"); }
  void press_cancel() override { press(L"Cancel"); }
  int focused() override;
  bool seen(int control) override;
  bool enabled(int control) override { return form() && form()->is_enabled(control); }
  Text title() override;
  int dropped_down() override;

  void click(POINT screen);

 private:
  HWND top();                      // what takes input: a modal cover or the frame
  FormWindow* reach(int control);  // null: it cannot be reached
  bool press(const wchar_t* title);
  HWND post_mouse(UINT id, POINT screen);  // to whom; null: nobody is there
  void mouse(UINT id, POINT screen);
  void pen(UINT id, int control, Point point);
  void pick_in(const DatedControl& dated, const MonthDayYear& date);
  void in_front_of(HWND below, std::function<void()> person, int tries);

  Recorder told_;
  Win32Window window_;
  Win32Dialogs dialogs_;
  Soon soon_;
};

}  // namespace orvello::test
