#include "hosts/win32/win32_surface.h"

#include <algorithm>

namespace orvello {

Win32Surface::Win32Surface(std::shared_ptr<Win32Fonts> fonts, Size size, bool right_to_left)
    : size_{std::max(0, size.width), std::max(0, size.height)},
      canvas_(std::move(fonts), size_),
      front_(static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(size_.height),
             pixel_of(kWhite)) {
  if (right_to_left) mirrored_.emplace(canvas_);
}

void Win32Surface::publish() {
  const std::uint32_t* drawn = canvas_.pixels();
  const std::lock_guard lock(front_lock_);
  if (!front_.empty()) std::copy(drawn, drawn + front_.size(), front_.begin());
  published_ = true;
}

void Win32Surface::paint(HDC target, Size part, Point at) const {
  part = {std::min(part.width, size_.width), std::min(part.height, size_.height)};
  if (part.width <= 0 || part.height <= 0) return;
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size_.width;
  info.bmiHeader.biHeight = -part.height;  // the upper rows, from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  const std::lock_guard lock(front_lock_);
  SetDIBitsToDevice(target, at.x, at.y, static_cast<DWORD>(part.width),
                    static_cast<DWORD>(part.height), 0, 0, 0, static_cast<UINT>(part.height),
                    front_.data(), &info, DIB_RGB_COLORS);
}

std::vector<Color> Win32Surface::front() const {
  const std::lock_guard lock(front_lock_);
  std::vector<Color> colors;
  for (const std::uint32_t pixel : front_)
    colors.push_back(
        rgb(static_cast<int>(pixel >> 16), static_cast<int>(pixel >> 8), static_cast<int>(pixel)));
  return colors;
}

}  // namespace orvello
