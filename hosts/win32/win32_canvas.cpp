#include "hosts/win32/win32_canvas.h"

#include <algorithm>
#include <cstdlib>

#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

constexpr std::uint32_t kWhitePixels = 0x00FFFFFF;

BITMAPINFO bitmap_info(Size size) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size.width;
  info.bmiHeader.biHeight = -size.height;  // from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  return info;
}

bool runs_straight(const std::vector<Point>& points) {
  for (std::size_t i = 1; i < points.size(); ++i)
    if (points[i].x != points[i - 1].x && points[i].y != points[i - 1].y) return false;
  return true;
}

// Each text in the direction of its own letters.
bool reads_from_right(const Text& text) {
  for (const char16_t unit : text) {
    const wchar_t letter = static_cast<wchar_t>(unit);
    WORD kind = 0;
    if (!GetStringTypeW(CT_CTYPE2, &letter, 1, &kind)) continue;
    if (kind == C2_RIGHTTOLEFT) return true;
    if (kind == C2_LEFTTORIGHT) return false;
  }
  return false;
}

RECT native(const Rect& rect) { return {rect.x, rect.y, rect.right(), rect.bottom()}; }

}  // namespace

Win32Canvas::Win32Canvas(std::shared_ptr<Win32Fonts> fonts, Size size) : fonts_(std::move(fonts)) {
  block_.size = {std::max(0, size.width), std::max(0, size.height)};
  clip_ = {0, 0, block_.size.width, block_.size.height};
  const auto count =
      static_cast<std::size_t>(block_.size.width) * static_cast<std::size_t>(block_.size.height);
  dc_ = CreateCompatibleDC(nullptr);
  if (dc_ && count > 0) {
    const BITMAPINFO info = bitmap_info(block_.size);
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap_) block_.pixels = static_cast<std::uint32_t*>(bits);
  }
  if (bitmap_) {
    bitmap_before_ = SelectObject(dc_, bitmap_);
    std::fill(block_.pixels, block_.pixels + count, kWhitePixels);
  } else {
    spare_.assign(count, kWhitePixels);
    block_.pixels = spare_.data();
  }
  if (!dc_) return;
  font_before_ = GetCurrentObject(dc_, OBJ_FONT);
  SetBkMode(dc_, TRANSPARENT);
}

Win32Canvas::~Win32Canvas() {
  if (dc_ && font_before_) SelectObject(dc_, font_before_);
  if (dc_ && bitmap_before_) SelectObject(dc_, bitmap_before_);
  if (dc_) DeleteDC(dc_);
  if (bitmap_) DeleteObject(bitmap_);
}

PixelBlock& Win32Canvas::block() {
  if (unwritten_) GdiFlush();
  unwritten_ = false;
  return block_;
}

const std::uint32_t* Win32Canvas::pixels() { return block().pixels; }

void Win32Canvas::set_clip(std::optional<Rect> clip) {
  clip_ = {0, 0, block_.size.width, block_.size.height};
  if (clip) clip_ = intersection(clip_, *clip);
}

void Win32Canvas::fill_rect(const Rect& rect, Color color) {
  const Rect part = intersection(rect, clip_);
  const PixelBlock& to = block();
  for (int y = part.y; y < part.bottom(); ++y) {
    std::uint32_t* row = to.pixels + static_cast<std::size_t>(y) * to.size.width;
    std::fill(row + part.x, row + part.right(), pixel_of(color));
  }
}

void Win32Canvas::frame_rect(const Rect& rect, Color color, int width) {
  if (rect.empty() || width <= 0) return;
  const int across = std::min(width, (rect.width + 1) / 2);
  const int down = std::min(width, (rect.height + 1) / 2);
  fill_rect({rect.x, rect.y, rect.width, down}, color);
  fill_rect({rect.x, rect.bottom() - down, rect.width, down}, color);
  fill_rect({rect.x, rect.y, across, rect.height}, color);
  fill_rect({rect.right() - across, rect.y, across, rect.height}, color);
}

// Straight lines are blocks of pixels with both ends drawn; slanted ones are smoothed.
void Win32Canvas::polyline(const std::vector<Point>& points, Color color, int width) {
  if (points.size() < 2 || width <= 0) return;
  if (!runs_straight(points)) return fill_shapes(block(), clip_, line_shapes(points, width), color);
  for (std::size_t i = 1; i < points.size(); ++i) {
    const Point a = points[i - 1], b = points[i];
    const int x = std::min(a.x, b.x) - width / 2, y = std::min(a.y, b.y) - width / 2;
    fill_rect({x, y, std::abs(a.x - b.x) + width, std::abs(a.y - b.y) + width}, color);
  }
}

void Win32Canvas::fill_polygon(const std::vector<Point>& points, Color color) {
  if (points.size() < 3) return;
  Shape shape;
  for (const Point& point : points)
    shape.push_back({static_cast<double>(point.x), static_cast<double>(point.y)});
  fill_shapes(block(), clip_, {shape}, color);
}

void Win32Canvas::take_font(const FontSpec& spec) {
  if (!dc_ || (has_font_ && font_ == spec)) return;
  SelectObject(dc_, fonts_->font(spec));
  metrics_ = {};
  GetTextMetricsW(dc_, &metrics_);
  font_ = spec;
  has_font_ = true;
}

void Win32Canvas::draw_text(TextView text, const Rect& box, const TextStyle& style) {
  const Rect part = intersection(box, clip_);
  if (part.empty() || text.empty() || !bitmap_) return;
  take_font(style.font);
  SetTextColor(dc_, static_cast<COLORREF>(style.color));
  if (style.word_break)
    draw_lines(Text(text), part, box, style);
  else
    draw_line(Text(text), part, box, style);
  unwritten_ = true;
}

void Win32Canvas::draw_line(Text text, const Rect& part, const Rect& box, const TextStyle& style) {
  for (char16_t& unit : text)
    if (unit == u'\n' || unit == u'\r' || unit == u'\t') unit = u' ';
  const auto length = static_cast<int>(text.size());
  SIZE size{};
  GetTextExtentPoint32W(dc_, wide(text), length, &size);
  int x = box.x;
  if (style.align != Align::left) {
    const int room = box.width - static_cast<int>(size.cx);
    x += style.align == Align::right ? room : room / 2;
  }
  int y = box.y;
  if (style.vertical_center) y += (box.height - static_cast<int>(metrics_.tmHeight)) / 2;
  const RECT clip = native(part);
  const UINT direction = reads_from_right(text) ? UINT{ETO_RTLREADING} : 0;
  ExtTextOutW(dc_, x, y, ETO_CLIPPED | direction, &clip, wide(text), static_cast<UINT>(length),
              nullptr);
}

void Win32Canvas::draw_lines(const Text& text, const Rect& part, const Rect& box,
                             const TextStyle& style) {
  const auto length = static_cast<int>(text.size());
  UINT flags = DT_WORDBREAK | DT_NOPREFIX;
  if (style.align == Align::center) flags |= DT_CENTER;
  if (style.align == Align::right) flags |= DT_RIGHT;
  if (reads_from_right(text)) flags |= DT_RTLREADING;
  RECT room = native(box);
  if (style.vertical_center) {
    RECT needed{0, 0, box.width, 0};
    DrawTextW(dc_, wide(text), length, &needed, flags | DT_CALCRECT);
    room.top += std::max(0, (box.height - static_cast<int>(needed.bottom)) / 2);
  }
  const int saved = SaveDC(dc_);
  IntersectClipRect(dc_, part.x, part.y, part.right(), part.bottom());
  DrawTextW(dc_, wide(text), length, &room, flags);
  RestoreDC(dc_, saved);
}

Size Win32Canvas::measure(TextView text, const FontSpec& spec) {
  take_font(spec);
  SIZE size{};
  if (!text.empty() && dc_) {
    const Text kept(text);
    GetTextExtentPoint32W(dc_, wide(kept), static_cast<int>(kept.size()), &size);
  }
  return {static_cast<int>(size.cx), static_cast<int>(metrics_.tmHeight)};
}

void Win32Canvas::draw_image(const Image& image, const Rect& source, Point at) {
  const Rect inside = intersection(source, {0, 0, image.width, image.height});
  const Rect target = intersection(
      clip_, {at.x + inside.x - source.x, at.y + inside.y - source.y, inside.width, inside.height});
  const PixelBlock& to = block();
  for (int y = target.y; y < target.bottom(); ++y) {
    std::uint32_t* row = to.pixels + static_cast<std::size_t>(y) * to.size.width;
    for (int x = target.x; x < target.right(); ++x) {
      const Color color = image.at(x - at.x + source.x, y - at.y + source.y);
      if (color != kMagenta) row[x] = pixel_of(color);
    }
  }
}

}  // namespace orvello
