#include "hosts/headless/headless_window.h"

#include "draw/mirrored.h"
#include "hosts/headless/headless_menu.h"
#include "ports/messages.h"

namespace orvello {

ScreenInfo HeadlessWindow::default_screen() {
  ScreenInfo screen;
  screen.resolution = {240, 320};
  screen.work_area = {0, 0, 240, 320};
  return screen;
}

bool HeadlessWindow::activate_other_instance(TextView, TextView) {
  other_activated_ = other_instance;
  return other_instance;
}

bool HeadlessWindow::create(TextView, TextView, int height, MessageHandler& handler) {
  if (fail_creation) return false;
  handler_ = &handler;
  place_ = {0, 0, screen_.work_area.width, height};
  active_ = true;
  send({kMessageCreate, 0, {}, 0});
  return handler_ != nullptr;
}

void HeadlessWindow::destroy() {
  if (!handler_) return;
  send({kMessageDestroy, 0, {}, 0});
  handler_ = nullptr;
  active_ = false;
}

void HeadlessWindow::post(const Message& message) {
  std::lock_guard lock(queue_lock_);
  queue_.push_back(message);
}

void HeadlessWindow::post_quit(int code) {
  quit_ = true;
  quit_code_ = code;
}

void HeadlessWindow::copy_surface(Surface& surface, Size size) {
  ++copies_;
  copied_size_ = size;
  copied_whole_ = surface.canvas().size() == size;
}

bool HeadlessWindow::send(const Message& message) {
  return handler_ && handler_->handle_message(message);
}

int HeadlessWindow::pump() {
  int delivered = 0;
  for (;; ++delivered) {
    Message message;
    {
      std::lock_guard lock(queue_lock_);
      if (queue_.empty()) return delivered;
      message = queue_.front();
      queue_.pop_front();
    }
    send(message);
  }
}

Point HeadlessWindow::turned(Point point) const {
  return is_right_to_left() ? mirrored(point, screen_.work_area.width) : point;
}

HoverLabel HeadlessWindow::turned(HoverLabel shown) const {
  if (is_right_to_left()) shown.place = mirrored(shown.place, screen_.work_area.width);
  return shown;
}

void HeadlessWindow::press(Point point) {
  pen_down_ = true;
  send({kMessageButtonDown, 0, turned(point), 0});
}

void HeadlessWindow::drag(Point to) { send({kMessageMouseMove, 1, turned(to), 0}); }

void HeadlessWindow::hover(Point to) { send({kMessageMouseMove, 0, turned(to), 0}); }

void HeadlessWindow::release(Point point) {
  pen_down_ = false;
  send({kMessageButtonUp, 0, turned(point), 0});
}

void HeadlessWindow::tap(Point point) {
  press(point);
  release(point);
}

void HeadlessWindow::key(std::uint32_t key_code, int held) {
  if (is_right_to_left()) key_code = mirrored_key(key_code);
  send({kMessageKeyDown, key_code, {}, held});
  send({kMessageKeyUp, key_code, {}, held});
}

// Sideways, notches are a person's, too.
void HeadlessWindow::wheel(Point point, int notches, bool sideways) {
  if (sideways && is_right_to_left()) notches = -notches;
  send({sideways ? kMessageMouseSideWheel : kMessageMouseWheel, 0, turned(point), notches});
}

void HeadlessWindow::press_other_button(Point point) {
  send({kMessageContextMenu, 0, turned(point), 0});
}

std::uint32_t HeadlessWindow::track_menu(const std::vector<MenuItem>& items, Point) {
  menu = items;
  pen_down_ = false;
  return chosen_of(items, menu_choice ? menu_choice(items) : 0);
}

void HeadlessWindow::command(std::uint32_t id) { send({kMessageCommand, id, {}, 0}); }

bool HeadlessWindow::fire_timer(int id) {
  if (!timers_.count(id)) return false;
  send({kMessageTimer, static_cast<std::uint32_t>(id), {}, 0});
  return true;
}

void HeadlessWindow::close() {
  if (!send({kMessageClose, 0, {}, 0})) destroy();
}

void HeadlessWindow::paint() { send({kMessagePaint, 0, {}, 0}); }

void HeadlessWindow::set_active(bool active) {
  active_ = active;
  send({kMessageActivate, active ? 1u : 0u, {}, 0});
  if (!active) send({kMessageDeactivated, 0, {}, 0});
}

void HeadlessWindow::raise_panel(int height) {
  screen_.work_area.height -= height;
  send({kMessageSettingChange, 0, {}, 0});
}

void HeadlessWindow::rotate(ScreenInfo screen) {
  screen_ = screen;
  send({kMessageSettingChange, kScreenRotated, {}, 0});
}

}  // namespace orvello
