#include "hosts/win32/form_paint.h"

#include <algorithm>

#include "draw/readable.h"
#include "draw/text_direction.h"
#include "hosts/win32/painting.h"
#include "hosts/win32/pixel_shapes.h"
#include "hosts/win32/wide_text.h"

namespace orvello {
namespace {

// Chosen into a device context for a while.
class Chosen {
 public:
  Chosen(HDC dc, HGDIOBJ object) : dc_(dc), before_(SelectObject(dc, object)) {}
  ~Chosen() { SelectObject(dc_, before_); }
  Chosen(const Chosen&) = delete;
  Chosen& operator=(const Chosen&) = delete;

 private:
  HDC dc_;
  HGDIOBJ before_;
};

UINT text_flags(TextView text, const TextPaint& paint, const FormLook& look) {
  UINT flags = DT_NOPREFIX;
  flags |= paint.wraps ? DT_WORDBREAK : DT_SINGLELINE | DT_END_ELLIPSIS;
  flags |= paint.centered ? DT_CENTER : look.right_to_left() ? DT_RIGHT : DT_LEFT;
  if (reading_of(text) == Reading::right_to_left) flags |= DT_RTLREADING;
  return flags;
}

const wchar_t* letters(TextView text) { return reinterpret_cast<const wchar_t*>(text.data()); }
int length(TextView text) { return static_cast<int>(text.size()); }

}  // namespace

BufferedPaint::BufferedPaint(HWND window, HDC given) : window_(window), given_(given) {
  const HDC screen = given ? given : BeginPaint(window, &paint_);
  // A window that the platform lays out from the right would turn the bitmap, letters and all.
  SetLayout(screen, 0);
  GetClientRect(window, &room_);
  dc_ = CreateCompatibleDC(screen);
  bitmap_.reset(CreateCompatibleBitmap(screen, std::max<LONG>(1, room_.right),
                                       std::max<LONG>(1, room_.bottom)));
  before_ = SelectObject(dc_, bitmap_.get());
  SetBkMode(dc_, TRANSPARENT);
}

BufferedPaint::~BufferedPaint() {
  BitBlt(given_ ? given_ : paint_.hdc, 0, 0, room_.right, room_.bottom, dc_, 0, 0, SRCCOPY);
  SelectObject(dc_, before_);
  DeleteDC(dc_);
  if (!given_) EndPaint(window_, &paint_);
}

RECT shrunk(RECT room, int x, int y) {
  InflateRect(&room, -x, -y);
  return room;
}

RECT turned_room(RECT room, int width, bool right_to_left) {
  if (right_to_left) room = {width - room.right, room.top, width - room.left, room.bottom};
  return room;
}

void fill_room(HDC dc, const RECT& room, Color color) {
  SetDCBrushColor(dc, color_ref(color));
  FillRect(dc, &room, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void paint_round_edge(HDC dc, const RECT& room, Color edge, int width, int corner) {
  const OwnedGdi pen(CreatePen(PS_INSIDEFRAME, width, color_ref(edge)));
  const Chosen with_pen(dc, pen.get());
  const Chosen with_brush(dc, GetStockObject(NULL_BRUSH));
  RoundRect(dc, room.left, room.top, room.right, room.bottom, 2 * corner, 2 * corner);
}

void paint_round_box(HDC dc, const RECT& room, Color ground, Color edge, int width, int corner) {
  const OwnedGdi pen(CreatePen(PS_INSIDEFRAME, width, color_ref(edge)));
  const Chosen with_pen(dc, pen.get());
  SetDCBrushColor(dc, color_ref(ground));
  const Chosen with_brush(dc, GetStockObject(DC_BRUSH));
  RoundRect(dc, room.left, room.top, room.right, room.bottom, 2 * corner, 2 * corner);
}

// Smooth, which the platform's lines are not: over what is there, in a patch of its own.
void paint_strokes(HDC dc, const POINT* points, int count, Color color, int width) {
  if (count == 0) return;
  RECT around{points[0].x, points[0].y, points[0].x + 1, points[0].y + 1};
  for (int i = 1; i < count; ++i) {
    const RECT one{points[i].x, points[i].y, points[i].x + 1, points[i].y + 1};
    UnionRect(&around, &around, &one);
  }
  InflateRect(&around, width, width);
  const Size size{static_cast<int>(around.right - around.left),
                  static_cast<int>(around.bottom - around.top)};
  BITMAPINFO info{};
  info.bmiHeader = {
      sizeof(BITMAPINFOHEADER), size.width, -size.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* pixels = nullptr;
  const HDC patch = CreateCompatibleDC(dc);
  {
    const OwnedGdi bitmap(CreateDIBSection(dc, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    if (bitmap && pixels) {
      const Chosen with_bitmap(patch, bitmap.get());
      BitBlt(patch, 0, 0, size.width, size.height, dc, around.left, around.top, SRCCOPY);
      GdiFlush();
      std::vector<Point> line;
      for (int i = 0; i < count; ++i)
        line.push_back({static_cast<int>(points[i].x - around.left),
                        static_cast<int>(points[i].y - around.top)});
      fill_shapes({static_cast<std::uint32_t*>(pixels), size}, {0, 0, size.width, size.height},
                  line_shapes(line, width), color);
      BitBlt(dc, around.left, around.top, size.width, size.height, patch, 0, 0, SRCCOPY);
    }
  }
  DeleteDC(patch);
}

void paint_text(HDC dc, const RECT& room, TextView text, const TextPaint& paint,
                const FormLook& look) {
  if (text.empty() || room.right <= room.left) return;
  Text shown(text);
  if (!paint.wraps) std::replace(shown.begin(), shown.end(), u'\n', u' ');
  const Chosen with_font(dc, paint.font);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, color_ref(paint.color));
  UINT flags = text_flags(shown, paint, look);
  RECT place = room;
  if (paint.wraps) {
    RECT needed = room;
    DrawTextW(dc, letters(shown), length(shown), &needed, flags | DT_CALCRECT);
    const LONG spare = (room.bottom - room.top) - (needed.bottom - needed.top);
    place.top += std::max(0L, spare / 2);
    // What is too high ends in dots, at the end of the last line that is seen whole.
    if (spare < 0) flags |= DT_EDITCONTROL | DT_END_ELLIPSIS;
  } else {
    flags |= DT_VCENTER;
  }
  DrawTextW(dc, letters(shown), length(shown), &place, flags);
}

Size measured_text(HFONT font, TextView text) {
  const MeasuringDc measuring(font);
  SIZE size{};
  GetTextExtentPoint32W(measuring.dc(), letters(text), length(text), &size);
  return {size.cx, size.cy};
}

int wrapped_height(HFONT font, TextView text, int width) {
  const MeasuringDc measuring(font);
  RECT needed{0, 0, width, 0};
  const Text shown = text.empty() ? Text(u" ") : Text(text);
  DrawTextW(measuring.dc(), letters(shown), length(shown), &needed,
            DT_CALCRECT | DT_NOPREFIX | DT_WORDBREAK);
  return needed.bottom;
}

void paint_field_edge(HDC dc, const RECT& room, const FormLook& look, bool enabled, bool focused) {
  const LookColors& colors = look.colors();
  const int width = std::max(1, look.scaled(focused ? kFieldEdge : 1));
  const Color color = focused ? colors.accent : enabled ? colors.edge : colors.line;
  paint_round_edge(dc, room, color, width, look.scaled(2));
}

void paint_drop_arrow(HDC dc, const RECT& room, const FormLook& look, bool enabled) {
  const int half = look.scaled(4), depth = std::max(1, half / 2);
  const LONG x = (room.left + room.right) / 2, y = (room.top + room.bottom) / 2;
  const POINT points[] = {{x - half, y - depth}, {x, y + depth}, {x + half, y - depth}};
  const LookColors& colors = look.colors();
  paint_strokes(dc, points, 3, enabled ? colors.accent : colors.dim_text,
                std::max(2, look.scaled(2)));
}

void paint_picture(HDC dc, const RECT& room, const Image& picture, Color ground, bool enabled) {
  if (picture.empty()) return;
  const Image shown = is_dark(ground) ? visible_on(ground, picture) : picture;
  std::vector<std::uint32_t> pixels;
  pixels.reserve(shown.pixels.size());
  for (const Color pixel : shown.pixels) {
    Color seen = pixel == kMagenta ? ground : pixel;
    if (!enabled) seen = mixed(ground, seen, 100);
    pixels.push_back(
        static_cast<std::uint32_t>(red_of(seen) << 16 | green_of(seen) << 8 | blue_of(seen)));
  }
  const int room_width = room.right - room.left, room_height = room.bottom - room.top;
  int width = shown.width, height = shown.height;
  if (width > room_width || height > room_height) {
    const double share = std::min(1.0 * room_width / width, 1.0 * room_height / height);
    width = std::max(1, static_cast<int>(width * share));
    height = std::max(1, static_cast<int>(height * share));
    SetStretchBltMode(dc, HALFTONE);
    SetBrushOrgEx(dc, 0, 0, nullptr);
  }
  BITMAPINFO info{};
  info.bmiHeader = {
      sizeof(BITMAPINFOHEADER), shown.width, -shown.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  StretchDIBits(dc, room.left + (room_width - width) / 2, room.top + (room_height - height) / 2,
                width, height, 0, 0, shown.width, shown.height, pixels.data(), &info,
                DIB_RGB_COLORS, SRCCOPY);
}

}  // namespace orvello
