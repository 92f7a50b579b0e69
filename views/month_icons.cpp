#include "views/month_icons.h"

#include <bit>

#include "settings/category_text.h"

namespace orvello {

void MonthIcons::place(const PeriodItem& item, const CellSpan& span) {
  if (!item.passes_profile || snapshot_.icons.empty()) return;
  const std::uint64_t slots = slots_of(item.summary->categories);
  if (slots == 0) return;
  for (int cell = span.first; cell <= span.last; ++cell)
    if (layout_.cells[cell].drawn) offer(cell, slots);
}

std::uint64_t MonthIcons::slots_of(TextView categories) {
  const auto [place, added] = slots_by_text_.try_emplace(categories, 0);
  if (!added) return place->second;
  for (std::size_t i = 0; i < snapshot_.icons.size(); ++i) {
    const Text& label = snapshot_.icons[i].label;
    const bool matches =
        categories.empty() ? label == kNoCategory : categoryTextHasLabel(categories, label);
    if (matches) place->second |= std::uint64_t{1} << i;
  }
  return place->second;
}

void MonthIcons::offer(int cell, std::uint64_t slots) {
  for (slots &= ~placed_[cell]; slots != 0 && counts_[cell] < kIconsInCell; slots &= slots - 1) {
    placed_[cell] |= slots & -slots;
    const int n = ++counts_[cell];
    const Image& picture = snapshot_.icons[std::countr_zero(slots)].picture;
    // A number past the strips keeps its place and shows nothing.
    if (picture.empty()) continue;
    canvas_.draw_image(picture, {0, 0, picture.width, picture.height},
                       month_icon_place(layout_, cell / 7, cell % 7, n));
  }
}

bool MonthIconPass(const MonthSnapshot& snapshot, const MonthLayout& layout, Canvas& canvas,
                   const DrawControl& control) {
  MonthIcons icons(snapshot, layout, canvas);
  for (const PeriodItem& item : snapshot.items) {
    if (control.stopped()) return false;
    icons.place(item, cells_of(item, layout.grid, snapshot.generation));
    control.progress();
  }
  return true;
}

}  // namespace orvello
