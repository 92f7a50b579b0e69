// Writes the program's icon as Windows has it: export_icon FILE.ico. Built and run on the machine
// that builds, whatever that builds for.
#include <fstream>
#include <iostream>
#include <vector>

#include "hosts/shared/png_picture.h"
#include "resources/bitmaps.h"

namespace {

using orvello::Image;

struct Entry {
  int size;
  std::string content;
};

void add_number(std::string& out, unsigned number, int bytes) {
  for (int i = 0; i < bytes; ++i) out += static_cast<char>(number >> 8 * i & 0xFF);
}

// In whole multiples, unsmoothed: it is drawn pixel by pixel. What is left over stays clear.
Image picture_of(int size) {
  const bool large = size % 16 != 0 || size >= 48;
  const Image drawn =
      orvello::load_bitmap(large ? orvello::kBitmapProgramLarge : orvello::kBitmapProgramSmall);
  const int times = size / drawn.width, edge = (size - times * drawn.width) / 2;
  Image image{
      size, size,
      std::vector<orvello::Color>(static_cast<std::size_t>(size) * size, orvello::kMagenta)};
  for (int y = 0; y < times * drawn.height; ++y)
    for (int x = 0; x < times * drawn.width; ++x)
      image.pixels[static_cast<std::size_t>(y + edge) * size + x + edge] =
          drawn.at(x / times, y / times);
  return image;
}

// As a bitmap without a file's header: colours with their opacity, then a mask, from the bottom up.
std::string bitmap_of(const Image& image) {
  std::string out;
  add_number(out, 40, 4);
  add_number(out, static_cast<unsigned>(image.width), 4);
  add_number(out, static_cast<unsigned>(image.height) * 2, 4);
  add_number(out, 1, 2);
  add_number(out, 32, 2);
  out.append(24, '\0');
  for (int y = image.height - 1; y >= 0; --y)
    for (int x = 0; x < image.width; ++x) {
      const orvello::Color pixel = image.at(x, y);
      if (pixel == orvello::kMagenta) {
        add_number(out, 0, 4);
        continue;
      }
      for (const int part :
           {orvello::blue_of(pixel), orvello::green_of(pixel), orvello::red_of(pixel), 0xFF})
        add_number(out, static_cast<unsigned>(part), 1);
    }
  const int row = (image.width + 31) / 32 * 4;
  for (int y = image.height - 1; y >= 0; --y) {
    std::string mask(static_cast<std::size_t>(row), '\0');
    for (int x = 0; x < image.width; ++x)
      if (image.at(x, y) == orvello::kMagenta)
        mask[static_cast<std::size_t>(x / 8)] |= static_cast<char>(0x80 >> x % 8);
    out += mask;
  }
  return out;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: export_icon FILE.ico\n";
    return 2;
  }
  std::vector<Entry> entries;
  for (const int size : {16, 32, 48, 96}) entries.push_back({size, bitmap_of(picture_of(size))});
  entries.push_back({256, orvello::png_picture(picture_of(256), orvello::kMagenta)});
  std::string file;
  add_number(file, 0, 2);
  add_number(file, 1, 2);
  add_number(file, static_cast<unsigned>(entries.size()), 2);
  std::size_t at = 6 + 16 * entries.size();
  for (const Entry& entry : entries) {
    add_number(file, static_cast<unsigned>(entry.size & 0xFF), 1);  // 0: 256
    add_number(file, static_cast<unsigned>(entry.size & 0xFF), 1);
    add_number(file, 0, 2);
    add_number(file, 1, 2);
    add_number(file, 32, 2);
    add_number(file, static_cast<unsigned>(entry.content.size()), 4);
    add_number(file, static_cast<unsigned>(at), 4);
    at += entry.content.size();
  }
  for (const Entry& entry : entries) file += entry.content;
  std::ofstream out(argv[1], std::ios::binary);
  if (out << file && out.flush()) return 0;
  std::cerr << "export_icon: " << argv[1] << " could not be written\n";
  return 1;
}
