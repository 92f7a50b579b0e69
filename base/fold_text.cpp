#include "base/fold_text.h"

#include <algorithm>
#include <iterator>

namespace orvello {
namespace {

struct FoldRun {
  char16_t first, last;
  char16_t to;  // of step 0 and no letter: it goes
  char16_t step;
};
constexpr FoldRun kFoldRuns[] = {
#define RUN(first, last, to, step) {first, last, to, step},
#define TEXT(letter, text)
#include "base/fold_table.inc"
#undef RUN
#undef TEXT
};

struct FoldedLetters {
  char16_t letter;
  TextView text;
};
constexpr FoldedLetters kFoldedLetters[] = {
#define RUN(first, last, to, step)
#define TEXT(letter, text) {letter, text},
#include "base/fold_table.inc"
#undef RUN
#undef TEXT
};

// Of a syllable of Hangul its letters follow from its number.
constexpr char32_t kSyllables = 0xAC00, kLastSyllable = 0xD7A3;
constexpr char32_t kLeads = 0x1100, kVowels = 0x1161, kTails = 0x11A7;
constexpr char32_t kTailCount = 28, kOfALead = 21 * kTailCount;

void append_syllable(std::string& out, char32_t syllable) {
  const char32_t number = syllable - kSyllables, tail = number % kTailCount;
  append_utf8(out, kLeads + number / kOfALead);
  append_utf8(out, kVowels + number % kOfALead / kTailCount);
  if (tail != 0) append_utf8(out, kTails + tail);
}

void append_blank(std::string& out) {
  if (!out.empty() && out.back() != ' ' && out.back() != '\n') out += ' ';
}

void append_letter(std::string& out, char32_t letter) {
  if (letter >= kSyllables && letter <= kLastSyllable) return append_syllable(out, letter);
  if (letter > 0xFFFF) return append_utf8(out, letter);
  const auto run =
      std::lower_bound(std::begin(kFoldRuns), std::end(kFoldRuns), letter,
                       [](const FoldRun& one, char32_t sought) { return one.last < sought; });
  if (run != std::end(kFoldRuns) && run->first <= letter) {
    const char32_t by = letter - run->first;
    if (run->step == 0 && run->to == 0) return;
    if (run->step == 0 && run->to == u' ') return append_blank(out);
    if (run->step == 0) return append_utf8(out, run->to);
    if (by % run->step == 0) return append_utf8(out, run->to + by);
  }
  const auto text = std::lower_bound(
      std::begin(kFoldedLetters), std::end(kFoldedLetters), letter,
      [](const FoldedLetters& one, char32_t sought) { return one.letter < sought; });
  if (text == std::end(kFoldedLetters) || text->letter != letter) return append_utf8(out, letter);
  for (const char16_t one : text->text) append_utf8(out, one);
}

// The code point at `at`, which goes past it; half of a pair stands for no letter.
char32_t next_letter(TextView text, std::size_t& at) {
  const char16_t unit = text[at++];
  if ((unit & 0xF800) != 0xD800) return unit;
  const bool pair = (unit & 0x400) == 0 && at < text.size() && (text[at] & 0xFC00) == 0xDC00;
  return pair ? 0x10000u + ((unit & 0x3FFu) << 10) + (text[at++] & 0x3FFu) : 0xFFFDu;
}

}  // namespace

void append_folded(std::string& out, TextView text) {
  for (std::size_t at = 0; at < text.size();) {
    const char32_t letter = next_letter(text, at);
    if (letter <= u' ') {
      append_blank(out);
    } else if (letter >= u'A' && letter <= u'Z') {
      out += static_cast<char>(letter + ('a' - 'A'));
    } else if (letter < u'`' || (letter > u'`' && letter < 0x7F)) {
      out += static_cast<char>(letter);
    } else {
      append_letter(out, letter);
    }
  }
}

std::string folded(TextView text) {
  std::string out;
  append_folded(out, text);
  return out;
}

}  // namespace orvello
