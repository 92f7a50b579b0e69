// The top-level window. Its client area is the device's screen: its size is the resolution that the
// program sees, and resizing it is rotating the screen. In it stand, as children: the view, the
// menu bar at the bottom edge, above the view the modeless form, and above all what is modal.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "hosts/win32/message_loop.h"
#include "hosts/win32/modal_covers.h"
#include "hosts/win32/win32_density.h"
#include "hosts/win32/win32_fonts.h"
#include "ports/main_window.h"

namespace orvello {

class FrameWindow;
class HoverWindow;
class OtherInstance;
class ViewWindow;
class WindowPost;

// What another launch hands over to this one.
struct InstanceCall {
  std::vector<Text> files;  // absolute paths
  bool new_appointment = false;
};

struct Win32WindowOptions {
  Text identity;  // of the calendar: windows with the same one are one program's; empty: alone
  InstanceCall call;
  std::optional<Size> screen;  // the client area, pixels; else it may be resized
  int dpi = 0;                 // instead of the monitor's
  bool right_to_left = false;
  bool fixed_look = false;  // light and of the usual size, whatever the desktop has
  // The window's place on the desktop, kept from start to start; without them it is forgotten.
  std::function<std::optional<Rect>()> load_place;
  std::function<void(const Rect&)> save_place;
};

// A modeless form: a child of the frame that fills the area above the menu bar.
struct FormSlot {
  HWND window = nullptr;
  std::function<void(const Rect&)> place;  // where it stands in the frame; the look may be new
  // The Tab key comes into it, at its first or its last control; false: none takes the keyboard.
  std::function<bool(bool backwards)> take_tab;
};

class Win32Window : public MainWindow {
 public:
  explicit Win32Window(Win32WindowOptions options);
  ~Win32Window() override;

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
  MessageLoop& loop() { return loop_; }
  ModalCovers& covers() { return covers_; }
  const std::shared_ptr<Win32Fonts>& fonts() const { return fonts_; }
  bool right_to_left() const { return options_.right_to_left; }
  HWND frame() const;       // the parent of all forms; null: none was created
  HWND view() const;        // a child of it
  Rect whole_area() const;  // of the frame's client area, for what is modal
  Rect content_area()
      const;  // above the menu bar, for modeless forms; where the port's points begin
  const Win32Density& density() const { return density_; }     // of the views
  const Win32Density& form_density() const { return forms_; }  // of menus, forms and boxes
  // Does something later, from the loop; not after this window's end.
  void later(std::function<void()> action);
  void add_form(FormSlot form);  // places it at once
  void drop_form(HWND window);
  // The Tab key leaves a modeless form: on to the menu bar, or round. False: nowhere to go.
  bool tab_out(HWND form, bool backwards);
  // The menu bar's window, a child of the frame; null: none.
  void set_bar(HWND bar, int height);
  // The system or its colours, texts and density have changed: asked by the menu bar.
  std::function<void()> on_look;
  bool let_pointer_go();  // whether it was down
  int run() { return loop_.run(); }
  bool call_answered() const { return call_answered_; }

  // Another launch asked while this one runs; the window has come forward.
  std::function<void(InstanceCall)> on_call;
  std::function<void(std::vector<Text>)> on_files_dropped;
  std::function<void()> on_first_paint;

 private:
  friend class FrameWindow;
  friend class ViewWindow;
  bool send(const Message& message);
  void close_wanted();
  void resized();
  void lay_out();
  void take_look();
  Rect first_place() const;
  void come_forward();

  Win32WindowOptions options_;
  MessageLoop loop_;
  ModalCovers covers_;
  std::shared_ptr<Win32Fonts> fonts_;
  Win32Density density_, forms_;
  std::unique_ptr<WindowPost> posted_;
  std::unique_ptr<FrameWindow> frame_;
  std::unique_ptr<ViewWindow> view_;
  std::unique_ptr<HoverWindow> label_, notice_;
  std::unique_ptr<OtherInstance> instance_;
  MessageHandler* handler_ = nullptr;
  std::vector<FormSlot> forms_standing_;
  HWND bar_ = nullptr;
  int bar_height_ = 0;
  Rect content_;
  Size reported_;
  int wait_cursors_ = 0;
  bool painted_ = false;
  bool call_answered_ = true;
};

}  // namespace orvello
