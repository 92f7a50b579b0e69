// The program's pictures, compiled in. Magenta stands for "transparent" in each of them.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "base/image.h"
#include "resources/ids.h"

namespace orvello {

// The program's icon, for windows and launchers.
inline constexpr int kBitmapProgramLarge = 1;  // 48 x 48
inline constexpr int kBitmapProgramSmall = 2;  // 16 x 16

// Strips of square icons. A low-resolution display has fewer of them; those it has show the same
// subjects in the same order.
inline constexpr int kBitmapIconsLow = 117;
inline constexpr int kBitmapIconsHigh = 171;

inline constexpr int kBitmapNotesLow = 107;
inline constexpr int kBitmapNotesHigh = 157;
inline constexpr int kBitmapReminderLow = 131;
inline constexpr int kBitmapReminderHigh = 158;

// The shading of the Month view in small: rows in turn, or weekends, where weeks start on Monday or
// on Sunday.
inline constexpr int kBitmapShadedRowsLow = 112;
inline constexpr int kBitmapShadedMondayLow = 113;
inline constexpr int kBitmapShadedSundayLow = 114;
inline constexpr int kBitmapShadedRowsHigh = 168;
inline constexpr int kBitmapShadedMondayHigh = 169;
inline constexpr int kBitmapShadedSundayHigh = 170;

// Arrows to the previous and to the next year.
inline constexpr int kBitmapPreviousLow = 152;
inline constexpr int kBitmapNextLow = 153;
inline constexpr int kBitmapPreviousHigh = 155;
inline constexpr int kBitmapNextHigh = 156;

// The tools of the notes pane: NotesToolPicture.
inline constexpr int kBitmapNotesToolsLow = 1601;
inline constexpr int kBitmapNotesToolsHigh = 1602;

// Decodes the picture at each call: load it once and keep it. Empty for an unknown id.
Image load_bitmap(int resource_id);

// Every id that load_bitmap() knows, ascending.
std::span<const int> bitmap_ids();

// What each icon of the high-resolution strip shows, such as "birthday", by position.
std::span<const std::string_view> icon_names();

}  // namespace orvello
