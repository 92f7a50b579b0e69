// An off-screen picture: a bitmap for the drawing thread, and what painting copies of it.
#pragma once

#include <windows.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "draw/mirrored_canvas.h"
#include "hosts/win32/win32_canvas.h"

namespace orvello {

class Win32Surface : public Surface {
 public:
  Win32Surface(std::shared_ptr<Win32Fonts> fonts, Size size, bool right_to_left = false);

  Canvas& canvas() override { return mirrored_ ? static_cast<Canvas&>(*mirrored_) : canvas_; }
  void publish() override;

  bool published() const { return published_; }
  // Copies the front's top-left part to a place of a window or bitmap.
  void paint(HDC target, Size part, Point at = {}) const;
  std::vector<Color> front() const;  // a copy, row by row

 private:
  Size size_;
  Win32Canvas canvas_;
  std::optional<MirroredCanvas> mirrored_;  // on a right-to-left screen
  mutable std::mutex front_lock_;
  std::vector<std::uint32_t> front_;  // plain memory: the worker may draw while this is copied
  std::atomic<bool> published_{false};
};

class Win32Surfaces : public Surfaces {
 public:
  Win32Surfaces(std::shared_ptr<Win32Fonts> fonts, bool right_to_left)
      : fonts_(std::move(fonts)), right_to_left_(right_to_left) {}
  std::unique_ptr<Surface> create(Size size) override {
    return std::make_unique<Win32Surface>(fonts_, size, right_to_left_);
  }

 private:
  std::shared_ptr<Win32Fonts> fonts_;
  bool right_to_left_;
};

}  // namespace orvello
