#include "views/row_pictures.h"

#include <algorithm>
#include <tuple>

#include "draw/readable.h"
#include "settings/icon_picture.h"

namespace orvello {

RowPictures::RowPictures(const DayAgenda& agenda, const SettingsRecord& settings, int gap)
    : settings_(settings), gap_(gap) {
  for (std::size_t i = 0; i < agenda.rows.size(); ++i) {
    const DayRow& row = agenda.rows[i];
    if (i < agenda.row_colors.size() && has_bar(agenda.row_colors[i]))
      widths_[kBarSlot] = std::max(1, settings.reminder_glyph.height * 3 / 8);
    for (const char16_t letter : row.icons) {
      if (letter == u'n') widths_[kNotesSlot] = settings.notes_glyph.width;
      if (letter == u'r') widths_[kReminderSlot] = settings.reminder_glyph.width;
      if (letter != u'c') continue;
      const auto [known, fresh] = icons_.try_emplace(row.first_category);
      if (fresh) known->second = category_icon(settings, row.first_category);
      widths_[kIconSlot] = std::max(widths_[kIconSlot], known->second.width);
    }
  }
}

int RowPictures::width() const {
  int width = 0;
  for (const int slot : widths_)
    if (slot > 0) width += (width > 0 ? gap_ : 0) + slot;
  return width;
}

bool RowPictures::has_bar(Color category) const {
  return settings_.usecategorycolorforbar == 1 && category != kWhite;
}

const Image* RowPictures::icon_of(const DayRow& row) const {
  if (row.icons.find(u'c') == Text::npos) return nullptr;
  const auto found = icons_.find(row.first_category);
  return found == icons_.end() || found->second.empty() ? nullptr : &found->second;
}

bool RowPictures::shows_category(const DayRow& row, Color category) const {
  return icon_of(row) || has_bar(category);
}

std::vector<int> RowPictures::of(const DayRow& row, Color category, const Place& place,
                                 std::vector<Image>& pictures) {
  const auto glyph = [&](int slot, const Image& picture) {
    const auto [known, fresh] = glyphs_.try_emplace(
        {slot, slot == kIconSlot ? row.first_category : Text()}, static_cast<int>(pictures.size()));
    if (fresh) pictures.push_back(visible_on(settings_.color(ColorSlot::day_row_1), picture));
    return known->second;
  };
  std::vector<int> shown;
  int used = 0;  // places up to the last one that is
  for (int slot = 0; slot < kSlotCount; ++slot) {
    if (widths_[slot] == 0) continue;
    const auto has = [&](char16_t letter) { return row.icons.find(letter) != Text::npos; };
    int index = -1;
    if (slot == kBarSlot && has_bar(category)) index = bar_of(category, place, pictures);
    if (slot == kNotesSlot && has(u'n')) index = glyph(slot, settings_.notes_glyph);
    if (slot == kReminderSlot && has(u'r')) index = glyph(slot, settings_.reminder_glyph);
    if (const Image* icon = slot == kIconSlot ? icon_of(row) : nullptr) index = glyph(slot, *icon);
    shown.push_back(index >= 0 ? index : blank_of(slot, pictures));
    if (index >= 0) used = static_cast<int>(shown.size());
  }
  if (used == 0) shown.clear();
  return shown;
}

// Part of the place, with the margins left clear.
int RowPictures::bar_of(Color category, const Place& place, std::vector<Image>& pictures) {
  Color color = visible_on(place.ground, category);
  if (color == kMagenta) color = rgb(254, 0, 255);  // that one is not to be seen
  const auto [known, fresh] =
      bars_.try_emplace(std::tuple(color, place.ground, place.height, place.first, place.last),
                        static_cast<int>(pictures.size()));
  if (!fresh) return known->second;
  const int width = widths_[kBarSlot], height = std::max(1, place.height);
  Image bar{width, height, {}};
  bar.pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), color);
  const auto clear = std::ptrdiff_t{width} * std::min(place.margin, (height - 1) / 2);
  if (place.first) std::fill_n(bar.pixels.begin(), clear, kMagenta);
  if (place.last) std::fill_n(bar.pixels.rbegin(), clear, kMagenta);
  pictures.push_back(std::move(bar));
  return known->second;
}

// What nothing is seen of keeps the place of what this row does not have.
int RowPictures::blank_of(int slot, std::vector<Image>& pictures) {
  const auto [known, fresh] = blanks_.try_emplace(slot, static_cast<int>(pictures.size()));
  if (fresh) {
    const auto width = static_cast<std::size_t>(widths_[slot]);
    pictures.push_back({widths_[slot], 1, std::vector<Color>(width, kMagenta)});
  }
  return known->second;
}

}  // namespace orvello
