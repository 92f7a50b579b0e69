#include "editor/block_bytes.h"

namespace orvello {
namespace {

constexpr int kSumSize = 4;

unsigned unsigned_byte(char c) { return static_cast<unsigned char>(c); }

}  // namespace

std::uint32_t crc32(std::string_view bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char c : bytes) {
    sum ^= unsigned_byte(c);
    for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ (sum & 1 ? 0xEDB88320u : 0u);
  }
  return ~sum;
}

void BlockWriter::number(std::uint64_t value) {
  for (; value > 0x7F; value >>= 7) byte(static_cast<unsigned>(value & 0x7F) | 0x80);
  byte(static_cast<unsigned>(value));
}

void BlockWriter::signed_number(std::int64_t value) {
  const auto bits = static_cast<std::uint64_t>(value);
  number(value < 0 ? ~(bits << 1) : bits << 1);
}

void BlockWriter::fixed(std::uint64_t value, int size) {
  for (; size > 0; --size, value >>= 8) byte(static_cast<unsigned>(value & 0xFF));
}

void BlockWriter::bytes(std::string_view value) {
  number(value.size());
  bytes_ += value;
}

void BlockWriter::units(TextView text) {
  number(text.size());
  for (const char16_t unit : text) fixed(unit, 2);
}

std::string BlockWriter::sealed() && {
  fixed(crc32(bytes_), kSumSize);
  return std::move(bytes_);
}

std::optional<BlockReader> BlockReader::opened(std::string_view block, std::string_view mark) {
  if (block.size() < mark.size() + kSumSize || block.substr(0, mark.size()) != mark)
    return std::nullopt;
  const std::size_t end = block.size() - kSumSize;
  if (BlockReader(block.substr(end)).fixed(kSumSize) != crc32(block.substr(0, end)))
    return std::nullopt;
  return BlockReader(block.substr(mark.size(), end - mark.size()));
}

std::string_view BlockReader::take(std::uint64_t size) {
  if (!good_ || size > rest_.size()) return fail(), std::string_view();
  const auto taken = rest_.substr(0, static_cast<std::size_t>(size));
  rest_.remove_prefix(taken.size());
  return taken;
}

unsigned BlockReader::byte() {
  const std::string_view one = take(1);
  return one.empty() ? 0 : unsigned_byte(one[0]);
}

std::uint64_t BlockReader::number() {
  std::uint64_t value = 0;
  for (int shift = 0; shift < 63; shift += 7) {
    const unsigned next = byte();
    value |= static_cast<std::uint64_t>(next & 0x7F) << shift;
    if (!(next & 0x80)) return good_ ? value : 0;
  }
  return fail(), 0;  // nothing needs more
}

std::int64_t BlockReader::signed_number() {
  const std::uint64_t bits = number();
  return static_cast<std::int64_t>(bits & 1 ? ~(bits >> 1) : bits >> 1);
}

std::uint64_t BlockReader::fixed(int size) {
  std::uint64_t value = 0;
  for (int i = 0; i < size; ++i) value |= static_cast<std::uint64_t>(byte()) << (8 * i);
  return good_ ? value : 0;
}

std::string_view BlockReader::bytes() { return take(number()); }

Text BlockReader::units() {
  const std::uint64_t count = number();
  if (count > left() / 2) return fail(), Text();
  const std::string_view taken = take(count * 2);
  Text text(taken.size() / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i)
    text[i] =
        static_cast<char16_t>(unsigned_byte(taken[2 * i]) | unsigned_byte(taken[2 * i + 1]) << 8);
  return text;
}

}  // namespace orvello
