// How the controls of forms are drawn: flat, quiet, one accent. What is drawn goes to the window at
// once, from a bitmap, so that nothing flickers.
#pragma once

#include <windows.h>

#include "base/image.h"
#include "base/text.h"
#include "hosts/win32/form_look.h"

namespace orvello {

// Of a window: between BeginPaint and EndPaint, or into a context that WM_PRINTCLIENT gives.
class BufferedPaint {
 public:
  explicit BufferedPaint(HWND window, HDC given = nullptr);
  ~BufferedPaint();
  BufferedPaint(const BufferedPaint&) = delete;
  BufferedPaint& operator=(const BufferedPaint&) = delete;

  HDC dc() const { return dc_; }
  RECT room() const { return room_; }  // of the client area

 private:
  HWND window_;
  HDC given_;
  PAINTSTRUCT paint_{};
  RECT room_{};
  HDC dc_ = nullptr;
  OwnedGdi bitmap_;
  HGDIOBJ before_ = nullptr;
};

inline RECT to_rect(const Rect& place) { return {place.x, place.y, place.right(), place.bottom()}; }
inline Rect from_rect(const RECT& edges) {
  return {edges.left, edges.top, edges.right - edges.left, edges.bottom - edges.top};
}
RECT shrunk(RECT room, int x, int y);
// Where lines begin on the other side, what stands in a window so wide.
RECT turned_room(RECT room, int width, bool right_to_left);

void fill_room(HDC dc, const RECT& room, Color color);
// A box with round corners and an edge so wide, which lies inside of it.
void paint_round_box(HDC dc, const RECT& room, Color ground, Color edge, int width, int corner);
void paint_round_edge(HDC dc, const RECT& room, Color edge, int width, int corner);
void paint_strokes(HDC dc, const POINT* points, int count, Color color, int width);

struct TextPaint {
  HFONT font = nullptr;
  Color color = kBlack;
  bool centered = false;
  bool wraps = false;  // between words; else one line, with dots where it does not fit
};
// In the middle of the room's height, in the direction of its own letters.
void paint_text(HDC dc, const RECT& room, TextView text, const TextPaint& paint,
                const FormLook& look);
Size measured_text(HFONT font, TextView text);
int wrapped_height(HFONT font, TextView text, int width);

// The edge of what is filled in: accented, and thicker, with the focus.
void paint_field_edge(HDC dc, const RECT& room, const FormLook& look, bool enabled, bool focused);
inline constexpr int kFieldEdge = 2;  // design units that the edge takes at most
// The arrow of what drops something down, in the middle of a room.
void paint_drop_arrow(HDC dc, const RECT& room, const FormLook& look, bool enabled);

// In the middle, pixel for pixel, smaller where the room is; magenta is left out, and dark parts
// are lighter on a dark ground.
void paint_picture(HDC dc, const RECT& room, const Image& picture, Color ground, bool enabled);

}  // namespace orvello
