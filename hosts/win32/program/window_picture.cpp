#include "hosts/win32/program/window_picture.h"

#include <vector>

namespace orvello {
namespace {

// A bitmap to draw on, and the context for that.
class PictureTarget {
 public:
  explicit PictureTarget(SIZE size) : context_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = -size.cy;  // from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (!context_ || !bitmap_) return;
    pixels_ = static_cast<const std::uint32_t*>(bits);
    before_ = SelectObject(context_, bitmap_);
  }
  ~PictureTarget() {
    if (before_) SelectObject(context_, before_);
    if (bitmap_) DeleteObject(bitmap_);
    if (context_) DeleteDC(context_);
  }
  PictureTarget(const PictureTarget&) = delete;
  PictureTarget& operator=(const PictureTarget&) = delete;
  HDC context() const { return context_; }
  const std::uint32_t* pixels() const { return pixels_; }

 private:
  HDC context_;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ before_ = nullptr;
  const std::uint32_t* pixels_ = nullptr;
};

// The window and what stands in it, the lowest first. `origin` is the picture's on the screen.
void draw_window(HWND window, HDC context, POINT origin) {
  if ((GetWindowLongPtrW(window, GWL_STYLE) & WS_VISIBLE) == 0) return;
  RECT client{};
  GetClientRect(window, &client);
  POINT at{0, 0};
  ClientToScreen(window, &at);
  RECT outline{};
  GetWindowRect(window, &outline);
  const int state = SaveDC(context);
  IntersectClipRect(context, outline.left - origin.x, outline.top - origin.y,
                    outline.right - origin.x, outline.bottom - origin.y);
  const int clipped = SaveDC(context);
  SetViewportOrgEx(context, at.x - origin.x, at.y - origin.y, nullptr);
  IntersectClipRect(context, 0, 0, client.right, client.bottom);
  const auto target = reinterpret_cast<WPARAM>(context);
  SendMessageW(window, WM_ERASEBKGND, target, 0);
  SendMessageW(window, WM_PRINTCLIENT, target, PRF_CLIENT | PRF_ERASEBKGND);
  RestoreDC(context, clipped);
  std::vector<HWND> children;
  for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    children.push_back(child);
  for (auto child = children.rbegin(); child != children.rend(); ++child)
    draw_window(*child, context, origin);
  RestoreDC(context, state);
}

}  // namespace

Image window_picture(HWND window) {
  RECT client{};
  GetClientRect(window, &client);
  POINT origin{0, 0};
  ClientToScreen(window, &origin);
  if (client.right <= 0 || client.bottom <= 0) return {};
  const PictureTarget target({client.right, client.bottom});
  if (!target.pixels()) return {};
  // Nobody need have seen the window: it and its parts draw themselves all the same.
  draw_window(window, target.context(), origin);
  GdiFlush();
  Image image{client.right, client.bottom, {}};
  const auto count =
      static_cast<std::size_t>(client.right) * static_cast<std::size_t>(client.bottom);
  image.pixels.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t bgr = target.pixels()[i];
    image.pixels.push_back(rgb(static_cast<int>(bgr >> 16 & 0xFF),
                               static_cast<int>(bgr >> 8 & 0xFF), static_cast<int>(bgr & 0xFF)));
  }
  return image;
}

}  // namespace orvello
