#include "options/sorted_texts.h"

#include <algorithm>

namespace orvello {
namespace {

// Those that the locale does not tell apart, such as by case, have an order, too.
auto by_locale(const Locale& locale) {
  return [&locale](const Text& a, const Text& b) {
    const int order = locale.compare(a, b);
    return order != 0 ? order < 0 : a < b;
  };
}

}  // namespace

void sort_texts(std::vector<Text>& texts, const Locale& locale) {
  std::sort(texts.begin(), texts.end(), by_locale(locale));
}

void insert_sorted(std::vector<Text>& texts, Text text, const Locale& locale) {
  const auto at = std::upper_bound(texts.begin(), texts.end(), text, by_locale(locale));
  texts.insert(at, std::move(text));
}

int row_of_text(const std::vector<Text>& texts, TextView text) {
  const auto found = std::find(texts.begin(), texts.end(), text);
  return found == texts.end() ? -1 : static_cast<int>(found - texts.begin());
}

}  // namespace orvello
