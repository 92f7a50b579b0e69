#include "views/month_icons.h"

#include <bit>

#include "settings/category_text.h"
#include "views/month_cells.h"

namespace orvello {

namespace {

std::uint64_t slots_of(TextView categories, const std::vector<MonthIconSlot>& icons) {
  std::uint64_t slots = 0;
  for (std::size_t i = 0; i < icons.size(); ++i) {
    const Text& label = icons[i].label;
    const bool matches =
        categories.empty() ? label == kNoCategory : categoryTextHasLabel(categories, label);
    if (matches) slots |= std::uint64_t{1} << i;
  }
  return slots;
}

}  // namespace

MonthIcons::MonthIcons(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas)
    : snapshot_(snapshot), layout_(layout), canvas_(canvas) {
  for (const Text& categories : snapshot.period.categories)
    slots_by_categories_.push_back(slots_of(categories, snapshot.icons));
}

void MonthIcons::place(const PeriodItem& item, const CellSpan& span) {
  if (!item.passes_profile) return;
  const std::uint64_t slots = slots_by_categories_[item.categories];
  if (slots == 0) return;
  for (int cell = span.first; cell <= span.last; ++cell)
    if (layout_.cells[cell].drawn) offer(cell, slots);
}

void MonthIcons::offer(int cell, std::uint64_t slots) {
  for (slots &= ~placed_[cell]; slots != 0 && counts_[cell] < kIconsInCell; slots &= slots - 1) {
    placed_[cell] |= slots & -slots;
    // A number past the strips keeps its place and shows nothing.
    draw(snapshot_.icons[std::countr_zero(slots)].picture, layout_.cells[cell], ++counts_[cell]);
  }
}

void MonthIcons::draw(const Image& picture, const MonthCell& cell, int n) {
  if (picture.empty()) return;
  const Point place = month_icon_place(layout_, cell.row, cell.column, n);
  // The second row of icons reaches the numbers of a low cell; there the date is more important.
  const Rect box{place.x, place.y, picture.width, picture.height};
  const Rect number = drawn_number_box(snapshot_, layout_, cell, canvas_);
  if (intersection(box, number).empty())
    canvas_.draw_image(picture, {0, 0, picture.width, picture.height}, place);
}

bool MonthIconPass(const MonthSnapshot& snapshot, const MonthLayout& layout, MonthIcons& icons,
                   const DrawControl& control) {
  for (const PeriodItem& item : snapshot.period.items) {
    if (control.stopped()) return false;
    icons.place(item, cells_of(item, layout.grid));
    control.progress();
  }
  return true;
}

}  // namespace orvello
