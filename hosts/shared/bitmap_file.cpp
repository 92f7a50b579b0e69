#include "hosts/shared/bitmap_file.h"

#include <cstdint>

namespace orvello {
namespace {

constexpr std::uint32_t kUncompressed = 0;
constexpr std::uint32_t kBitFields = 3;
constexpr std::int64_t kMostPixels = 64 * 1000 * 1000;

class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : bytes_(bytes) {}
  std::uint32_t byte(std::size_t at) const {
    return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : 0;
  }
  std::uint32_t word(std::size_t at) const { return byte(at) | byte(at + 1) << 8; }
  std::uint32_t dword(std::size_t at) const { return word(at) | word(at + 2) << 16; }
  std::size_t size() const { return bytes_.size(); }

 private:
  std::string_view bytes_;
};

struct Header {
  std::int64_t width = 0, height = 0;
  bool top_down = false;
  std::uint32_t bits = 0;
  std::size_t palette = 0, palette_entry = 4, palette_count = 0;
  std::uint32_t masks[3] = {0, 0, 0};
  std::size_t pixels = 0, row_bytes = 0;
};

bool read_masks(const Bytes& file, std::uint32_t compression, Header& header) {
  if (compression == kBitFields) {
    // Directly after a short header, or inside a long one: the same place.
    for (std::size_t i = 0; i < 3; ++i) header.masks[i] = file.dword(14 + 40 + 4 * i);
    return header.masks[0] && header.masks[1] && header.masks[2];
  }
  const std::uint32_t narrow[3] = {0x7C00, 0x03E0, 0x001F};
  const std::uint32_t wide[3] = {0xFF0000, 0x00FF00, 0x0000FF};
  for (int i = 0; i < 3; ++i) header.masks[i] = header.bits == 16 ? narrow[i] : wide[i];
  return true;
}

bool read_header(const Bytes& file, Header& header) {
  if (file.size() < 26 || file.byte(0) != 'B' || file.byte(1) != 'M') return false;
  const std::uint32_t size = file.dword(14);
  std::uint32_t compression = kUncompressed, colors = 0;
  if (size == 12) {
    header.width = file.word(18);
    header.height = file.word(20);
    header.bits = file.word(24);
    header.palette_entry = 3;
  } else if (size >= 40 && size <= 124 && file.size() >= 14 + size) {
    header.width = static_cast<std::int32_t>(file.dword(18));
    header.height = static_cast<std::int32_t>(file.dword(22));
    header.top_down = header.height < 0;
    if (header.top_down) header.height = -header.height;
    header.bits = file.word(28);
    compression = file.dword(30);
    colors = file.dword(46);
  } else {
    return false;
  }
  const std::uint32_t bits = header.bits;
  const bool deep = bits == 16 || bits == 24 || bits == 32;
  if (!deep && bits != 1 && bits != 4 && bits != 8) return false;
  if (compression != kUncompressed && !(compression == kBitFields && bits != 24 && deep))
    return false;
  if (header.width <= 0 || header.height <= 0 || header.width > kMostPixels ||
      header.height > kMostPixels || header.width * header.height > kMostPixels)
    return false;
  header.palette = 14 + size;
  if (!deep) header.palette_count = colors && colors < (1u << bits) ? colors : 1u << bits;
  if (deep && !read_masks(file, compression, header)) return false;
  header.pixels = file.dword(10);
  header.row_bytes = static_cast<std::size_t>((header.width * bits + 31) / 32 * 4);
  return header.pixels >= header.palette && file.size() >= header.pixels &&
         file.size() - header.pixels >= header.row_bytes * static_cast<std::size_t>(header.height);
}

int scaled_channel(std::uint32_t value, std::uint32_t mask) {
  int shift = 0;
  while (!(mask >> shift & 1)) ++shift;
  const std::uint64_t most = mask >> shift;
  return static_cast<int>(((value & mask) >> shift) * std::uint64_t{255} / most);
}

Color pixel_at(const Bytes& file, const Header& header, std::size_t row, std::size_t x) {
  if (header.bits <= 8) {
    const std::size_t per_byte = 8 / header.bits;
    const std::uint32_t byte = file.byte(row + x / per_byte);
    const std::size_t shift = 8 - header.bits * (x % per_byte + 1);
    const std::uint32_t index = byte >> shift & ((1u << header.bits) - 1);
    if (index >= header.palette_count) return kBlack;
    const std::size_t at = header.palette + index * header.palette_entry;
    return rgb(static_cast<int>(file.byte(at + 2)), static_cast<int>(file.byte(at + 1)),
               static_cast<int>(file.byte(at)));
  }
  const std::size_t at = row + x * (header.bits / 8);
  const std::uint32_t value = header.bits == 16   ? file.word(at)
                              : header.bits == 24 ? file.word(at) | file.byte(at + 2) << 16
                                                  : file.dword(at);
  return rgb(scaled_channel(value, header.masks[0]), scaled_channel(value, header.masks[1]),
             scaled_channel(value, header.masks[2]));
}

}  // namespace

std::optional<Image> read_bitmap(std::string_view bytes) {
  const Bytes file(bytes);
  Header header;
  if (!read_header(file, header)) return std::nullopt;
  Image image;
  image.width = static_cast<int>(header.width);
  image.height = static_cast<int>(header.height);
  image.pixels.reserve(static_cast<std::size_t>(header.width * header.height));
  for (int y = 0; y < image.height; ++y) {
    const int stored = header.top_down ? y : image.height - 1 - y;
    const std::size_t row = header.pixels + header.row_bytes * static_cast<std::size_t>(stored);
    for (int x = 0; x < image.width; ++x)
      image.pixels.push_back(pixel_at(file, header, row, static_cast<std::size_t>(x)));
  }
  return image;
}

}  // namespace orvello
