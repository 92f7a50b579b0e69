#include "app/drawing_worker.h"

#include <utility>

#include "app/own_messages.h"

namespace orvello {
namespace {

// Showing every item as it is placed would cost more than placing it.
constexpr std::chrono::milliseconds kProgressPeriod{40};

}  // namespace

void DrawingWorker::start() {
  thread_ = std::thread([this] { run(); });
}

void DrawingWorker::stop() {
  if (!thread_.joinable()) return;
  {
    std::lock_guard lock(request_lock_);
    stopping_ = true;
    requested_ = nullptr;
    draw_state_ = kDrawRequested;
    draw_event_.notify_one();
  }
  thread_.join();
}

void DrawingWorker::request(ViewDrawing drawing) {
  std::lock_guard lock(request_lock_);
  requested_ = std::move(drawing);
  draw_state_ = kDrawRequested;
  draw_event_.notify_one();
}

void DrawingWorker::cancel() {
  std::lock_guard lock(request_lock_);
  requested_ = nullptr;
  if (draw_state_ == kDrawing) draw_state_ = kDrawRequested;
}

void DrawingWorker::set_surface(std::unique_ptr<Surface> surface) {
  {
    std::lock_guard lock(request_lock_);
    if (draw_state_ == kDrawing) draw_state_ = kDrawRequested;  // it draws at the wrong size
  }
  std::lock_guard lock(draw_lock_);
  surface_ = std::move(surface);
}

void DrawingWorker::copy_to_window(Size size) {
  // Only this thread replaces the surface, so it may be read here without the draw lock, which the
  // worker holds for as long as it draws.
  if (surface_) window_.copy_surface(*surface_, size);
}

bool DrawingWorker::wait_until_idle(std::chrono::milliseconds limit) {
  std::unique_lock lock(request_lock_);
  return idle_.wait_for(lock, limit, [this] { return !requested_ && !busy_; });
}

void DrawingWorker::rethrow_failure() {
  std::exception_ptr failure;
  {
    std::lock_guard lock(request_lock_);
    failure = std::exchange(failure_, nullptr);
  }
  if (failure) std::rethrow_exception(failure);
}

void DrawingWorker::run() {
  for (;;) {
    ViewDrawing drawing;
    {
      std::unique_lock lock(request_lock_);
      draw_event_.wait(lock, [this] { return stopping_ || requested_; });
      if (stopping_) return;
      drawing = std::move(requested_);
      requested_ = nullptr;
      busy_ = true;
      draw_state_ = kDrawing;
    }
    std::exception_ptr failure;
    try {
      draw(drawing);
    } catch (...) {
      failure = std::current_exception();
    }
    drawing = nullptr;  // frees the snapshot before anyone is told that this is over
    std::lock_guard lock(request_lock_);
    if (failure) {
      failure_ = failure;
      window_.post({kMessageDrawingFailed, 0, {}, 0});
    }
    busy_ = false;
    idle_.notify_all();
  }
}

void DrawingWorker::draw(const ViewDrawing& drawing) {
  std::lock_guard lock(draw_lock_);
  if (!surface_) return;
  last_progress_ = std::chrono::steady_clock::now();
  if (!drawing(surface_->canvas(), draw_state_, [this] { show_progress(); })) return;
  surface_->publish();
  window_.invalidate();
  int expected = kDrawing;  // a newer request leaves its 100 in place
  draw_state_.compare_exchange_strong(expected, kDrawFinished);
}

void DrawingWorker::show_progress() {
  const auto now = std::chrono::steady_clock::now();
  if (now - last_progress_ < kProgressPeriod) return;
  last_progress_ = now;
  surface_->publish();
  window_.invalidate();
}

}  // namespace orvello
