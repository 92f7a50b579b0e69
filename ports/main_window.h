// The one top-level window, the screen that it stands on, its timers and its messages. The pointer
// is told of also while it is not pressed, where a device knows.
// User-interface thread, except `invalidate` and `post`, which any thread may call.
#pragma once

#include <cstdint>
#include <vector>

#include "base/geometry.h"
#include "base/text.h"
#include "ports/accessibility.h"
#include "ports/canvas.h"
#include "ports/menu_bar.h"

namespace orvello {

// A window message, numbered as the platform numbers them (ports/messages.h names them).
struct Message {
  std::uint32_t id = 0;
  std::uint32_t wparam = 0;  // key code, command id, timer id ...
  Point point;               // pointer position in the window
  int detail = 0;            // wheel notches, up above 0; of a key: kControlHeld, kShiftHeld
};

inline constexpr int kControlHeld = 1;
inline constexpr int kShiftHeld = 2;

class MessageHandler {
 public:
  virtual ~MessageHandler() = default;
  // True when handled; else the host does what it does by default.
  virtual bool handle_message(const Message& message) = 0;
};

struct ScreenInfo {
  Size resolution;  // the whole screen, pixels
  Rect work_area;   // what a window may use
  int dpi_x = 96;
  int dpi_y = 96;
  int os_major = 0;  // the platform's version, 0.0 on a desktop
  int os_minor = 0;
  bool dark_desktop = false;  // what surrounds the window is light text on dark
  // Of the menu bar and of forms, which grow with the desktop's texts; 0: as the screen's.
  int form_dpi = 0;
};

// A small text over the window that takes no input.
struct HoverLabel {
  Rect place;  // in the window, device pixels
  Text text;   // lines end with '\n'
  FontSpec font;
  Color text_color = kBlack;
  Color background = kWhite;
};

class MainWindow {
 public:
  virtual ~MainWindow() = default;
  virtual ScreenInfo screen() const = 0;
  // A window of this class and title that another process shows already: brings it to the front.
  virtual bool activate_other_instance(TextView window_class, TextView title) = 0;

  // Creates the window and sends the create message to the handler before it returns. False: none.
  virtual bool create(TextView window_class, TextView title, int height,
                      MessageHandler& handler) = 0;
  virtual void destroy() = 0;  // sends the destroy message
  virtual void move(const Rect& place) = 0;
  virtual void show() = 0;
  virtual bool is_active() const = 0;
  virtual void post(const Message& message) = 0;
  virtual void post_quit(int code) = 0;

  virtual void invalidate() = 0;  // without erasing; several before the next paint make one paint
  virtual void copy_surface(Surface& surface, Size size) = 0;  // during the paint message only

  virtual void start_timer(int id, int milliseconds) = 0;
  virtual void stop_timer(int id) = 0;
  virtual bool pen_is_down() const = 0;
  virtual void show_wait_cursor() = 0;  // counted
  virtual void hide_wait_cursor() = 0;

  virtual void show_label(const HoverLabel& label) = 0;  // replaces the one shown
  virtual void hide_label() = 0;
  // Shows a menu at a point of the window until a command is chosen, or none: 0.
  virtual std::uint32_t track_menu(const std::vector<MenuItem>& items, Point at) = 0;
  // A text like that which stays until it is hidden, whatever else is shown, and which a screen
  // reader reads out.
  virtual void show_notice(const HoverLabel& notice) = 0;  // replaces the one shown
  virtual void hide_notice() = 0;
  // The view drawn in the window, for a screen reader; it outlives the window or is taken back
  // with null. `accessible_changed` tells it that another cell is selected, or all are new.
  virtual void set_accessible_view(AccessibleView* view) = 0;
  virtual void accessible_changed() = 0;
};

}  // namespace orvello
