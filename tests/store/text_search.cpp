#include "store/text_search.h"

#include <gtest/gtest.h>

namespace orvello {
namespace {

constexpr CalendarDate kNow = 46200.5;

StoreTexts texts_for(std::int32_t oid, TextView subject, CalendarDate start,
                     bool recurring = false) {
  auto summary = std::make_shared<AppointmentSummary>();
  summary->oid = oid;
  summary->subject = subject;
  summary->recurring = recurring;
  StoreTexts made;
  made.item.start = start;
  made.item.end = start == kNoDate ? kNoDate : start + 0.25;
  made.item.summary = std::move(summary);
  return made;
}

StoreTexts changed_texts(std::int32_t oid, TextView subject, CalendarDate start) {
  StoreTexts made = texts_for(oid, subject, start, true);
  made.changed_occurrence = true;
  return made;
}

TEST(TextQuery, AllWordsMustBeThereAndQuotesKeepThemTogether) {
  StoreTexts one = texts_for(1, u"Dîner chez Théo", kNow);
  auto summary = std::make_shared<AppointmentSummary>(*one.item.summary);
  summary->location = u"Lange Straße 5";
  summary->categories = u"Family,Friends";
  one.item.summary = summary;
  one.body = u"bring the\nwine";
  one.recipients = {{u"Zoë Ångström", u"zoe@example.org"}};
  struct {
    TextView typed;
    bool found;
  } const cases[] = {{u"theo", true},
                     {u"  THEO   diner ", true},
                     {u"strasse", true},
                     {u"theo strasse wine friends zoe", true},
                     {u"theo paris", false},
                     {u"ang example.org", true},
                     {u"\"chez theo\"", true},
                     {u"\"theo chez\"", false},
                     {u"“the wine", true},  // broken lines are blanks, and no quote need end
                     {u"\"theo lange\"", false},
                     {u"\" chez \" wine", true},
                     {u"theo\nlange", true}};
  for (const auto& [typed, found] : cases)
    EXPECT_EQ(TextQuery(typed).matches(one), found) << to_utf8(typed);
  for (const TextView nothing : {u"", u"  ", u"\"\"", u"\"  ", u"\u0301"})
    EXPECT_TRUE(TextQuery(nothing).empty());
}

// Their numbers in order, a star for what is past.
std::string found_order(const TextIndex& index, TextView typed, std::size_t most = 100) {
  std::string list;
  const TextHits hits = index.find(TextQuery(typed), kNow, most);
  for (const TextHit& hit : hits.first)
    list += std::to_string(hit.item.summary->oid) + (hit.past ? "* " : " ");
  return list + std::to_string(hits.count);
}

TEST(TextIndex, ComingOnesComeFirstThenThePastTheLatestFirst) {
  TextIndex index;
  EXPECT_EQ(found_order(index, u"a"), "0");
  index.add(texts_for(1, u"aba past", kNow - 9));
  index.add(texts_for(2, u"ab next week", kNow + 7));
  index.add(texts_for(3, u"b tomorrow", kNow + 1));
  index.add(texts_for(4, u"AB just now", kNow - 0.1));
  index.add(texts_for(5, u"ab undated", kNoDate));
  index.add(texts_for(6, u"yesterday ab", kNow - 1));
  index.add(texts_for(7, u"", kNow));
  index.add(texts_for(8, u"ab last", kNow + 100));
  EXPECT_EQ(found_order(index, u"ab"), "4 2 8 6* 1* 5 6");
  EXPECT_EQ(found_order(index, u"ab", 2), "4 2 6");
  EXPECT_EQ(found_order(index, u"b"), "4 3 2 8 6* 1* 5 7");
  EXPECT_EQ(found_order(index, u"next AB"), "2 1");
  EXPECT_EQ(found_order(index, u"ba"), "1* 1") << "never from one appointment into the next";
  EXPECT_EQ(found_order(index, u""), "0");
  EXPECT_EQ(found_order(index, u"no"), "4 1");
  EXPECT_EQ(found_order(index, u"abx"), "0");
  const TextHits hits = index.find(TextQuery(u"tomorrow"), kNow, 1);
  ASSERT_EQ(hits.first.size(), 1u);
  EXPECT_EQ(hits.first[0].item.summary->subject, u"b tomorrow");
  EXPECT_EQ(hits.first[0].key(), (RowKey{3, kNow + 1}));
}

TEST(TextIndex, ASeriesIsOneHitAndAChangedOccurrenceOneWhereItAloneHasTheWords) {
  TextIndex index;
  index.add(texts_for(1, u"team", kNow + 1, true));
  index.add(changed_texts(1, u"team with guest", kNow + 8));
  index.add(changed_texts(1, u"team", kNow + 15));
  index.add(changed_texts(1, u"guest", kNow + 22));
  index.add(texts_for(2, u"guest", kNow + 30));
  EXPECT_EQ(found_order(index, u"team"), "1 1");
  EXPECT_EQ(found_order(index, u"guest"), "1 1 2 3");
  EXPECT_EQ(index.find(TextQuery(u"with"), kNow, 9).first[0].key(), (RowKey{1, kNow + 8}));
}

// Every word of many texts of many letters is found where a plain search finds it.
TEST(TextIndex, FindsWhatAPlainSearchFinds) {
  TextIndex index;
  std::vector<std::string> all;
  unsigned seed = 7;
  const auto dice = [&seed](unsigned below) {
    return (seed = seed * 1664525 + 1013904223) / 65536 % below;
  };
  for (std::int32_t i = 0; i < 400; ++i) {
    Text subject;
    for (unsigned letters = dice(12); letters > 0; --letters)
      subject += TextView(u"abcdéß ")[dice(7)];
    const StoreTexts one = texts_for(i + 1, subject, kNow + i);
    index.add(one);
    append_searched(all.emplace_back(), one);
  }
  for (int i = 0; i < 500; ++i) {
    Text typed;
    for (unsigned letters = 1 + dice(5); letters > 0; --letters)
      typed += TextView(u"ABcdes ")[dice(7)];
    const TextQuery query(typed);
    const auto expected = std::count_if(all.begin(), all.end(), [&](const std::string& text) {
      return !query.empty() && query.found_in(text);
    });
    EXPECT_EQ(index.find(query, kNow, 5).count, static_cast<std::size_t>(expected))
        << to_utf8(typed);
  }
}

}  // namespace
}  // namespace orvello
