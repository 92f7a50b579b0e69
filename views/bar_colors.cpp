#include "views/bar_colors.h"

#include "settings/category_text.h"

namespace orvello {
namespace {

// Without a category's colour a bar says how the time is spent.
Color busy_color(BusyStatus status) {
  switch (status) {
    case BusyStatus::free:
      return rgb(70, 150, 80);
    case BusyStatus::tentative:
      return rgb(112, 158, 214);
    case BusyStatus::out_of_office:
      return rgb(136, 68, 156);
    case BusyStatus::busy:
      break;
  }
  return rgb(32, 74, 156);
}

// The colour kept for the whole categories text, else for its first label.
std::optional<Color> chosen_bar_color(TextView categories, const std::vector<CategoryProp>& props) {
  if (categories.empty()) return std::nullopt;
  if (find_category_prop(props, categories)) return used_category_color(props, categories);
  return used_category_color(props, categories.substr(0, categories.find(u',')));
}

}  // namespace

BarColors::BarColors(const MonthSnapshot& snapshot) {
  for (const Text& categories : snapshot.period.categories)
    by_categories_.push_back(snapshot.usecategorycolorforbar == 1
                                 ? chosen_bar_color(categories, snapshot.category_colors)
                                 : std::nullopt);
}

Color BarColors::of(std::int32_t categories, BusyStatus status) const {
  const auto& own = by_categories_[static_cast<std::size_t>(categories)];
  return own ? *own : busy_color(status);
}

}  // namespace orvello
