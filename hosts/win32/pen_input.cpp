#include "hosts/win32/pen_input.h"

#include <algorithm>

namespace orvello {
namespace {

constexpr UINT32 kPressureKnown = 1, kInverted = 2, kEraserDown = 4;
constexpr double kFullPressure = 1024;

// The platform's record of a pen, which headers for older systems lack.
struct PenRecord {
  DWORD type;
  UINT32 pointer, frame, flags;
  HANDLE device;
  HWND target;
  POINT pixel, himetric, raw_pixel, raw_himetric;
  DWORD time;
  UINT32 history;
  INT32 input;
  DWORD keys;
  UINT64 moment;
  INT32 button;
  UINT32 pen_flags, known, pressure, rotation;
  INT32 tilt_x, tilt_y;
};

using AskPen = BOOL(WINAPI*)(UINT32 pointer, PenRecord* record);
using AskPenHistory = BOOL(WINAPI*)(UINT32 pointer, UINT32* count, PenRecord* records);

template <typename Call>
Call user_call(const char* name) {
  const HMODULE module = GetModuleHandleW(L"user32.dll");
  return module ? reinterpret_cast<Call>(reinterpret_cast<void*>(GetProcAddress(module, name)))
                : nullptr;
}

PenPoint point_of(const PenRecord& record) {
  PenPoint point;
  point.screen = record.pixel;
  if ((record.known & kPressureKnown) != 0) point.pressure = record.pressure / kFullPressure;
  point.erases = (record.pen_flags & (kInverted | kEraserDown)) != 0;
  return point;
}

}  // namespace

PenReader system_pen_reader() {
  const auto ask = user_call<AskPen>("GetPointerPenInfo");
  const auto ask_history = user_call<AskPenHistory>("GetPointerPenInfoHistory");
  if (!ask) return {};
  return [ask, ask_history](UINT32 pointer) {
    std::vector<PenRecord> records(1);
    if (!ask(pointer, records.data())) return std::vector<PenPoint>();
    UINT32 count = records[0].history;
    if (ask_history && count > 1) {
      std::vector<PenRecord> all(count);
      if (ask_history(pointer, &count, all.data()) && count > 0) {
        all.resize(std::min<std::size_t>(count, all.size()));
        records = std::move(all);
      }
    }
    std::vector<PenPoint> points;
    for (auto record = records.rbegin(); record != records.rend(); ++record)  // the newest is first
      points.push_back(point_of(*record));
    return points;
  };
}

void take_no_gestures(HWND window) {
  GESTURECONFIG none{};
  none.dwBlock = GC_ALLGESTURES;
  SetGestureConfig(window, 0, 1, &none, sizeof none);
}

}  // namespace orvello
