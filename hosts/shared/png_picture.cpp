#include "hosts/shared/png_picture.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace orvello {
namespace {

using Byte = unsigned char;

void add_big_endian(std::string& out, std::uint32_t number) {
  for (const int shift : {24, 16, 8, 0}) out += static_cast<char>(number >> shift & 0xFF);
}

std::uint32_t checksum_of(std::string_view bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char c : bytes) {
    sum ^= static_cast<Byte>(c);
    for (int bit = 0; bit < 8; ++bit) sum = (sum & 1) != 0 ? sum >> 1 ^ 0xEDB88320 : sum >> 1;
  }
  return ~sum;
}

std::uint32_t adler_of(std::string_view bytes) {
  std::uint32_t low = 1, high = 0;
  for (const char c : bytes) {
    low = (low + static_cast<Byte>(c)) % 65521;
    high = (high + low) % 65521;
  }
  return high << 16 | low;
}

void add_chunk(std::string& out, std::string_view kind, std::string_view content) {
  add_big_endian(out, static_cast<std::uint32_t>(content.size()));
  const std::string chunk = std::string(kind).append(content);
  out += chunk;
  add_big_endian(out, checksum_of(chunk));
}

// Bits as deflate has them: from the lowest up, but codes from their highest.
class Bits {
 public:
  explicit Bits(std::string& out) : out_(out) {}
  void add(unsigned value, int count) {
    held_ |= value << held_count_;
    for (held_count_ += count; held_count_ >= 8; held_count_ -= 8, held_ >>= 8)
      out_ += static_cast<char>(held_ & 0xFF);
  }
  void add_code(unsigned code, int length) {
    for (int bit = length - 1; bit >= 0; --bit) add(code >> bit & 1, 1);
  }
  void finish() {
    if (held_count_ > 0) add(0, 8 - held_count_);
  }

 private:
  std::string& out_;
  unsigned held_ = 0;
  int held_count_ = 0;
};

// The fixed codes.
void add_symbol(Bits& bits, unsigned symbol) {
  if (symbol < 144) return bits.add_code(0x30 + symbol, 8);
  if (symbol < 256) return bits.add_code(0x190 + symbol - 144, 9);
  if (symbol < 280) return bits.add_code(symbol - 256, 7);
  bits.add_code(0xC0 + symbol - 280, 8);
}

struct Step {  // of a length or a distance: from where on, and how many bits say how much further
  unsigned from;
  int bits;
};

template <std::size_t kCount>
constexpr std::array<Step, kCount> steps(unsigned first, unsigned plain, unsigned group) {
  std::array<Step, kCount> all{};
  unsigned from = first;
  for (unsigned i = 0; i < kCount; ++i) {
    const int more = i < plain ? 0 : static_cast<int>((i - plain) / group) + 1;
    all[i] = {from, more};
    from += 1U << more;
  }
  return all;
}
constexpr auto kDistances = steps<30>(1, 4, 2);
constexpr auto kLengths = steps<28>(3, 8, 4);  // 258 has a symbol of its own

template <std::size_t kCount>
unsigned step_of(const std::array<Step, kCount>& all, unsigned value) {
  const auto after = std::upper_bound(all.begin(), all.end(), value,
                                      [](unsigned v, const Step& step) { return v < step.from; });
  return static_cast<unsigned>(after - all.begin()) - 1;
}

constexpr unsigned kFarthest = 32768, kLongest = 258, kShortest = 4, kEndOfBlock = 256;

void add_repeat(Bits& bits, unsigned length, unsigned distance) {
  if (length == kLongest) {
    add_symbol(bits, 285);
  } else {
    const unsigned step = step_of(kLengths, length);
    add_symbol(bits, 257 + step);
    bits.add(length - kLengths[step].from, kLengths[step].bits);
  }
  const unsigned step = step_of(kDistances, distance);
  bits.add_code(step, 5);
  bits.add(distance - kDistances[step].from, kDistances[step].bits);
}

// One block of fixed codes: what repeats the last place that began alike is said so.
void deflate(std::string& out, std::string_view bytes) {
  Bits bits(out);
  bits.add(1, 1);
  bits.add(1, 2);
  std::array<std::int64_t, 1 << 14> last_at;
  last_at.fill(-1);
  const auto place_of = [&](std::size_t at) {
    std::uint32_t word = 0;
    std::memcpy(&word, bytes.data() + at, kShortest);
    return word * 2654435761U >> 18;
  };
  for (std::size_t at = 0; at < bytes.size();) {
    unsigned length = 0;
    std::size_t from = 0;
    if (at + kShortest <= bytes.size()) {
      std::int64_t& last = last_at[place_of(at)];
      if (last >= 0 && at - static_cast<std::size_t>(last) <= kFarthest) {
        from = static_cast<std::size_t>(last);
        const std::size_t most = std::min<std::size_t>(kLongest, bytes.size() - at);
        while (length < most && bytes[from + length] == bytes[at + length]) ++length;
      }
      last = static_cast<std::int64_t>(at);
    }
    if (length >= kShortest) {
      add_repeat(bits, length, static_cast<unsigned>(at - from));
      at += length;
    } else {
      add_symbol(bits, static_cast<Byte>(bytes[at++]));
    }
  }
  add_symbol(bits, kEndOfBlock);
  bits.finish();
}

}  // namespace

std::string png_picture(const Image& image, std::optional<Color> clear) {
  std::string rows;
  for (int y = 0; y < image.height; ++y) {
    rows += '\0';  // no filter
    for (int x = 0; x < image.width; ++x) {
      const Color pixel = image.at(x, y);
      const bool seen = pixel != clear;
      for (const int part : {red_of(pixel), green_of(pixel), blue_of(pixel)})
        rows += static_cast<char>(seen ? part : 0);
      if (clear) rows += static_cast<char>(seen ? 0xFF : 0);
    }
  }
  std::string head;
  add_big_endian(head, static_cast<std::uint32_t>(image.width));
  add_big_endian(head, static_cast<std::uint32_t>(image.height));
  head += {8, static_cast<char>(clear ? 6 : 2), 0, 0, 0};  // 8 bits each of RGBA or RGB
  std::string content = "\x78\x01";
  deflate(content, rows);
  add_big_endian(content, adler_of(rows));
  std::string file = "\x89PNG\r\n\x1A\n";
  add_chunk(file, "IHDR", head);
  add_chunk(file, "IDAT", content);
  add_chunk(file, "IEND", "");
  return file;
}

}  // namespace orvello
