#include "resources/strings.h"

#include <algorithm>
#include <array>

namespace orvello {
namespace {

// What stands in the languages' files, one after the other.
enum class LineKind { language, plain, forms };
struct LanguageLine {
  LineKind kind;
  int number;  // of the language or of the text
  TextView text;
};

#define LANGUAGE(name, code, own_name, direction, plurals) \
  {LineKind::language, static_cast<int>(Language::name), {}},
#define TEXT(id, text) {LineKind::plain, static_cast<int>(StringId::id), text},
#define FORMS(id, text) {LineKind::forms, static_cast<int>(StringId::id), text},
constexpr LanguageLine kLines[] = {
#include "resources/languages.inc"
};
#undef LANGUAGE
#undef TEXT
#undef FORMS

#define LANGUAGE(name, code, own_name, direction, plurals) \
  LanguageInfo{Language::name, code, own_name, TextDirection::direction, Plurals::plurals},
#define TEXT(id, text)
#define FORMS(id, text)
constexpr std::array kLanguages = {
#include "resources/languages.inc"
};
#undef LANGUAGE
#undef TEXT
#undef FORMS

using Texts = std::array<LanguageLine, kTextCount>;

constexpr std::size_t count_of(LineKind kind) {
  return static_cast<std::size_t>(std::ranges::count_if(
      kLines, [kind](const LanguageLine& line) { return line.kind == kind; }));
}

// By language and id. A text that is missing, or there twice, must not compile.
static_assert(count_of(LineKind::plain) + count_of(LineKind::forms) ==
                  kLanguages.size() * kTextCount,
              "a language lacks texts, or has too many: see tools/check_texts.py");
constexpr std::array<Texts, kLanguages.size()> by_language() {
  std::array<Texts, kLanguages.size()> found{};
  std::size_t language = 0;
  for (const LanguageLine& line : kLines)
    if (line.kind == LineKind::language)
      language = static_cast<std::size_t>(line.number);
    else
      found[language][static_cast<std::size_t>(line.number)] = line;
  return found;
}
constexpr auto kTexts = by_language();

constexpr std::ptrdiff_t parts_of(TextView text) {
  return 1 + std::count(text.begin(), text.end(), u'|');
}

constexpr bool whole() {
  for (std::size_t language = 0; language < kLanguages.size(); ++language)
    for (const LanguageLine& line : kTexts[language])
      if (line.text.empty() || (line.kind == LineKind::forms &&
                                parts_of(line.text) != plural_forms(kLanguages[language].plurals)))
        return false;
  return true;
}
static_assert(whole(), "a text is missing, or lacks plural forms: see tools/check_texts.py");

TextView text_of(StringId id, Language language) {
  return kTexts[static_cast<std::size_t>(language)][static_cast<std::size_t>(id)].text;
}

}  // namespace

const std::vector<LanguageInfo>& all_languages() {
  static const std::vector<LanguageInfo> languages(kLanguages.begin(), kLanguages.end());
  return languages;
}

const LanguageInfo& language_info(Language language) {
  return kLanguages[static_cast<std::size_t>(language)];
}

std::optional<Language> find_language(TextView code) {
  Text wanted = upper_ascii(code);
  std::ranges::replace(wanted, u'_', u'-');
  while (!wanted.empty()) {
    for (const LanguageInfo& info : kLanguages)
      if (upper_ascii(info.code) == wanted) return info.language;
    const std::size_t dash = wanted.rfind(u'-');
    wanted.erase(dash == Text::npos ? 0 : dash);
  }
  return std::nullopt;
}

Language language_of(const Locale& locale) {
  return find_language(locale.language()).value_or(Language::english);
}

Language language_of(const MessageBoxes& boxes) {
  return find_language(boxes.language()).value_or(Language::english);
}

Text load_string(StringId id, const MessageBoxes& boxes) {
  return load_string(id, language_of(boxes));
}

Text load_string(StringId id, Language language) { return Text(text_of(id, language)); }

Text load_count(StringId id, int count, Language language) {
  const auto forms = load_list(id, language);
  const auto form = static_cast<std::size_t>(plural_form(language_info(language).plurals, count));
  return format(forms[std::min(form, forms.size() - 1)], count);
}

std::vector<Text> load_list(StringId id, Language language) {
  return split(text_of(id, language), u'|');
}

}  // namespace orvello
