#include "exchange/base64.h"

#include <cstdint>

namespace orvello {
namespace {

constexpr std::string_view kDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace

std::string to_base64(std::string_view bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    std::uint32_t group = 0;
    for (std::size_t k = i; k < i + 3; ++k)
      group = (group << 8) | (k < bytes.size() ? static_cast<unsigned char>(bytes[k]) : 0);
    for (std::size_t k = 0; k < 4; ++k)
      text += i + k > bytes.size() ? '=' : kDigits[(group >> (18 - 6 * k)) & 63];
  }
  return text;
}

std::string from_base64(std::string_view text) {
  std::string bytes;
  std::uint32_t bits = 0;
  int count = 0;
  for (const char c : text) {
    const std::size_t digit = kDigits.find(c);
    if (digit == std::string_view::npos) continue;
    bits = (bits << 6) | static_cast<std::uint32_t>(digit);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>((bits >> count) & 0xFF);
  }
  return bytes;
}

}  // namespace orvello
