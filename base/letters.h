// Letters of the alphabets that labels and names begin with.
#pragma once

#include "base/text.h"

namespace orvello {

// A capital letter for a small one, of Latin, Greek and Cyrillic; everything else as it is.
char16_t capital(char16_t letter);
Text in_capitals(TextView text);

// Whether it may begin a word: of any alphabet, and no digit, blank or sign.
bool is_letter(char16_t unit);
bool is_cyrillic(char16_t unit);

}  // namespace orvello
