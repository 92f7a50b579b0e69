// UTF-16 text helpers. Text in the core is std::u16string; bytes are UTF-8 and appear only at the
// borders (files, command line, diagnostics).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orvello {

using Text = std::u16string;
using TextView = std::u16string_view;

// Ill-formed input becomes U+FFFD, one for each bad unit; nothing fails.
Text to_utf16(std::string_view utf8);
std::string to_utf8(TextView text);
void append_utf8(std::string& out, char32_t code_point);

// A printf for UTF-16 that knows what the program's pictures use: %d, %.2d (any precision), %ld,
// %s, %f, %.0f (any precision) and %%. A missing or mismatched argument expands to nothing.
using FormatArgument = std::variant<std::int64_t, double, Text>;
Text format_text(TextView picture, const std::vector<FormatArgument>& arguments);

template <typename T>
FormatArgument format_argument(const T& value) {
  if constexpr (std::is_floating_point_v<T>)
    return static_cast<double>(value);
  else if constexpr (std::is_integral_v<T>)
    return static_cast<std::int64_t>(value);
  else
    return Text(TextView(value));
}

// format(u"%d:%.2d", 9, 5) is "9:05".
template <typename... Arguments>
Text format(TextView picture, const Arguments&... arguments) {
  return format_text(picture, {format_argument(arguments)...});
}

// Leading decimal digits (with an optional sign), as the C library reads them; 0 without digits.
std::int64_t leading_number(TextView text);

// At most `units` UTF-16 units, never half of a surrogate pair.
Text cut(TextView text, std::size_t units);

// Pieces between separators, empty ones included; an empty text is one empty piece.
std::vector<Text> split(TextView text, char16_t separator);

// Without the blanks at both ends; of bytes, which come from files and the command line, without
// tabs and other control characters there as well.
TextView trimmed(TextView text);
std::string_view trimmed(std::string_view bytes);

Text upper_ascii(TextView text);
bool starts_with(TextView text, TextView prefix);

}  // namespace orvello
