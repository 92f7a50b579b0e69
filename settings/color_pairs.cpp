#include "settings/color_pairs.h"

namespace orvello {
namespace {

using Slot = ColorSlot;

constexpr ColorPair kTexts[] = {
    {Slot::month_bar_text, Slot::month_bar_background},
    {Slot::month_header_text, Slot::month_header_background},
    {Slot::month_day_header_text, Slot::month_day_header_background},
    {Slot::month_date_text, Slot::month_date_background_1},
    {Slot::month_date_text, Slot::month_date_background_2},
    {Slot::month_date_text, Slot::month_today_background},
    {Slot::month_week_number_text, Slot::month_date_background_1},
    {Slot::month_week_number_text, Slot::month_date_background_2},
    {Slot::month_week_number_text, Slot::month_off_background},
    {Slot::month_week_number_text, Slot::month_today_background},
    {Slot::month_off_text, Slot::month_off_background},
    {Slot::month_off_text, Slot::month_today_background},
    {Slot::day_header_text, Slot::day_header_background},
    {Slot::day_all_day_text, Slot::day_row_1},
    {Slot::day_all_day_text, Slot::day_row_2},
    {Slot::day_appointment_text, Slot::day_row_1},
    {Slot::day_appointment_text, Slot::day_row_2},
    {Slot::day_location_text, Slot::day_row_1},
    {Slot::day_location_text, Slot::day_row_2},
    {Slot::day_expired_text, Slot::day_row_1},
    {Slot::day_expired_text, Slot::day_row_2},
    {Slot::year_header_text, Slot::year_header_background},
    {Slot::year_month_header_text, Slot::year_month_header_background},
    {Slot::year_day_text, Slot::year_month_background_1},
    {Slot::year_day_text, Slot::year_month_background_2},
    {Slot::year_day_text, Slot::year_today_background},
    {Slot::year_appointment_day_text, Slot::year_month_background_1},
    {Slot::year_appointment_day_text, Slot::year_month_background_2},
    {Slot::year_appointment_day_text, Slot::year_today_background},
    {Slot::popup_header_text, Slot::popup_header_background},
    {Slot::popup_text, Slot::popup_background},
    {Slot::notes_text, Slot::notes_background},
};

constexpr ColorPair kMarks[] = {
    {Slot::month_today_background, Slot::month_date_background_1},
    {Slot::month_today_background, Slot::month_date_background_2},
    {Slot::month_today_background, Slot::month_off_background},
    {Slot::month_line, Slot::month_date_background_1},
    {Slot::month_line, Slot::month_date_background_2},
    {Slot::month_line, Slot::month_off_background},
    {Slot::year_today_background, Slot::year_month_background_1},
    {Slot::year_today_background, Slot::year_month_background_2},
};

}  // namespace

std::span<const ColorPair> text_pairs() { return kTexts; }
std::span<const ColorPair> mark_pairs() { return kMarks; }

}  // namespace orvello
