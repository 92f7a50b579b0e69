// The grounds, texts and separators of a day's rows, by the row colour style.
#pragma once

#include "settings/settings_record.h"
#include "store/day_agenda.h"

namespace orvello {

enum class RowColorStyle { by_rows = 0, by_times = 1, by_category = 2, none = 3 };

// Of 256 parts, how far a row of the evening is from the rows' to the lines' colour.
inline constexpr int kEveningShare = 170;

class RowColors {
 public:
  // What has ended before `now` is past.
  RowColors(const DayAgenda& agenda, const SettingsRecord& settings, CalendarDate now);

  Color background(std::size_t row) const;
  // Of the rows in their order: one that goes on has the colour of the row before it.
  Color text(std::size_t row, Color background);
  Color line(Color background) const;  // above a row
  bool has_ended(std::size_t row) const;
  // Whether its ground tells its category.
  bool shows_category(std::size_t row) const;

 private:
  Color slot(ColorSlot of) const { return settings_.color(of); }
  Color by_style(std::size_t row) const;
  Color time_of_day_color(CalendarDate end) const;
  Color on_paper(Color color) const;
  bool is_chosen(Color background) const;
  Color ended_text(Color background, Color text) const;

  const DayAgenda& agenda_;
  const SettingsRecord& settings_;
  CalendarDate now_;
  bool dark_;
  Color chosen_ = kBlack;  // for the row before, as it was chosen
};

}  // namespace orvello
