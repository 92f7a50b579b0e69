#include "hosts/qt/qt_surface.h"

#include "hosts/qt/direction.h"

#include <algorithm>

namespace orvello {
namespace {

constexpr std::uint32_t kWhitePixel = 0xFFFFFFFF, kClearPixel = 0;

Size sensible(Size size) { return {std::max(0, size.width), std::max(0, size.height)}; }
std::size_t pixel_count(Size size) {
  return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

}  // namespace

QtSurface::QtSurface(Size size, Ground ground)
    : size_(sensible(size)),
      format_(ground == Ground::clear ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32),
      back_(pixel_count(size_), ground == Ground::clear ? kClearPixel : kWhitePixel),
      front_(back_),
      canvas_(back_.data(), size_, format_) {
  if (is_right_to_left()) mirrored_.emplace(canvas_);
}

void QtSurface::publish() {
  const std::lock_guard lock(front_lock_);
  std::copy(back_.begin(), back_.end(), front_.begin());
  published_ = true;
}

QImage QtSurface::front_view(Size part) const {
  return {reinterpret_cast<const uchar*>(front_.data()), std::min(part.width, size_.width),
          std::min(part.height, size_.height), size_.width * 4, format_};
}

void QtSurface::paint(QPainter& painter, Size part, double ratio) {
  const std::lock_guard lock(front_lock_);
  const QImage view = front_view(part);
  if (view.isNull()) return;
  painter.drawImage(QRectF(0, 0, view.width() / ratio, view.height() / ratio), view,
                    QRectF(0, 0, view.width(), view.height()));
}

QImage QtSurface::front() const {
  const std::lock_guard lock(front_lock_);
  return front_view(size_).copy();
}

}  // namespace orvello
