// The top-level window. The window is the device's screen: its size is the resolution that the
// program sees, and resizing it is rotating the screen.
#pragma once

#include <QObject>
#include <QPointer>
#include <atomic>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/linux/single_instance.h"
#include "hosts/qt/desktop_look.h"
#include "hosts/qt/qt_shell.h"
#include "hosts/shared/window_host.h"
#include "ports/main_window.h"

class QSocketNotifier;

namespace orvello {

struct QtWindowOptions {
  std::string data_folder;
  std::string place_file;  // remembers the window's place; empty: nothing does
  std::optional<Size> screen;
  int dpi = 0;
  std::vector<std::string> files;
  bool new_appointment = false;
  std::optional<DesktopLook> look;  // nothing: as the desktop around it, which is followed
};

class QtMainWindow : public MainWindow {
 public:
  explicit QtMainWindow(QtWindowOptions options);
  ~QtMainWindow() override;

  ScreenInfo screen() const override;
  bool activate_other_instance(TextView window_class, TextView title) override;
  bool create(TextView window_class, TextView title, int height, MessageHandler& handler) override;
  void destroy() override;
  void move(const Rect& place) override;
  void show() override;
  // A desktop's window is active as long as it can be seen: nothing else takes its menu bar.
  bool is_active() const override;
  void post(const Message& message) override;
  void post_quit(int code) override;
  void invalidate() override;
  void copy_surface(Surface& surface, Size size) override;
  void start_timer(int id, int milliseconds) override;
  void stop_timer(int id) override;
  bool pen_is_down() const override;
  void show_wait_cursor() override;
  void hide_wait_cursor() override;
  void show_label(const HoverLabel& label) override;
  void hide_label() override;
  std::uint32_t track_menu(const std::vector<MenuItem>& items, Point at) override;
  void show_notice(const HoverLabel& notice) override;
  void hide_notice() override;
  void set_accessible_view(AccessibleView* view) override;
  void accessible_changed() override;

  // For the other ports of this host.
  const Density& density() const { return density_; }  // of the views, and what belongs to them
  // Of menus, forms and boxes. What was made with one keeps its lengths; colours change.
  const Density& form_density() const { return form_densities_.back(); }
  void take_look(const DesktopLook& look);
  Shell* shell() { return shell_; }
  void let_pointer_go();
  void note_first_paint();
  int run();
  // Whether the other instance that was found has the files.
  bool call_answered() const { return call_answered_; }

  std::function<void(std::vector<std::string>)> on_files;
  std::function<void()> on_first_paint;
  std::function<void()> on_look;  // the desktop looks otherwise: for what has a density of its own

 private:
  class Receiver;
  bool send(const Message& message);
  void close_wanted();
  void resized();
  void take_calls();
  void come_forward();
  void remember_place();
  void set_least_size();
  void fit_frame();
  Rect first_place() const;

  QtWindowOptions options_;
  double fitting_scale(int width) const;
  bool take_scale();
  void take_colors();
  void follow_desktop();
  void ask_desktop();

  Density density_;
  std::deque<Density> form_densities_;  // the last one is in use, earlier ones by what stands
  DesktopSettings desktop_settings_;
  DesktopLook look_;
  Rect place_;  // logical pixels, on the desktop
  ShellEvents events_;
  std::unique_ptr<Receiver> receiver_;
  std::unique_ptr<SingleInstance> instance_;
  std::unique_ptr<QSocketNotifier> calls_;
  Shell* shell_ = nullptr;
  std::vector<QPointer<QObject>> left_shells_;  // destroyed, until their events have returned
  MessageHandler* handler_ = nullptr;
  std::map<int, QTimer*> timers_;  // the receiver's
  Size reported_;
  int wait_cursors_ = 0;
  bool was_shown_ = false;
  bool painted_ = false;
  bool call_answered_ = true;
  std::optional<int> quit_code_;
};

}  // namespace orvello
