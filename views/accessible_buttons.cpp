#include "views/accessible_buttons.h"

#include "calendar/locale_data.h"

namespace orvello {
namespace {

class ButtonRow {
 public:
  ButtonRow(AccessibleGrid& grid, const AccessibleWords& words) : grid_(grid), words_(words) {}
  void add(Text name, const Rect& place) {
    grid_.cells.push_back({std::move(name), place, false});
    ++grid_.buttons;
  }
  void add_years(int year, const Rect& previous, const Rect& today, const Rect& next) {
    const auto named = [&](StringId id, int other) {
      return local_digits(format(load_string(id, words_.language), other), words_.locale);
    };
    add(named(StringId::previous_year, year - 1), previous);
    add(load_string(StringId::today, words_.language), today);
    add(named(StringId::next_year, year + 1), next);
  }

 private:
  AccessibleGrid& grid_;
  const AccessibleWords& words_;
};

}  // namespace

void add_month_buttons(AccessibleGrid& grid, const MonthLayout& layout,
                       const AccessibleWords& words) {
  ButtonRow row(grid, words);
  const Rect seen{0, 0, layout.strip.width, layout.strip.bottom()};  // a part lies above the screen
  for (std::size_t month = 0; month < 12; ++month)
    row.add(words.locale.month_names[month], intersection(layout.months[month], seen));
  row.add_years(layout.year, layout.previous_tap, layout.title, layout.next_tap);
}

void add_year_buttons(AccessibleGrid& grid, const YearLayout& layout,
                      const AccessibleWords& words) {
  ButtonRow row(grid, words);
  row.add_years(layout.year, layout.previous_tap, layout.title, layout.next_tap);
  for (std::size_t month = 0; month < 12; ++month)
    row.add(words.locale.month_names[month], layout.months[month].strip);
}

}  // namespace orvello
