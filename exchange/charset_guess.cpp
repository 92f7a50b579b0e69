#include <algorithm>

#include "base/text.h"
#include "exchange/charset.h"

namespace orvello {
namespace {

// In order of how often Russian has them.
constexpr std::u16string_view kCyrillic = u"оеаинтсрвлкмдпуяыьгзбчйхжшюцщэфъёіїєґў";
// Of the Western and the Central European languages, as far as their encodings differ.
constexpr std::u16string_view kWestern = u"äöüßéèàçñêåøíóáâîôãõúùëïæÄÖÜÉÅØÑÇ";
constexpr std::u16string_view kCentral = u"łśżźąęćńőűšžřčěůťďňĺľŁŚŻŹĆŐŰŠŽŘČŤĎ";

bool is_ascii_letter(char16_t c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool is_cyrillic(char16_t c) { return c >= 0x400 && c < 0x530; }
bool is_latin(char16_t c) { return c >= 0xC0 && c < 0x250 && c != 0xD7 && c != 0xF7; }
bool is_capital(char16_t c) {
  return (c >= 'A' && c <= 'Z') || (c >= 0x400 && c < 0x430) ||
         (c >= 0xC0 && c < 0xDF && c != 0xD7);
}

int weight(std::u16string_view letters, char16_t letter) {
  const char16_t small = letter >= 0x410 && letter < 0x430   ? static_cast<char16_t>(letter + 32)
                         : letter >= 0x400 && letter < 0x410 ? static_cast<char16_t>(letter + 80)
                                                             : letter;
  const std::size_t place = letters.find(small);
  return place == std::u16string_view::npos ? 0 : 10 - static_cast<int>(place / 4);
}

// How much like words this reading is. A letter counts with its neighbours: Cyrillic stands among
// its own, an accent among plain letters, and no capital follows a small letter.
int likeness(std::u16string_view text) {
  int score = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c < 0x80) continue;
    const char16_t before = i > 0 ? text[i - 1] : u' ';
    const char16_t after = i + 1 < text.size() ? text[i + 1] : u' ';
    const auto beside = [&](auto&& kind) { return (kind(before) ? 1 : 0) + (kind(after) ? 1 : 0); };
    if (is_cyrillic(c)) {
      score += weight(kCyrillic, c) - 8 * beside(is_ascii_letter) - 8 * beside(is_latin);
    } else if (is_latin(c)) {
      const bool usual = kWestern.find(c) != kWestern.npos;
      score += usual ? 6 : kCentral.find(c) != kCentral.npos ? 5 : -2;
      score += 2 * beside(is_ascii_letter) - 8 * beside(is_latin);
    } else if (c < 0xA0 || c == 0xFFFD || (c >= 0x2500 && c < 0x25A0)) {
      score -= 20;  // control codes, what is no character at all, and lines of boxes
    } else if ((c == u'¿' || c == u'¡') && before <= u' ') {
      score += 4;  // begins a Spanish sentence
    } else {
      score -= 6 * beside([](char16_t near) { return is_ascii_letter(near) || is_latin(near); });
    }
    const bool letter = is_cyrillic(c) || is_latin(c);
    const bool follows = is_cyrillic(before) || is_latin(before) || is_ascii_letter(before);
    if (letter && follows && is_capital(c) && !is_capital(before)) score -= 10;
    if (letter && !is_capital(c) && after < 0x80 && is_capital(after)) score -= 10;
  }
  return score;
}

}  // namespace

std::string_view guess_charset(std::string_view bytes) {
  constexpr std::size_t kEnough = 1 << 16;
  std::string_view best = "Windows-1252";
  int most = 0;
  bool first = true;
  for (const std::string_view charset :
       {"Windows-1252", "Windows-1251", "KOI8-R", "Windows-1250"}) {
    auto decoder = TextDecoder::of(charset);
    if (!decoder) continue;
    std::string text;
    decoder->decode(bytes.substr(0, kEnough), text);
    const int score = likeness(to_utf16(text));
    if (!first && score <= most) continue;
    best = charset, most = score, first = false;
  }
  return best;
}

}  // namespace orvello
