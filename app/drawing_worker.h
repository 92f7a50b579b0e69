// The drawing worker: one thread that draws the Month and Year views into the off-screen surface.
//
// The user-interface thread hands it a drawing made of values (a snapshot) and goes on. The draw
// state word says where things stand: 100 requested, 101 drawing, 102 finished, which is also where
// it rests when nothing is wanted. Several requests before the worker wakes make one drawing, the
// newest; a drawing that a newer request has made stale sees 100 and gives up.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

#include "ports/canvas.h"
#include "ports/main_window.h"
#include "views/draw_control.h"

namespace orvello {

class DrawingWorker {
 public:
  explicit DrawingWorker(MainWindow& window) : window_(window) {}
  ~DrawingWorker() { stop(); }
  DrawingWorker(const DrawingWorker&) = delete;
  DrawingWorker& operator=(const DrawingWorker&) = delete;

  void start();  // also after a stop; nothing while it runs
  void stop();   // gives up the current drawing and waits for the thread

  // User-interface thread; none of these waits for a drawing.
  void request(ViewDrawing drawing);
  void cancel();  // nothing is wanted any more: the Day view covers the surface
  // A surface of this size, or null, in the place of the one before. What was wanted for that one
  // is given up: it was laid out for another size.
  void set_surface(std::unique_ptr<Surface> surface, Size size);
  void copy_to_window();
  int draw_state() const { return draw_state_.load(); }
  // Throws again, here, what ended a drawing: no memory left, mostly.
  void rethrow_failure();
  // Waits until no drawing is requested or under way; false after the time given.
  bool wait_until_idle(std::chrono::milliseconds limit);

 private:
  struct Work {
    ViewDrawing drawing;
    std::shared_ptr<Surface> surface;  // kept until the drawing has seen that it is stale
  };
  void run();
  bool next(Work& work);  // waits; false when the thread is to end
  void draw(const Work& work);
  void show_progress(Surface& surface);
  void end_of_drawing(std::exception_ptr failure);
  void drop_request();  // with the lock held

  MainWindow& window_;
  std::thread thread_;

  std::mutex lock_;  // guards what follows: the draw event and what it announces
  std::condition_variable draw_event_;
  std::condition_variable idle_;
  std::atomic<int> draw_state_{kDrawFinished};  // written with the lock held, read without it
  ViewDrawing requested_;
  std::shared_ptr<Surface> surface_;  // replaced by the user-interface thread alone
  bool busy_ = false;
  bool stopping_ = false;
  std::exception_ptr failure_;

  Size size_;                                            // of the surface; user-interface thread
  std::chrono::steady_clock::time_point last_progress_;  // drawing thread
};

}  // namespace orvello
