#include "base/letters.h"

#include <algorithm>

namespace orvello {
namespace {

bool lies(char16_t unit, char16_t first, char16_t last) { return unit >= first && unit <= last; }

}  // namespace

char16_t capital(char16_t letter) {
  const auto shifted = [letter](int by) { return static_cast<char16_t>(letter - by); };
  if (lies(letter, u'a', u'z')) return shifted(0x20);
  if (lies(letter, u'\u00E0', u'\u00FE') && letter != u'\u00F7') return shifted(0x20);
  // Capitals and small letters by turns; three runs of these begin with an odd number.
  if (lies(letter, u'\u0100', u'\u0137') || lies(letter, u'\u014A', u'\u0177'))
    return shifted(letter % 2);
  if (lies(letter, u'\u0139', u'\u0148') || lies(letter, u'\u0179', u'\u017E'))
    return shifted(letter % 2 == 0 ? 1 : 0);
  if (lies(letter, u'\u03B1', u'\u03C9') && letter != u'\u03C2') return shifted(0x20);
  if (lies(letter, u'\u0430', u'\u044F')) return shifted(0x20);
  if (lies(letter, u'\u0450', u'\u045F')) return shifted(0x50);
  return letter;
}

Text in_capitals(TextView text) {
  Text capitals(text);
  std::transform(capitals.begin(), capitals.end(), capitals.begin(), capital);
  return capitals;
}

bool is_letter(char16_t unit) {
  if (unit < u'\u00C0') return lies(capital(unit), u'A', u'Z');
  const bool sign = unit == u'\u00D7' || unit == u'\u00F7' || lies(unit, u'\u2000', u'\u2BFF') ||
                    lies(unit, u'\u3000', u'\u303F') || lies(unit, u'\uFF00', u'\uFF20');
  const bool not_in_the_plane = lies(unit, 0xD800, 0xF8FF);  // half of a pair, or private
  return !sign && !not_in_the_plane;
}

bool is_cyrillic(char16_t unit) { return lies(unit, u'\u0400', u'\u04FF'); }

}  // namespace orvello
