#include "hosts/win32/ink_overlay.h"

#include "draw/readable.h"
#include "hosts/shared/ink_raster.h"
#include "hosts/win32/form_look.h"

namespace orvello {
namespace {

// What a window shows in a rectangle, to be drawn on and put back.
class ScreenPart {
 public:
  ScreenPart(HDC screen, const Rect& place) : screen_(screen), place_(place) {
    BITMAPINFO info{};
    info.bmiHeader = {
        sizeof(BITMAPINFOHEADER), place.width, -place.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* pixels = nullptr;
    bitmap_.reset(CreateDIBSection(screen, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    pixels_ = static_cast<std::uint32_t*>(pixels);
    dc_ = CreateCompatibleDC(screen);
    before_ = SelectObject(dc_, bitmap_.get());
    if (!pixels_) return;
    BitBlt(dc_, 0, 0, place.width, place.height, screen, place.x, place.y, SRCCOPY);
    GdiFlush();
  }
  ~ScreenPart() {
    SelectObject(dc_, before_);
    DeleteDC(dc_);
  }
  ScreenPart(const ScreenPart&) = delete;
  ScreenPart& operator=(const ScreenPart&) = delete;

  std::uint32_t* pixels() const { return pixels_; }  // null: there was no memory
  void put_back() const {
    BitBlt(screen_, place_.x, place_.y, place_.width, place_.height, dc_, 0, 0, SRCCOPY);
  }

 private:
  HDC screen_;
  Rect place_;
  OwnedGdi bitmap_;
  std::uint32_t* pixels_ = nullptr;
  HDC dc_ = nullptr;
  HGDIOBJ before_ = nullptr;
};

}  // namespace

void draw_over(HWND window, HRGN region, const InkOverlay& ink) {
  RECT edges{};
  if (GetRgnBox(region, &edges) == NULLREGION) return;
  const Rect place{static_cast<int>(edges.left), static_cast<int>(edges.top),
                   static_cast<int>(edges.right - edges.left),
                   static_cast<int>(edges.bottom - edges.top)};
  const PageBox seen{(place.x - ink.origin.x) / ink.unit - 1,
                     (place.y - ink.origin.y) / ink.unit - 1,
                     (place.right() - ink.origin.x) / ink.unit + 1,
                     (place.bottom() - ink.origin.y) / ink.unit + 1};
  std::vector<const NotesStroke*> strokes;
  for (const NotesStroke& stroke : ink.strokes)
    if (bounds_of(stroke).meets(seen)) strokes.push_back(&stroke);
  if (ink.drawing) strokes.push_back(ink.drawing);
  if (strokes.empty() || place.empty()) return;
  HideCaret(window);  // its pixels would be taken for the page's
  const HDC screen = GetDC(window);
  SelectClipRgn(screen, region);
  {
    const ScreenPart part(screen, place);
    const InkTarget target{
        part.pixels(), {place.width, place.height}, {0, 0, place.width, place.height}};
    const PagePoint origin{ink.origin.x - place.x, ink.origin.y - place.y};
    for (const NotesStroke* stroke : strokes)
      if (target.pixels)
        draw_stroke(target, *stroke, origin, ink.unit, legible_on(ink.ground, stroke->color));
    if (target.pixels) part.put_back();
  }
  ReleaseDC(window, screen);
  ShowCaret(window);
}

}  // namespace orvello
