// The 38 colours a person can choose, by purpose. Labels repeat between groups, so the slot number
// and not the label names a colour.
#pragma once

#include <array>
#include <cstddef>

#include "base/color.h"

namespace orvello {

inline constexpr int kColorSlots = 38;

enum class ColorSlot {
  month_bar_background = 0,
  month_bar_text,
  month_header_background,
  month_header_text,
  month_day_header_background,
  month_day_header_text,
  month_date_text,
  month_date_background_1,
  month_date_background_2,
  month_today_background,
  month_week_number_text,
  month_line,
  month_off_background,
  month_off_text,
  day_header_background = 14,
  day_header_text,
  day_all_day_text,
  day_appointment_text,
  day_row_1,
  day_row_2,
  day_line,
  day_location_text,
  day_expired_text,
  year_header_background = 23,
  year_header_text,
  year_month_header_background,
  year_month_header_text,
  year_month_background_1,
  year_month_background_2,
  year_day_text,
  year_appointment_day_text,
  year_today_background,
  popup_header_background = 32,
  popup_header_text,
  popup_background,
  popup_text,
  notes_background = 36,
  notes_text,
};

using ItemColors = std::array<Color, kColorSlots>;

}  // namespace orvello
