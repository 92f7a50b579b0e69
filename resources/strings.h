// The texts of menus, dialogs and the screens. A language is one file in languages/, which this
// program is built from: LANGUAGE() with what is to be known of it, then each text.
#pragma once

#include <optional>
#include <vector>

#include "base/text.h"
#include "ports/locale.h"
#include "ports/message_box.h"
#include "resources/ids.h"
#include "resources/plurals.h"

namespace orvello {

enum class Language {
#define LANGUAGE(name, code, own_name, direction, plurals) name,
#define TEXT(id, text)
#define FORMS(id, text)
#include "resources/languages.inc"
#undef LANGUAGE
#undef TEXT
#undef FORMS
};

enum class TextDirection { left_to_right, right_to_left };

struct LanguageInfo {
  Language language;
  TextView code;      // "en", "pt-BR"
  TextView own_name;  // "English", "Русский"
  TextDirection direction;
  Plurals plurals;
};

// In the order of Language.
const std::vector<LanguageInfo>& all_languages();
const LanguageInfo& language_info(Language language);
// By its code, whatever the case; what is more special ("de-AT", "pt_BR") falls back to less.
std::optional<Language> find_language(TextView code);
// English where there are no texts in the locale's.
Language language_of(const Locale& locale);

Language language_of(const MessageBoxes& boxes);

Text load_string(StringId id, Language language);
Text load_string(StringId id, const MessageBoxes& boxes);
// A text that says a number (%d): the form of it that goes with `count`, with the number in it.
Text load_count(StringId id, int count, Language language);
// A text that is a list.
std::vector<Text> load_list(StringId id, Language language);

}  // namespace orvello
