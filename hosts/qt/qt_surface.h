// An off-screen picture: a back side for the drawing thread, a front side for painting.
#pragma once

#include <QImage>
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "draw/mirrored_canvas.h"
#include "hosts/qt/qt_canvas.h"

namespace orvello {

class QtSurface : public Surface {
 public:
  enum class Ground { white, clear };  // clear: what is not drawn shows what is painted below
  explicit QtSurface(Size size, Ground ground = Ground::white);

  Canvas& canvas() override { return mirrored_ ? static_cast<Canvas&>(*mirrored_) : canvas_; }
  void publish() override;

  bool published() const { return published_; }
  // Shows the front's top-left part at the origin; `ratio` device pixels are one of the painter's.
  void paint(QPainter& painter, Size part, double ratio);
  QImage front() const;  // a copy

 private:
  QImage front_view(Size part) const;

  Size size_;
  QImage::Format format_;
  std::vector<std::uint32_t> back_, front_;
  mutable std::mutex front_lock_;
  std::atomic<bool> published_{false};
  QtCanvas canvas_;
  std::optional<MirroredCanvas> mirrored_;  // on a right-to-left screen
};

class QtSurfaces : public Surfaces {
 public:
  std::unique_ptr<Surface> create(Size size) override { return std::make_unique<QtSurface>(size); }
};

}  // namespace orvello
