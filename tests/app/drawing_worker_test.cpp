#include "app/drawing_worker.h"

#include <gtest/gtest.h>

#include "hosts/headless/headless_surface.h"
#include "hosts/headless/headless_window.h"

namespace orvello {
namespace {

using namespace std::chrono_literals;

struct DrawingWorkerTest : testing::Test {
  DrawingWorkerTest() {
    worker.set_surface(surfaces.create({10, 10}));
    worker.start();
  }
  HeadlessSurfaces surfaces;
  std::atomic<int>& published = surfaces.published;
  HeadlessWindow window;
  DrawingWorker worker{window};
};

// A drawing that goes on until it is told that it is stale.
ViewDrawing endless(std::atomic<bool>& began, std::atomic<int>& given_up) {
  return [&](Canvas&, const std::atomic<int>& state, const std::function<void()>&) {
    began = true;
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
  std::atomic<bool> began{false};
  std::atomic<int> given_up{0}, last{0};
  worker.request(endless(began, given_up));
  while (!began) std::this_thread::sleep_for(1ms);
  EXPECT_EQ(worker.draw_state(), kDrawing);
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

TEST_F(DrawingWorkerTest, ManyRequestsEndWithTheNewestDrawing) {
  std::atomic<int> last{0};
  for (int i = 1; i <= 1000; ++i) worker.request(noted(last, i));
  ASSERT_TRUE(worker.wait_until_idle(10s));
  EXPECT_EQ(last, 1000);
  EXPECT_LE(published, 1000);
}

TEST_F(DrawingWorkerTest, StoppingAndResizingDoNotWaitForADrawingToEnd) {
  std::atomic<bool> began{false};
  std::atomic<int> given_up{0};
  worker.request(endless(began, given_up));
  while (!began) std::this_thread::sleep_for(1ms);
  worker.set_surface(surfaces.create({10, 10}));
  ASSERT_TRUE(worker.wait_until_idle(10s));
  began = false;
  worker.request(endless(began, given_up));
  while (!began) std::this_thread::sleep_for(1ms);
  worker.stop();
  EXPECT_EQ(given_up, 2);
  EXPECT_EQ(published, 0);
}

TEST_F(DrawingWorkerTest, ACancelledDrawingIsNotShown) {
  std::atomic<bool> began{false};
  std::atomic<int> given_up{0};
  worker.request(endless(began, given_up));
  while (!began) std::this_thread::sleep_for(1ms);
  worker.cancel();
  ASSERT_TRUE(worker.wait_until_idle(10s));
  EXPECT_EQ(published, 0);
}

}  // namespace
}  // namespace orvello
