#include "views/row_colors.h"

#include <cstdlib>

#include "draw/readable.h"

namespace orvello {
namespace {

constexpr double kLineContrast = 1.4;
// An ended row's text is paler than others and can still be read.
constexpr double kEndedContrast = 3, kPaler = 1.5;
constexpr int kOtherHue = 80;
constexpr int kEndedShare = 150;  // of 256 parts, how far its category's colour fades

bool told_apart(Color a, Color b) {
  return contrast(a, b) >= kPaler || std::abs(red_of(a) - red_of(b)) >= kOtherHue ||
         std::abs(green_of(a) - green_of(b)) >= kOtherHue ||
         std::abs(blue_of(a) - blue_of(b)) >= kOtherHue;
}

}  // namespace

RowColors::RowColors(const DayAgenda& agenda, const SettingsRecord& settings, CalendarDate now)
    : agenda_(agenda),
      settings_(settings),
      now_(now),
      dark_(is_dark(settings.color(ColorSlot::day_row_1))) {}

bool RowColors::has_ended(std::size_t row) const {
  return agenda_.rows[row].is_appointment() && settings_.colorexpired == 1 &&
         is_before(agenda_.row_ends[row], now_);
}

bool RowColors::shows_category(std::size_t row) const {
  return settings_.rowcolorindex == static_cast<int>(RowColorStyle::by_category) &&
         row < agenda_.row_colors.size() && agenda_.row_colors[row] != kWhite;
}

Color RowColors::background(std::size_t row) const {
  if (!agenda_.rows[row].is_appointment()) return on_paper(kWhite);
  const Color ground = by_style(row);
  // A category's colour may be any: beside it grey alone would say nothing.
  const bool fades = settings_.rowcolorindex == static_cast<int>(RowColorStyle::by_category);
  return fades && has_ended(row) ? mixed(ground, slot(ColorSlot::day_row_1), kEndedShare) : ground;
}

Color RowColors::by_style(std::size_t row) const {
  switch (static_cast<RowColorStyle>(settings_.rowcolorindex)) {
    case RowColorStyle::by_rows:
      return slot(agenda_.row_shades[row] == 1 ? ColorSlot::day_row_2 : ColorSlot::day_row_1);
    case RowColorStyle::by_times:
      return time_of_day_color(agenda_.row_ends[row]);
    case RowColorStyle::by_category:
      return on_paper(agenda_.row_colors[row]);
    case RowColorStyle::none:
      break;
  }
  return slot(ColorSlot::day_row_1);
}

// Morning until the second time mark, day until the third, then evening, which has no colour slot
// of its own: it lies between the rows' and the lines' colour.
Color RowColors::time_of_day_color(CalendarDate end) const {
  const double time = time_of_day(end);
  if (time < settings_.time_fraction[1]) return slot(ColorSlot::day_row_2);
  if (time < settings_.time_fraction[2]) return slot(ColorSlot::day_row_1);
  return mixed(slot(ColorSlot::day_row_1), slot(ColorSlot::day_line), kEveningShare);
}

// In this order, each later one winning; an ended appointment is grey whatever it is.
Color RowColors::text(std::size_t row, Color background) {
  const DayRow& shown = agenda_.rows[row];
  if (!shown.is_appointment()) return dark_ ? slot(ColorSlot::day_appointment_text) : kBlack;
  Color color = slot(ColorSlot::day_appointment_text);
  if (shown.kind == DayRow::Kind::all_day) color = slot(ColorSlot::day_all_day_text);
  if (shown.continues() && row > 0) color = chosen_;
  if (shown.kind == DayRow::Kind::location) color = slot(ColorSlot::day_location_text);
  chosen_ = color;
  if (has_ended(row)) return ended_text(background, readable_on(background, color));
  return readable_on(background, color);
}

bool RowColors::is_chosen(Color background) const {
  return background == slot(ColorSlot::day_row_1) || background == slot(ColorSlot::day_row_2);
}

// What a person has chosen for a ground of their choice stays as it is, as long as it can be read.
Color RowColors::ended_text(Color background, Color text) const {
  const Color expired = slot(ColorSlot::day_expired_text);
  if (is_chosen(background) && readable_on(background, expired) == expired) return expired;
  const Color ended = visible_on(background, expired, kEndedContrast);
  if (told_apart(ended, text)) return ended;
  constexpr int kStep = 16;
  Color pale = text;
  for (int share = kStep; !told_apart(pale, text) && share <= 256; share += kStep)
    pale = mixed(text, background, share);
  return pale;
}

// Seen on any row; where two rows differ much it is not what tells them apart.
Color RowColors::line(Color background) const {
  if (is_chosen(background)) return slot(ColorSlot::day_line);
  return visible_on(background, slot(ColorSlot::day_line), kLineContrast);
}

// White stands for nothing special; in a dark list that is its own colour.
Color RowColors::on_paper(Color color) const {
  return dark_ && color == kWhite ? slot(ColorSlot::day_row_1) : color;
}

}  // namespace orvello
