// A person in front of the dialogs that have no screen.
#pragma once

#include <memory>
#include <utility>

#include "hosts/headless/headless_dialogs.h"
#include "tests/contract/dialogs_bench.h"

namespace orvello::test {

class HeadlessBench : public DialogsBench {
 public:
  Dialogs& dialogs() override { return dialogs_; }
  void in_front(std::function<void()> person) override {
    // What the person opens while standing here is another's.
    dialogs_.person = [this, person](HeadlessDialog& dialog) {
      dialogs_.person = nullptr;
      HeadlessDialog* const below = std::exchange(top_, &dialog);
      HeadlessSheet* const sheet = std::exchange(sheet_, nullptr);
      person();
      top_ = below;
      sheet_ = sheet;
    };
    dialogs_.sheet_person = [this, person](HeadlessSheet& sheet) {
      dialogs_.person = nullptr;
      sheet_ = &sheet;
      person();
      sheet_ = nullptr;
    };
  }
  void choose_in_menu(std::uint32_t command) override {
    top().menu_choice = [command](const std::vector<MenuItem>&) { return command; };
  }
  void settle() override {
    if (top_ || sheet_ || dialogs_.modeless) top().deliver();
  }
  void wait(int timer_id) override {
    if (top_ || sheet_ || dialogs_.modeless) top().fire_timer(timer_id);
  }

  void tap(int control) override { top().press(control); }
  void tap_row(int control, int row) override { top().tap_row(control, row); }
  void choose_row(int control, int row) override { top().choose_row(control, row); }
  void type(TextView text) override { top().type(text); }
  void key(std::uint32_t key, bool control_held, bool shift_held) override {
    top().key(key, control_held, shift_held);
  }
  void tab(bool back) override { top().tab(back); }
  void pick_date(int control, const MonthDayYear& date) override {
    top().choose_date(control, date);
  }
  void slide(int control, int position) override { top().slide(control, position); }
  void pen_down(int control, Point point) override { top().pen_down(control, point); }
  void pen_move(int control, Point point) override { top().pen_move(control, point); }
  void pen_up(int control, Point point) override { top().pen_up(control, point); }
  void press_other_button(int control, Point point) override {
    top().press_other_button(control, point);
  }
  void turn_wheel(int control, Point point, int notches, bool sideways) override {
    top().turn_wheel(control, point, notches, sideways);
  }
  void draw(int notes, const std::vector<Point>& stroke) override { top().draw(notes, stroke); }
  void select_text(int notes, int start, int length) override {
    top().select_text(notes, start, length);
  }
  void press_beside() override { top().press_beside(); }
  void press_close() override { top().press_close(); }
  void show_page(int page) override { sheet_->show_page(page); }
  void press_ok() override { sheet_->press_ok(); }
  void press_cancel() override { sheet_->press_cancel(); }

  int focused() override { return top().focused; }
  bool seen(int control) override { return top().seen(control); }
  bool enabled(int control) override { return top().controls.at(control).enabled; }
  Text title() override { return sheet_ ? sheet_->title : top().title(); }
  int dropped_down() override { return top().dropped_down; }

 private:
  HeadlessDialog& top() { return sheet_ ? sheet_->shown() : top_ ? *top_ : *dialogs_.modeless; }
  HeadlessDialogs dialogs_;
  HeadlessDialog* top_ = nullptr;
  HeadlessSheet* sheet_ = nullptr;
};

}  // namespace orvello::test
