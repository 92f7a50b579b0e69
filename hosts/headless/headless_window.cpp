#include "hosts/headless/headless_window.h"

namespace orvello {
namespace {

// The platform's message numbers; the application has names for them, further up.
constexpr std::uint32_t kCreate = 0x0001, kDestroy = 0x0002, kActivate = 0x0006, kPaint = 0x000F,
                        kSettingChange = 0x001A, kKeyDown = 0x0100, kKeyUp = 0x0101,
                        kCommand = 0x0111, kTimer = 0x0113, kMove = 0x0200, kDown = 0x0201,
                        kUp = 0x0202, kWheel = 0x020A, kDeactivated = 0x3FF, kRotated = 0x3002;

}  // namespace

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
  send({kCreate, 0, {}, 0});
  return true;
}

void HeadlessWindow::destroy() {
  if (!handler_) return;
  send({kDestroy, 0, {}, 0});
  handler_ = nullptr;
}

void HeadlessWindow::post(const Message& message) {
  std::lock_guard lock(queue_lock_);
  queue_.push_back(message);
}

void HeadlessWindow::post_quit(int code) {
  quit_ = true;
  quit_code_ = code;
}

void HeadlessWindow::copy_surface(Surface&, Size size) {
  ++copies_;
  copied_size_ = size;
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

void HeadlessWindow::press(Point point) {
  pen_down_ = true;
  send({kDown, 0, point, 0});
}

void HeadlessWindow::drag(Point to) { send({kMove, 1, to, 0}); }

void HeadlessWindow::hover(Point to) { send({kMove, 0, to, 0}); }

void HeadlessWindow::release(Point point) {
  pen_down_ = false;
  send({kUp, 0, point, 0});
}

void HeadlessWindow::tap(Point point) {
  press(point);
  release(point);
}

void HeadlessWindow::key(std::uint32_t key_code, int held) {
  send({kKeyDown, key_code, {}, held});
  send({kKeyUp, key_code, {}, held});
}

void HeadlessWindow::wheel(Point point, int notches) { send({kWheel, 0, point, notches}); }

void HeadlessWindow::command(std::uint32_t id) { send({kCommand, id, {}, 0}); }

bool HeadlessWindow::fire_timer(int id) {
  if (!timers_.count(id)) return false;
  send({kTimer, static_cast<std::uint32_t>(id), {}, 0});
  return true;
}

void HeadlessWindow::paint() { send({kPaint, 0, {}, 0}); }

void HeadlessWindow::set_active(bool active) {
  active_ = active;
  send({kActivate, active ? 1u : 0u, {}, 0});
  if (!active) send({kDeactivated, 0, {}, 0});
}

void HeadlessWindow::rotate(ScreenInfo screen) {
  screen_ = screen;
  send({kSettingChange, kRotated, {}, 0});
}

}  // namespace orvello
