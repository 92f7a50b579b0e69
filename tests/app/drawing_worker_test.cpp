#include "app/drawing_worker.h"

#include <gtest/gtest.h>

#include "hosts/headless/headless_surface.h"
#include "hosts/headless/headless_window.h"

namespace orvello {
namespace {

using namespace std::chrono_literals;

struct DrawingWorkerTest : testing::Test {
  DrawingWorkerTest() {
    worker.set_surface(surfaces.create({10, 10}), {10, 10});
    worker.start();
  }
  void begin(ViewDrawing drawing) {
    worker.request(std::move(drawing));
    while (worker.draw_state() != kDrawing) std::this_thread::sleep_for(1ms);
  }
  HeadlessSurfaces surfaces;
  std::atomic<int>& published = surfaces.published;
  HeadlessWindow window;
  DrawingWorker worker{window};
};

// A drawing that goes on until it is told that it is stale.
ViewDrawing endless(std::atomic<int>& given_up) {
  return [&](Canvas&, const std::atomic<int>& state, const std::function<void()>&) {
    while (state.load() != kDrawRequested) std::this_thread::sleep_for(1ms);
    ++given_up;
    return false;
  };
}

ViewDrawing noted(std::atomic<int>& last, int number) {
  return [&last, number](Canvas&, const std::atomic<int>&, const std::function<void()>&) {
    last = number;
    return true;
  };
}

TEST_F(DrawingWorkerTest, ANewRequestMakesTheDrawingUnderWayStale) {
  std::atomic<int> given_up{0}, last{0};
  begin(endless(given_up));
  worker.request(noted(last, 7));
  ASSERT_TRUE(worker.wait_until_idle(10s));
  EXPECT_EQ(given_up, 1);
  EXPECT_EQ(last, 7);
  EXPECT_EQ(published, 1);  // what was given up is never shown
  EXPECT_EQ(worker.draw_state(), kDrawFinished);
  EXPECT_GE(window.invalidations(), 1);
}

TEST_F(DrawingWorkerTest, WhatADrawingThrowsIsThrownOnceWhereItCanBeTold) {
  worker.request([](Canvas&, const std::atomic<int>&, const std::function<void()>&) -> bool {
    throw std::bad_alloc();
  });
  ASSERT_TRUE(worker.wait_until_idle(10s));
  EXPECT_EQ(published, 0);
  EXPECT_THROW(worker.rethrow_failure(), std::bad_alloc);
  worker.rethrow_failure();
  std::atomic<int> last{0};
  worker.request(noted(last, 3));
  ASSERT_TRUE(worker.wait_until_idle(10s));
  EXPECT_EQ(last, 3);
}

TEST_F(DrawingWorkerTest, StopsInTheMiddleOfADrawingAndStartsAgain) {
  std::atomic<int> given_up{0}, last{0};
  begin(endless(given_up));
  worker.stop();
  EXPECT_EQ(given_up, 1);
  EXPECT_EQ(published, 0);
  EXPECT_EQ(worker.draw_state(), kDrawFinished);
  worker.start();
  worker.start();
  worker.request(noted(last, 5));
  ASSERT_TRUE(worker.wait_until_idle(10s));
  EXPECT_EQ(last, 5);
}

TEST_F(DrawingWorkerTest, TheWordGoesToRestWhateverBecameOfADrawing) {
  std::atomic<int> given_up{0}, last{0};
  begin(endless(given_up));
  worker.cancel();
  ASSERT_TRUE(worker.wait_until_idle(10s));
  EXPECT_EQ(published, 0);
  EXPECT_EQ(worker.draw_state(), kDrawFinished);
  worker.set_surface(nullptr, {});
  worker.request(noted(last, 1));
  ASSERT_TRUE(worker.wait_until_idle(10s));
  EXPECT_EQ(last, 0);
  EXPECT_EQ(worker.draw_state(), kDrawFinished);
  worker.stop();
  worker.request(noted(last, 2));
  worker.cancel();
  EXPECT_EQ(worker.draw_state(), kDrawFinished);
}

// One that looks at the word only when it is over, and one that was asked for behind it.
TEST_F(DrawingWorkerTest, AResizeNeitherWaitsForADrawingNorShowsOneOfTheOldSize) {
  std::atomic<bool> go{false};
  std::atomic<int> last{0};
  Size drawn;
  bool was_waited_for = false;
  begin([&](Canvas& canvas, const std::atomic<int>&, const std::function<void()>&) {
    for (int i = 0; i < 5000 && !go; ++i) std::this_thread::sleep_for(1ms);
    drawn = canvas.size();
    was_waited_for = !go;
    return true;
  });
  worker.request(noted(last, 1));
  worker.set_surface(surfaces.create({20, 30}), {20, 30});
  worker.copy_to_window();
  EXPECT_TRUE(window.copied_whole());
  go = true;
  ASSERT_TRUE(worker.wait_until_idle(10s));
  EXPECT_FALSE(was_waited_for);
  EXPECT_EQ(drawn, (Size{10, 10}));
  EXPECT_EQ(last, 0);
  EXPECT_EQ(worker.draw_state(), kDrawFinished);
}

}  // namespace
}  // namespace orvello
