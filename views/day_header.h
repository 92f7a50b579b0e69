// The strip above the day's list: the date between the ways to the day before and after, the day's
// number, the button for today and the colour-style button.
#pragma once

#include <vector>

#include "base/image.h"
#include "draw/screen_layout.h"
#include "settings/settings_record.h"
#include "views/turn_arrows.h"

namespace orvello {

struct DayHeaderLayout {
  Rect strip;
  // Where a tap means something else: left of `left` the date, from there to `right` today, right
  // of that the colour style. The arrows take their places off the date's.
  int left = 0;
  int right = 0;
  Rect previous, next;  // empty where the date needs their room
  Rect date;            // the text's box, shortened by the day's number where that is shown
  Rect number;          // of the day, right-aligned; empty without it
  Rect today_picture;   // the bitmap
  Rect style_button;
};

enum class DayHeaderZone { none, previous, date, next, today, style };

struct DayHeaderInput {
  Text date;
  Text day_number;  // empty: not shown
  FontSpec day_number_font;
  // Dates of the same format, one of each month, then one of each weekday: the date's size is that
  // of the longest one, so that it is the same from day to day.
  std::vector<Text> months{}, weekdays{};
  // The same with short names, for a strip on which the date would be hard to read; empty: none.
  Text short_date{};
  std::vector<Text> short_months{}, short_weekdays{};
  TurnArrows arrows{};
};

// The strip's texts for a day, as the settings have them.
DayHeaderInput day_header_input(const SettingsRecord& settings, const ScreenLayout& screen,
                                const MonthDayYear& date);

DayHeaderLayout lay_out_day_header(const ScreenLayout& screen, int width, Size today_picture,
                                   int day_number_width);
// Over the whole width, with room for the texts as they are.
DayHeaderLayout lay_out_day_header(const DayHeaderInput& input, const ScreenLayout& screen,
                                   const Image& today_picture, Canvas& measure);
DayHeaderZone hit_day_header(const DayHeaderLayout& layout, Point point);
Rect zone_place(const DayHeaderLayout& layout, DayHeaderZone zone);

// `focused` gets a frame, unless it is none.
void draw_day_header(Canvas& canvas, const DayHeaderInput& input, const DayHeaderLayout& layout,
                     const ScreenLayout& screen, const ItemColors& colors, const Image& today,
                     DayHeaderZone focused);

}  // namespace orvello
