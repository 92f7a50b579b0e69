#include "resources/bitmaps.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "resources/art/palette.h"

namespace orvello {
namespace {

struct IconArt {
  std::string_view name;
  std::string_view pixels;
};

constexpr IconArt kIconsLow[] = {
#include "resources/art/icons_low.inc"
};
constexpr IconArt kIconsHigh[] = {
#include "resources/art/icons_high_everyday.inc"
#include "resources/art/icons_high_leisure.inc"
#include "resources/art/icons_high_more.inc"
};
constexpr IconArt kNotesToolsLow[] = {
#include "resources/art/notes_tools_low.inc"
};
constexpr IconArt kNotesToolsHigh[] = {
#include "resources/art/notes_tools_high.inc"
};
#include "resources/art/glyphs.inc"
#include "resources/art/menu_bar.inc"
#include "resources/art/month_shading.inc"
#include "resources/art/pages.inc"

constexpr int kIconLow = 9;
constexpr int kIconHigh = 18;
constexpr int kToolLow = 16;
constexpr int kToolHigh = 32;

struct Picture {
  int id;
  int width;
  int height;
  std::string_view pixels;
};

constexpr Picture kPictures[] = {
    {kBitmapProgramLarge, 48, 48, kProgramLarge},
    {kBitmapProgramSmall, 16, 16, kProgramSmall},
    {kBitmapNotesLow, 8, 8, kNotesLow},
    {kBitmapMenuBarLow, 64, 16, kMenuBarLow},
    {kBitmapReminderLow, 8, 8, kReminderLow},
    {kBitmapPreviousLow, 9, 9, kLeftLow},
    {kBitmapNextLow, 9, 9, kRightLow},
    {kBitmapPreviousHigh, 18, 18, kLeftHigh},
    {kBitmapNextHigh, 18, 18, kRightHigh},
    {kBitmapNotesHigh, 16, 16, kNotesHigh},
    {kBitmapReminderHigh, 16, 16, kReminderHigh},
    {kBitmapTodayHigh, 32, 28, kTodayHigh},
    {kBitmapTodayLow, 16, 14, kTodayLow},
    {kBitmapMenuBarHigh, 128, 32, kMenuBarHigh},
    {kBitmapShadedRowsLow, 71, 46, kShadingRowsLow},
    {kBitmapShadedMondayLow, 71, 46, kShadingWeekendMondayLow},
    {kBitmapShadedSundayLow, 71, 46, kShadingWeekendSundayLow},
    {kBitmapShadedRowsHigh, 141, 86, kShadingRowsHigh},
    {kBitmapShadedMondayHigh, 141, 86, kShadingWeekendMondayHigh},
    {kBitmapShadedSundayHigh, 141, 86, kShadingWeekendSundayHigh},
};

// A map with a row too short or a mistyped letter must not compile.
constexpr bool well_drawn(std::string_view pixels, int width, int height) {
  return pixels.size() == static_cast<std::size_t>(width) * height &&
         std::ranges::all_of(pixels, [](char c) { return art::color_of(c).has_value(); });
}
constexpr bool well_drawn(std::span<const IconArt> icons, int cell) {
  return std::ranges::all_of(
      icons, [cell](const IconArt& icon) { return well_drawn(icon.pixels, cell, cell); });
}
static_assert(well_drawn(kIconsLow, kIconLow));
static_assert(well_drawn(kIconsHigh, kIconHigh));
static_assert(well_drawn(kNotesToolsLow, kToolLow));
static_assert(well_drawn(kNotesToolsHigh, kToolHigh));
static_assert(std::ranges::equal(kNotesToolsLow, kNotesToolsHigh, {}, &IconArt::name,
                                 &IconArt::name));
static_assert(std::ranges::all_of(kPictures, [](const Picture& p) {
  return well_drawn(p.pixels, p.width, p.height);
}));
// An icon number chosen on one display means the same subject on the other.
static_assert(std::size(kIconsLow) <= std::size(kIconsHigh) &&
              std::ranges::equal(kIconsLow, std::span(kIconsHigh).first(std::size(kIconsLow)), {},
                                 &IconArt::name, &IconArt::name));

constexpr auto kIconNames = [] {
  std::array<std::string_view, std::size(kIconsHigh)> names{};
  std::ranges::transform(kIconsHigh, names.begin(), &IconArt::name);
  return names;
}();

constexpr auto kIds = [] {
  std::array<int, std::size(kPictures) + 4> ids{kBitmapIconsLow, kBitmapIconsHigh,
                                                kBitmapNotesToolsLow, kBitmapNotesToolsHigh};
  std::ranges::transform(kPictures, ids.begin() + 4, &Picture::id);
  std::ranges::sort(ids);
  return ids;
}();

Image blank(int width, int height) {
  return {width, height, std::vector<Color>(static_cast<std::size_t>(width) * height, kMagenta)};
}

void decode(std::string_view map, int width, int left, Image& image) {
  for (std::size_t i = 0; i < map.size(); ++i) {
    const int x = left + static_cast<int>(i) % width;
    const int y = static_cast<int>(i) / width;
    image.pixels[static_cast<std::size_t>(y) * image.width + x] = *art::color_of(map[i]);
  }
}

Image decode_strip(std::span<const IconArt> icons, int cell) {
  Image strip = blank(static_cast<int>(icons.size()) * cell, cell);
  int left = 0;
  for (const IconArt& icon : icons) {
    decode(icon.pixels, cell, left, strip);
    left += cell;
  }
  return strip;
}

}  // namespace

Image load_bitmap(int resource_id) {
  if (resource_id == kBitmapIconsLow) return decode_strip(kIconsLow, kIconLow);
  if (resource_id == kBitmapIconsHigh) return decode_strip(kIconsHigh, kIconHigh);
  if (resource_id == kBitmapNotesToolsLow) return decode_strip(kNotesToolsLow, kToolLow);
  if (resource_id == kBitmapNotesToolsHigh) return decode_strip(kNotesToolsHigh, kToolHigh);
  const auto* found = std::ranges::find(kPictures, resource_id, &Picture::id);
  if (found == std::end(kPictures)) return {};
  Image image = blank(found->width, found->height);
  decode(found->pixels, found->width, 0, image);
  return image;
}

std::span<const int> bitmap_ids() { return kIds; }

std::span<const std::string_view> icon_names() { return kIconNames; }

}  // namespace orvello
