// The program's own pictures, read by somebody else.
#include "hosts/shared/png_picture.h"

#include <gtest/gtest.h>

#include <QImage>

#include "resources/bitmaps.h"

namespace orvello {
namespace {

Image noise(int width, int height) {
  Image image{width, height, {}};
  Color color = 1;
  for (int i = 0; i < width * height; ++i)
    image.pixels.push_back((color = color * 1664525 + 1013904223) & 0xFFFFFF);
  return image;
}

TEST(PngPicture, IsReadAsItWasDrawn) {
  Image plain{700, 300, std::vector<Color>(700 * 300, rgb(255, 250, 205))};
  for (int y = 40; y < 300; y += 40)  // rows that repeat far away, and runs of all lengths
    for (int x = 0; x < 700; ++x) plain.pixels[static_cast<std::size_t>(y) * 700 + x] = x % (y + 1);
  for (const Image& image :
       {load_bitmap(kBitmapProgramLarge), plain, noise(1, 1), noise(257, 129)}) {
    for (const bool clear : {false, true}) {
      const std::string png =
          png_picture(image, clear ? std::optional<Color>(kMagenta) : std::nullopt);
      QImage read;
      ASSERT_TRUE(read.loadFromData(reinterpret_cast<const uchar*>(png.data()),
                                    static_cast<int>(png.size()), "PNG"));
      ASSERT_EQ(Size({read.width(), read.height()}), Size({image.width, image.height}));
      for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
          const QRgb got = read.pixel(x, y);
          const bool seen = !clear || image.at(x, y) != kMagenta;
          ASSERT_EQ(qAlpha(got), seen ? 255 : 0);
          if (seen) {
            ASSERT_EQ(rgb(qRed(got), qGreen(got), qBlue(got)), image.at(x, y)) << x << " " << y;
          }
        }
    }
  }
  EXPECT_LT(png_picture(plain).size(), 30000u) << "a window's plain grounds are small";
}

}  // namespace
}  // namespace orvello
