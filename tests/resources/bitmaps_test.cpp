#include "resources/bitmaps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace orvello {
namespace {

Image part(const Image& image, Rect r) {
  Image cut{r.width, r.height, {}};
  for (int y = r.y; y < r.bottom(); ++y)
    for (int x = r.x; x < r.right(); ++x) cut.pixels.push_back(image.at(x, y));
  return cut;
}

std::vector<Image> cells(int id, int width) {
  const Image strip = load_bitmap(id);
  std::vector<Image> all;
  for (int x = 0; x + width <= strip.width; x += width)
    all.push_back(part(strip, {x, 0, width, strip.height}));
  return all;
}

bool draws_on_transparent(const Image& image) {
  const auto clear = std::ranges::count(image.pixels, kMagenta);
  return clear > 0 && clear < static_cast<std::ptrdiff_t>(image.pixels.size());
}

TEST(Bitmaps, HaveTheSizesTheViewsCountOn) {
  const std::map<int, Size> expected = {
      {1, {48, 48}},    {2, {16, 16}},     {107, {8, 8}},     {117, {414, 9}},  {129, {64, 16}},
      {131, {8, 8}},    {152, {9, 9}},     {153, {9, 9}},     {155, {18, 18}},  {156, {18, 18}},
      {157, {16, 16}},  {158, {16, 16}},   {171, {1098, 18}}, {187, {32, 28}},  {188, {16, 14}},
      {112, {71, 46}},  {113, {71, 46}},   {114, {71, 46}},   {168, {141, 86}}, {169, {141, 86}},
      {170, {141, 86}}, {1590, {128, 32}}, {1601, {208, 16}}, {1602, {416, 32}}};
  std::map<int, Size> found;
  for (const int id : bitmap_ids()) {
    const Image image = load_bitmap(id);
    EXPECT_EQ(image.pixels.size(), static_cast<std::size_t>(image.width) * image.height) << id;
    EXPECT_TRUE(draws_on_transparent(image)) << id;
    found[id] = {image.width, image.height};
  }
  EXPECT_EQ(found, expected);
  for (const int unknown : {0, -1, 3, 118, 1591}) EXPECT_TRUE(load_bitmap(unknown).empty());
}

TEST(Bitmaps, EveryCellOfAStripIsAPictureOfItsOwn) {
  struct Strip {
    int id, width;
    std::size_t count;
  };
  for (const Strip& strip : {Strip{117, 9, 46},
                             {171, 18, 61},
                             {129, 16, 4},
                             {1590, 32, 4},
                             {1601, 16, 13},
                             {1602, 32, 13}}) {
    const std::vector<Image> all = cells(strip.id, strip.width);
    ASSERT_EQ(all.size(), strip.count);
    for (std::size_t i = 0; i < all.size(); ++i) {
      EXPECT_TRUE(draws_on_transparent(all[i])) << strip.id << " cell " << i;
      for (std::size_t j = 0; j < i; ++j)
        EXPECT_NE(all[i], all[j]) << strip.id << " cells " << j << ", " << i;
    }
  }
}

TEST(Bitmaps, NamesTellTheIconsApart) {
  const auto names = icon_names();
  ASSERT_EQ(static_cast<int>(names.size()), load_bitmap(kBitmapIconsHigh).width / 18);
  EXPECT_EQ(std::set(names.begin(), names.end()).size(), names.size());
  for (const std::string_view name : names) {
    EXPECT_FALSE(name.empty());
    EXPECT_TRUE(std::ranges::all_of(name, [](char c) {
      return (c >= 'a' && c <= 'z') || c == '_';
    })) << name;
  }
  EXPECT_EQ(names.front(), "birthday");
}

}  // namespace
}  // namespace orvello
