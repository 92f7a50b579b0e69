// The top-level window. Its client area is the device's screen: its size is the resolution that the
// program sees, and resizing it is rotating the screen. In it stand, as children: the view, the
// menu bar at the bottom edge, above the view the modeless form, and above all what is modal.
#pragma once

#include <windows.h>
// After it.
#include <shellapi.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "hosts/win32/com_apartment.h"
#include "hosts/win32/handheld.h"
#include "hosts/win32/message_loop.h"
#include "hosts/win32/modal_covers.h"
#include "hosts/win32/native_window.h"
#include "hosts/win32/other_instance.h"
#include "hosts/win32/system_look.h"
#include "hosts/win32/view_accessible.h"
#include "hosts/win32/win32_density.h"
#include "hosts/win32/win32_fonts.h"
#include "ports/main_window.h"

namespace orvello {

class FrameWindow;
class HoverWindow;
class ViewWindow;
class WindowPost;

struct Win32WindowOptions {
  Text identity;  // of the calendar: windows with the same one are one program's; empty: alone
  InstanceCall call;
  std::optional<Size> screen;  // the client area, pixels; else it may be resized
  int dpi = 0;                 // instead of the monitor's
  bool right_to_left = false;
  bool fixed_look = false;  // light and of the usual size, whatever the desktop has
  Handheld handheld;        // what the system has of one
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

// The menu bar.
struct BarSlot {
  HWND window = nullptr;  // a child of the frame, or of the bar that a handheld's shell has made
  int height = 0;
  std::function<bool(bool backwards)> take_tab;  // as a form's
  std::function<void(int)> press;                // by a soft key, from 0
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
  const Handheld& handheld() const { return options_.handheld; }
  bool right_to_left() const { return options_.right_to_left; }
  HWND frame() const;  // the parent of all forms; null: none was created
  HWND view() const;   // a child of it
  HWND label_window() const, notice_window() const;  // in front of the view
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
  void set_bar(BarSlot bar);  // without a window: none
  // The desktop's colours or texts, or the density, are others: for the menu bar.
  std::function<void()> on_look;
  bool let_pointer_go();         // whether it was down
  bool view_is_covered() const;  // by a form, or something modal
  int run() { return loop_.run(); }
  bool call_answered() const { return call_answered_; }

  // Something that a person waits for has been painted: a view, a modeless form.
  void note_first_paint();

  // Another launch asked while this one runs; the window has come forward.
  std::function<void(InstanceCall)> on_call;
  std::function<void(std::vector<Text>)> on_files_dropped;
  std::function<void()> on_first_paint;

 private:
  friend class FrameWindow;
  friend class ViewWindow;
  bool send(const Message& message);
  void listen();
  bool make_windows(TextView window_class, TextView title);
  bool take_input(MSG& message);
  // What the frame tells.
  void close_wanted();
  void resized();
  void changed_size();
  void changed_density(int dpi, const RECT& suggested);
  void changed_clock(bool set);  // by somebody, or another zone; else it has slept
  // First, while everybody is asked, and last.
  void session_ending();
  void session_ended();
  void activated(WPARAM wparam, LPARAM lparam);
  void setting_changed(WPARAM wparam, LPARAM lparam);
  void take_focus();
  void take_bar_by_key();
  void dropped(HDROP drop);
  bool sets_cursor() const;

  void lay_out();
  void read_look();
  bool take_scale();
  double fitting_scale(int width) const;
  void show_text(std::unique_ptr<HoverWindow>& window, const HoverLabel& label);
  void remember_place();
  void come_forward();

  ComApartment com_;  // goes last
  Win32WindowOptions options_;
  MessageLoop loop_;
  ModalCovers covers_;
  std::shared_ptr<Win32Fonts> fonts_ = std::make_shared<Win32Fonts>();
  SystemLook look_;
  Win32Density density_, forms_;
  std::unique_ptr<WindowPost> posted_;
  std::unique_ptr<OtherInstance> instance_;
  std::unique_ptr<FrameWindow> frame_;
  std::unique_ptr<ViewWindow> view_;
  std::unique_ptr<HoverWindow> label_, notice_;
  std::vector<std::unique_ptr<NativeWindow>>
      left_;  // destroyed, until their messages have returned
  MessageHandler* handler_ = nullptr;
  ViewAccessible accessible_{*this};
  std::vector<FormSlot> slots_;
  BarSlot bar_;
  HWND last_focus_ = nullptr;  // while another program's window is active
  Rect content_;
  Rect first_place_;  // of the client area
  Size reported_;
  int reported_dpi_ = 0;
  int wait_cursors_ = 0;
  bool painted_ = false;
  bool call_answered_ = true;
};

}  // namespace orvello
