// Pens that say how hard they are pressed, where the system knows such: its entry points are looked
// up by name while the program runs. Elsewhere a pen is a mouse.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

namespace orvello {

// The platform's messages of pointers; the first half of `wparam` is the pointer's number.
inline constexpr UINT kPointerMoved = 0x0245, kPointerDown = 0x0246, kPointerUp = 0x0247,
                      kPointerLost = 0x024C;

struct PenPoint {
  POINT screen{};
  double pressure = 1;  // 0 to 1; 1 where the pen does not know
  bool erases = false;  // its other end is down
};

// What one of these messages says of a pen: all the points since the one before, in the order in
// which they were. None: that pointer is no pen.
using PenReader = std::function<std::vector<PenPoint>(UINT32 pointer)>;
PenReader system_pen_reader();  // empty where nobody knows

// What a pen's own gestures would ask for, and the answer by which none keeps a press back until it
// is told from one: no hold, rings or flicks.
inline constexpr UINT kPenGestures = 0x02CC;
inline constexpr LRESULT kNoPenGestures = 0x0001 | 0x0008 | 0x0010 | 0x10000;
// One finger is the pointer: what it draws is for the program to read.
void take_no_gestures(HWND window);

}  // namespace orvello
