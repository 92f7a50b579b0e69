#include "resources/strings.h"

#include <algorithm>
#include <array>

namespace orvello {
namespace {

struct NamedText {
  StringId id;
  TextView text;
};

#define TEXT(id, text) {StringId::id, text},
constexpr NamedText kEnglish[] = {
#include "resources/languages/english.inc"
};
constexpr NamedText kRussian[] = {
#include "resources/languages/russian.inc"
};
#undef TEXT

using Texts = std::array<TextView, kTextCount>;

// By id. A text that is missing, or there twice, must not compile.
template <std::size_t N>
constexpr Texts by_id(const NamedText (&texts)[N]) {
  static_assert(N == kTextCount, "a language lacks texts, or has too many");
  Texts found{};
  for (const NamedText& one : texts) found[static_cast<std::size_t>(one.id)] = one.text;
  return found;
}
constexpr bool whole(const Texts& texts) {
  return std::ranges::none_of(texts, [](TextView text) { return text.empty(); });
}

constexpr Texts kEnglishTexts = by_id(kEnglish), kRussianTexts = by_id(kRussian);
static_assert(whole(kEnglishTexts) && whole(kRussianTexts));

}  // namespace

Language language_of(const Locale& locale) {
  return locale.russian_resources() ? Language::russian : Language::english;
}

Text load_string(StringId id, Language language) {
  const Texts& texts = language == Language::russian ? kRussianTexts : kEnglishTexts;
  return Text(texts[static_cast<std::size_t>(id)]);
}

}  // namespace orvello
