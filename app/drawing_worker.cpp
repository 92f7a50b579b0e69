#include "app/drawing_worker.h"

#include <utility>

#include "app/own_messages.h"

namespace orvello {
namespace {

// Showing every item as it is placed would cost more than placing it.
constexpr std::chrono::milliseconds kProgressPeriod{40};

}  // namespace

void DrawingWorker::start() {
  if (!thread_.joinable()) thread_ = std::thread([this] { run(); });
}

void DrawingWorker::stop() {
  if (!thread_.joinable()) return;
  {
    std::lock_guard lock(lock_);
    stopping_ = true;
    drop_request();
    draw_event_.notify_one();
  }
  thread_.join();
  stopping_ = false;
}

void DrawingWorker::drop_request() {
  requested_ = nullptr;
  draw_state_ = busy_ ? kDrawRequested : kDrawFinished;
}

void DrawingWorker::request(ViewDrawing drawing) {
  std::lock_guard lock(lock_);
  requested_ = std::move(drawing);
  draw_state_ = kDrawRequested;
  draw_event_.notify_one();
}

void DrawingWorker::cancel() {
  std::lock_guard lock(lock_);
  drop_request();
}

void DrawingWorker::set_surface(std::unique_ptr<Surface> surface, Size size) {
  std::shared_ptr<Surface> replaced(std::move(surface));
  {
    std::lock_guard lock(lock_);
    drop_request();
    surface_.swap(replaced);
  }
  size_ = size;
}

// Only this thread replaces the surface, so it is read here without the lock.
void DrawingWorker::copy_to_window() {
  if (surface_) window_.copy_surface(*surface_, size_);
}

bool DrawingWorker::wait_until_idle(std::chrono::milliseconds limit) {
  std::unique_lock lock(lock_);
  return idle_.wait_for(lock, limit, [this] { return !requested_ && !busy_; });
}

void DrawingWorker::rethrow_failure() {
  std::exception_ptr failure;
  {
    std::lock_guard lock(lock_);
    failure = std::exchange(failure_, nullptr);
  }
  if (failure) std::rethrow_exception(failure);
}

void DrawingWorker::run() {
  for (Work work; next(work);) {
    std::exception_ptr failure;
    try {
      draw(work);
    } catch (...) {
      failure = std::current_exception();
    }
    work = {};  // frees the snapshot before anyone is told that this is over
    end_of_drawing(std::move(failure));
  }
}

bool DrawingWorker::next(Work& work) {
  std::unique_lock lock(lock_);
  draw_event_.wait(lock, [this] { return stopping_ || requested_; });
  if (stopping_) return false;
  work = {std::exchange(requested_, nullptr), surface_};
  busy_ = true;
  draw_state_ = kDrawing;
  return true;
}

void DrawingWorker::draw(const Work& work) {
  if (!work.surface) return;
  Surface& surface = *work.surface;
  last_progress_ = std::chrono::steady_clock::now();
  if (!work.drawing(surface.canvas(), draw_state_, [this, &surface] { show_progress(surface); }))
    return;
  surface.publish();
  window_.invalidate();
}

// However it ended, the word goes to rest, unless a newer request has set it to 100.
void DrawingWorker::end_of_drawing(std::exception_ptr failure) {
  std::lock_guard lock(lock_);
  if (failure) {
    failure_ = std::move(failure);
    window_.post({kMessageDrawingFailed, 0, {}, 0});
  }
  busy_ = false;
  if (!requested_) draw_state_ = kDrawFinished;
  idle_.notify_all();
}

void DrawingWorker::show_progress(Surface& surface) {
  const auto now = std::chrono::steady_clock::now();
  if (now - last_progress_ < kProgressPeriod) return;
  last_progress_ = now;
  surface.publish();
  window_.invalidate();
}

}  // namespace orvello
