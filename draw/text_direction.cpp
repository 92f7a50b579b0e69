#include "draw/text_direction.h"

namespace orvello {
namespace {

constexpr char16_t kLeftMark = 0x200E, kRightMark = 0x200F;

struct UnitSpan {
  char16_t first, last;
};

// Hebrew to the Arabic supplements, their forms for presentation, and the mark; of the planes above
// the first surrogates of the blocks that are written so.
constexpr UnitSpan kRightToLeft[] = {{0x0590, 0x08FF}, {kRightMark, kRightMark}, {0xD802, 0xD803},
                                     {0xD83A, 0xD83B}, {0xFB1D, 0xFDFF},         {0xFE70, 0xFEFE}};
// Digits and signs of those blocks, which have no direction of their own or bend to others.
constexpr UnitSpan kWeak[] = {{0x0600, 0x0607}, {0x060C, 0x060C}, {0x060E, 0x061A},
                              {0x0660, 0x066C}, {0x06F0, 0x06F9}, {0xFD3E, 0xFD3F}};
// What is no letter: signs, accents, punctuation, arrows and the like.
constexpr UnitSpan kNeutral[] = {
    {0x0000, 0x0040}, {0x005B, 0x0060}, {0x007B, 0x00A9}, {0x00AB, 0x00B4}, {0x00B6, 0x00B9},
    {0x00BB, 0x00BF}, {0x00D7, 0x00D7}, {0x00F7, 0x00F7}, {0x0300, 0x036F}, {0x2000, 0x200D},
    {0x2010, 0x2070}, {0x2074, 0x207E}, {0x2080, 0x208E}, {0x20A0, 0x20FF}, {0x2190, 0x2BFF},
    {0x3000, 0x3004}, {0xD83C, 0xD83E}, {0xDC00, 0xDFFF}, {0xFE00, 0xFE6F}, {0xFEFF, 0xFEFF},
    {0xFFE0, 0xFFFF}};

template <std::size_t count>
bool is_within(char16_t unit, const UnitSpan (&spans)[count]) {
  for (const UnitSpan& span : spans)
    if (unit >= span.first && unit <= span.last) return true;
  return false;
}

}  // namespace

std::optional<Reading> reading_of(TextView text) {
  for (const char16_t unit : text) {
    if (is_within(unit, kNeutral) || is_within(unit, kWeak)) continue;
    return is_within(unit, kRightToLeft) ? Reading::right_to_left : Reading::left_to_right;
  }
  return std::nullopt;
}

Text line_of(TextView paragraph, TextView line) {
  const auto wanted = reading_of(paragraph);
  if (!wanted || line.empty()) return Text(line);
  if (reading_of(line).value_or(Reading::left_to_right) == *wanted) return Text(line);
  const char16_t mark = *wanted == Reading::right_to_left ? kRightMark : kLeftMark;
  return Text(1, mark) + Text(line);
}

}  // namespace orvello
