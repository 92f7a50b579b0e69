#include "base/fold_text.h"

#include <gtest/gtest.h>

namespace orvello {
namespace {

TEST(FoldText, WhatReadsTheSameIsTheSame) {
  // Each list's texts are alike, and no two lists'.
  const std::vector<std::vector<TextView>> alike = {
      {u"theo", u"Théo", u"THÉO", u"The\u0301o", u"Ｔｈｅｏ", u"th\u00ADéo"},
      {u"strasse", u"Straße", u"STRASSE", u"STRAẞE", u"ſtraße"},
      {u"aeroe", u"Ærø\u200B\uFE0Fe", u"ÆRØE"},
      {u"lodz dekuji thor", u"Łódź  děkuji\n\tÞór", u"  ŁÓDŹ DĚKUJI\u00A0ÞÓR"},
      {u"istanbul", u"İstanbul", u"ISTANBUL", u"ıstanbul", u"I\u0307stanbul"},
      {u"июль", u"ИЮЛЬ", u"Июль"},
      {u"елка", u"Ёлка", u"Е\u0308ЛКА"},
      {u"чаи", u"чай", u"ЧАИ\u0306"},
      {u"іван", u"ІВАН", u"Їван"},
      {u"οδυσσευσ", u"Ὀδυσσεύς", u"ΟΔΥΣΣΕΥΣ"},
      {u"ωδη", u"ᾠδή", u"ᾨΔΉ"},
      {u"երեւան", u"ԵՐԵՒԱՆ", u"Երևան"},
      {u"თბილისი", u"ᲗᲑᲘᲚᲘᲡᲘ"},
      {u"שלום", u"שָׁלוֹם"},
      {u"احمد 12", u"أَحْمَد ١٢", u"احـمد ۱۲"},
      {u"ガス", u"ｶﾞｽ", u"カ\u3099ス"},
      {u"한글", u"\u1112\u1161\u11AB\u1100\u1173\u11AF"},
      {u"हिन्दी", u"हिन्दी"},
      {u"ที่", u"ที่"},
      {u"o'brien \"x\" - 1/2", u"O’Brien “x” – 1/2", u"O´BRIEN «X» — 1/2"},
      {u"office", u"oﬃce", u"OFFICE"},
      {u"𝄞🌙", u"𝄞🌙"},
      {u"x\xFFFDy", u"X\xD800Y", TextView(u"x\xDC00y")},
  };
  std::vector<std::string> kinds;
  for (const auto& texts : alike) {
    std::string first;
    append_folded(first, texts[0]);
    for (const TextView text : texts) {
      const std::string blank = folded(text);
      EXPECT_EQ(blank, first) << to_utf8(text);
      EXPECT_EQ(folded(to_utf16(blank)), blank) << "folded once is folded for good";
    }
    EXPECT_EQ(std::count(kinds.begin(), kinds.end(), first), 0) << first;
    kinds.push_back(first);
  }
  EXPECT_EQ(kinds[1], "strasse");
  EXPECT_NE(folded(u"हिन्दी"), folded(u"हन्द")) << "vowels that are written as marks stay";
}

// As the table's rows have to be for the search in them.
TEST(FoldText, EveryLetterComesToItsOwnAndStaysThere) {
  for (unsigned unit = 0x21; unit < 0xFFFF; ++unit) {
    if (unit >= 0xD800 && unit < 0xE000) continue;
    const Text letter(1, static_cast<char16_t>(unit));
    const std::string once = folded(letter);
    EXPECT_EQ(folded(to_utf16(once)), once) << std::hex << unit;
  }
  std::string out = "a ";
  append_folded(out, u"  b ");
  EXPECT_EQ(out, "a b ");
}

}  // namespace
}  // namespace orvello
