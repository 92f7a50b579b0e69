#include "store/pim/pim_numbers.h"

#include <charconv>

namespace orvello {

std::int32_t PimNumbers::number_of(std::string_view uid) const {
  const auto found = numbers_.find(uid);
  if (found != numbers_.end()) return found->second;
  std::int32_t number = 0;
  const std::size_t head = made_of(0).find('0');
  if (uid.size() > head) std::from_chars(uid.data() + head, uid.data() + uid.size(), number);
  return uid == made_of(number) && uids_.count(number) == 0 ? number : 0;
}

}  // namespace orvello
