// Classes of items by the number of days they cover. An item of class n covers at most
// kSpanDays[n] days beyond its first; items with a zone of their own have classes apart, as the
// device may show them on other days.
#pragma once

#include <cstdint>

namespace orvello {

inline constexpr std::int32_t kSpanDays[] = {0, 1, 7, 31, 366, 4000, 40000, 10000000};
inline constexpr int kSpanClasses = 8;

inline int span_class_of(std::int32_t days_beyond_first, bool zoned) {
  int span = 0;
  while (span < kSpanClasses - 1 && days_beyond_first > kSpanDays[span]) ++span;
  return span + (zoned ? kSpanClasses : 0);
}

}  // namespace orvello
