#include "resources/grouped_number.h"

#include <string>

namespace orvello {

Text grouped_number(std::int64_t number, Language language, const LocaleData& locale) {
  Text digits = to_utf16(std::to_string(number));
  const Text group = load_string(StringId::digit_group, language);
  for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, group);
  return local_digits(digits, locale);
}

}  // namespace orvello
