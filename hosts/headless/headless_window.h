// A window without a screen: messages wait in a queue until a test pumps them, timers fire when
// told, and what the program did is there to look at.
#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>

#include "ports/locale.h"
#include "ports/main_window.h"

namespace orvello {

class HeadlessWindow : public MainWindow {
 public:
  explicit HeadlessWindow(ScreenInfo screen = default_screen()) : screen_(screen) {}
  static ScreenInfo default_screen();  // 240x320, 96 dpi, all of it a work area

  // MainWindow
  ScreenInfo screen() const override { return screen_; }
  bool activate_other_instance(TextView window_class, TextView title) override;
  bool create(TextView window_class, TextView title, int height, MessageHandler& handler) override;
  void destroy() override;
  void move(const Rect& place) override { place_ = place; }
  void show() override { shown_ = true; }
  bool is_active() const override { return active_; }
  void post(const Message& message) override;
  void post_quit(int code) override;
  void invalidate() override { ++invalidations_; }
  void copy_surface(Surface& surface, Size size) override;
  void start_timer(int id, int milliseconds) override { timers_[id] = milliseconds; }
  void stop_timer(int id) override { timers_.erase(id); }
  bool pen_is_down() const override { return pen_down_; }
  void show_wait_cursor() override { ++wait_cursors_; }
  void hide_wait_cursor() override { --wait_cursors_; }
  void show_label(const HoverLabel& shown) override { label = turned(shown); }
  void hide_label() override { label.reset(); }
  std::uint32_t track_menu(const std::vector<MenuItem>& items, Point at) override;
  void show_notice(const HoverLabel& shown) override { notice = turned(shown); }
  void hide_notice() override { notice.reset(); }
  void set_accessible_view(AccessibleView* view) override { accessible_view = view; }
  void accessible_changed() override { ++accessible_changes; }

  // The driver: what a person and a platform do.
  bool send(const Message& message);  // at once, as a platform's SendMessage
  int pump();                         // delivers posted messages; how many there were
  void tap(Point point);
  void press(Point point);
  void drag(Point to);
  void release(Point point);
  void hover(Point to);  // without a press
  void key(std::uint32_t key_code, int held = 0);
  void wheel(Point point, int notches, bool sideways = false);
  void press_other_button(Point point);
  void command(std::uint32_t id);
  void close();             // as the window's own button does
  bool fire_timer(int id);  // false: not started
  void paint();             // what an invalidated window gets
  void set_active(bool active);
  void rotate(ScreenInfo screen);  // a resized or rotated screen
  void raise_panel(int height);    // an input panel takes this much of the work area

  // Points are a person's, on a right-to-left screen as elsewhere, and so is what is shown.
  const Locale* locale = nullptr;

  // Faults and other processes.
  bool fail_creation = false;
  bool other_instance = false;

  // What a person picks from a menu; without it nothing.
  std::function<std::uint32_t(const std::vector<MenuItem>&)> menu_choice;
  std::vector<MenuItem> menu;  // the last one opened

  std::optional<HoverLabel> label, notice;
  AccessibleView* accessible_view = nullptr;
  int accessible_changes = 0;

  bool exists() const { return handler_ != nullptr; }
  bool shown() const { return shown_; }
  Rect place() const { return place_; }
  bool quit() const { return quit_; }
  int quit_code() const { return quit_code_; }
  int invalidations() const { return invalidations_; }
  int wait_cursors() const { return wait_cursors_; }
  int copies() const { return copies_; }
  Size copied_size() const { return copied_size_; }
  bool copied_whole() const { return copied_whole_; }  // the size was the surface's own
  bool other_was_activated() const { return other_activated_; }
  const std::map<int, int>& timers() const { return timers_; }

 private:
  bool is_right_to_left() const { return locale && locale->data().right_to_left; }
  Point turned(Point point) const;
  HoverLabel turned(HoverLabel label) const;

  ScreenInfo screen_;
  MessageHandler* handler_ = nullptr;
  std::mutex queue_lock_;
  std::deque<Message> queue_;
  std::map<int, int> timers_;
  std::atomic<int> invalidations_{0};
  Rect place_;
  Size copied_size_;
  bool copied_whole_ = false;
  int wait_cursors_ = 0;
  int copies_ = 0;
  int quit_code_ = 0;
  bool active_ = false;
  bool shown_ = false;
  bool pen_down_ = false;
  bool quit_ = false;
  bool other_activated_ = false;
};

}  // namespace orvello
