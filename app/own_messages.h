// The messages that the program sends itself, and its timers.
#pragma once

#include <cstdint>

#include "ports/messages.h"

namespace orvello {

// Posted after a reconnect. The last two refresh as well.
inline constexpr std::uint32_t kMessageReconnect = 0x403;
inline constexpr std::uint32_t kMessageSnapshot = 0x3FC;  // a drawing was requested
inline constexpr std::uint32_t kMessageFree = 0x3FB;      // a call that waits may run
inline constexpr std::uint32_t kMessageDrawingFailed = 0x3FA;
inline constexpr std::uint32_t kMessageRefresh401 = 0x401;
inline constexpr std::uint32_t kMessageRefresh3FD = 0x3FD;

inline constexpr int kTimerMenu = 2;   // a press in the day's list became a hold
inline constexpr int kTimerHold = 3;   // a press in the month grid became a hold
inline constexpr int kTimerNotes = 4;  // no second tap followed the first
inline constexpr int kTimerDayChange = 5;
inline constexpr int kTimerReadAgain = 6;  // the calendar could not be read
inline constexpr int kTimerEdge = 7;       // what is carried stays at an edge of the month
inline constexpr int kMenuMilliseconds = 300;
inline constexpr int kHoldMilliseconds = 200;
inline constexpr int kNotesMilliseconds = 170;  // most second taps have come by then
inline constexpr int kEdgeMilliseconds = 700;
inline constexpr int kDayChangeMilliseconds = 60000;
inline constexpr int kReadAgainMilliseconds = 2000;

}  // namespace orvello
