// Small help with device contexts.
#pragma once

#include <windows.h>

#include "base/color.h"
#include "base/geometry.h"

namespace orvello {

inline RECT native_rect(const Rect& rect) { return {rect.x, rect.y, rect.right(), rect.bottom()}; }
inline Rect from_native(const RECT& rect) {
  return {static_cast<int>(rect.left), static_cast<int>(rect.top),
          static_cast<int>(rect.right - rect.left), static_cast<int>(rect.bottom - rect.top)};
}
inline Rect client_rect(HWND window) {
  RECT rect{};
  GetClientRect(window, &rect);
  return from_native(rect);
}
// The point of a pointer's message.
inline Point pointer_of(LPARAM lparam) {
  return {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
}

// Without a brush that would have to be made.
inline void fill_native(HDC dc, const Rect& rect, Color color) {
  const RECT place = native_rect(rect);
  const COLORREF before = SetBkColor(dc, static_cast<COLORREF>(color));
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &place, nullptr, 0, nullptr);
  SetBkColor(dc, before);
}

// What texts are measured in; the screen's own context is dearer to get.
class MeasuringDc {
 public:
  explicit MeasuringDc(HFONT font)
      : dc_(CreateCompatibleDC(nullptr)), before_(SelectObject(dc_, font)) {}
  ~MeasuringDc() {
    SelectObject(dc_, before_);
    DeleteDC(dc_);
  }
  MeasuringDc(const MeasuringDc&) = delete;
  MeasuringDc& operator=(const MeasuringDc&) = delete;
  HDC dc() const { return dc_; }

 private:
  HDC dc_;
  HGDIOBJ before_;
};

// Painting in answer to WM_PAINT.
class PaintTurn {
 public:
  explicit PaintTurn(HWND window) : window_(window), dc_(BeginPaint(window, &paint_)) {}
  ~PaintTurn() { EndPaint(window_, &paint_); }
  PaintTurn(const PaintTurn&) = delete;
  PaintTurn& operator=(const PaintTurn&) = delete;
  HDC dc() const { return dc_; }

 private:
  HWND window_;
  PAINTSTRUCT paint_{};
  HDC dc_;
};

}  // namespace orvello
