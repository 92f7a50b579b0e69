#include <cstdlib>

#include "editor/rule_phrases.h"

namespace orvello {
namespace {

enum class Gender { masculine, feminine, neuter };

// Of the days' kinds, from Sunday to "any day".
constexpr Gender kDayGenders[] = {
    Gender::neuter,   Gender::masculine, Gender::masculine, Gender::feminine,  Gender::masculine,
    Gender::feminine, Gender::feminine,  Gender::masculine, Gender::masculine, Gender::masculine};

// The last but one, the last, none, the first to the fifth; in the accusative.
constexpr TextView kMasculine[] = {u"предпоследний", u"последний", u"",          u"первый",
                                   u"второй",        u"третий",    u"четвёртый", u"пятый"};
constexpr TextView kFeminine[] = {u"предпоследнюю", u"последнюю", u"",          u"первую",
                                  u"вторую",        u"третью",    u"четвёртую", u"пятую"};
constexpr TextView kNeuter[] = {u"предпоследнее", u"последнее", u"",          u"первое",
                                u"второе",        u"третье",    u"четвёртое", u"пятое"};

// "второй", "20-ю", "3-е с конца"
Text ordinal(int number, Gender gender) {
  const auto& words = gender == Gender::masculine  ? kMasculine
                      : gender == Gender::feminine ? kFeminine
                                                   : kNeuter;
  if (number >= -2 && number <= 5 && number != 0) return Text(words[number + 2]);
  const TextView ending = gender == Gender::masculine  ? u"й"
                          : gender == Gender::feminine ? u"ю"
                                                       : u"е";
  return format(u"%d-%s%s", std::abs(number), Text(ending), Text(number < 0 ? u" с конца" : u""));
}

// "в" becomes "во" before these.
Text in_front_of(const Text& word) { return (starts_with(word, u"вто") ? u"во " : u"в ") + word; }

// Ordinals follow their noun, and a preposition follows the ordinal.
class RussianPhrases : public RulePhrases {
 public:
  using RulePhrases::RulePhrases;
  Text on_counted_days(const std::vector<CountedDay>& days) const override {
    std::vector<Text> pieces;
    for (const CountedDay& day : days)
      pieces.push_back(in_front_of(ordinal(day.ordinal, kDayGenders[day.kind])) + u" " +
                       word(StringId::rule_days, day.kind));
    return joined(pieces);
  }
  Text on_month_days(const std::vector<int>& days) const override {
    std::vector<Text> dates, others;
    for (const int day : days)
      if (day > 0)
        dates.push_back(format(u"%d-го", day));
      else
        others.push_back(in_front_of(ordinal(day, Gender::masculine)) + u" день");
    if (!dates.empty()) others.insert(others.begin(), joined(dates) + u" числа");
    return joined(others);
  }
  Text on_clipped_day(int day) const override {
    return format(said(StringId::rule_clipped_day), format(u"%d-го", day));
  }
  Text in_weeks(const std::vector<int>& weeks) const override {
    return format(said(StringId::rule_weeks), all_in_front(weeks, Gender::feminine));
  }
  Text on_year_days(const std::vector<int>& days) const override {
    return format(said(StringId::rule_year_days), all_in_front(days, Gender::masculine));
  }

 protected:
  Text counted(int number) const override { return ordinal(number, Gender::masculine); }

 private:
  Text all_in_front(const std::vector<int>& numbers, Gender gender) const {
    std::vector<Text> pieces;
    for (const int number : numbers) pieces.push_back(ordinal(number, gender));
    return in_front_of(joined(pieces));
  }
};

}  // namespace

std::unique_ptr<RulePhrases> russian_phrases() {
  return std::make_unique<RussianPhrases>(Language::russian);
}

}  // namespace orvello
