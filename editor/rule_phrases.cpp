#include "editor/rule_phrases.h"

#include <algorithm>
#include <cstdlib>

namespace orvello {
namespace {

constexpr StringId kEverySome[] = {StringId::rule_every_seconds, StringId::rule_every_minutes,
                                   StringId::rule_every_hours,   StringId::rule_every_days,
                                   StringId::rule_every_weeks,   StringId::rule_every_months,
                                   StringId::rule_every_years};
constexpr int kSpelled = 5;  // ordinals in words

}  // namespace

Text RulePhrases::every(Frequency frequency, int interval) const {
  const int unit = static_cast<int>(frequency);
  return interval == 1 ? word(StringId::rule_every_one, unit)
                       : counting(kEverySome[unit], interval);
}

Text RulePhrases::on_weekdays(const std::vector<int>& weekdays) const {
  return format(said(StringId::rule_on_days),
                words(StringId::rule_days_on, weekdays, StringId::rule_and));
}

Text RulePhrases::on_class(int kind) const {
  return word(StringId::rule_on_classes, kind - kNamedWeekday);
}

Text RulePhrases::on_counted_days(const std::vector<CountedDay>& days) const {
  std::vector<Text> pieces;
  for (const CountedDay& day : days) {
    const bool spelled = day.ordinal >= 1 && day.ordinal <= kSpelled;
    pieces.push_back(
        format(said(StringId::rule_nth_day),
               spelled ? word(StringId::rule_nth, day.ordinal - 1) : counted(day.ordinal),
               word(StringId::rule_days, day.kind)));
  }
  return format(said(StringId::rule_on), joined(pieces));
}

Text RulePhrases::on_month_days(const std::vector<int>& days) const {
  std::vector<Text> pieces;
  for (const int day : days)
    pieces.push_back(day > 0 ? counted(day) : format(said(StringId::rule_last_day), counted(day)));
  return format(said(StringId::rule_on), joined(pieces));
}

Text RulePhrases::on_clipped_day(int day) const {
  return format(said(StringId::rule_clipped_day), counted(day));
}

Text RulePhrases::if_weekday(const std::vector<int>& weekdays) const {
  return format(said(StringId::rule_if_days),
                words(StringId::rule_days_if, weekdays, StringId::rule_or));
}

Text RulePhrases::on_date(int day, int month) const {
  return format(said(StringId::rule_date), day, word(StringId::rule_months_of, month - 1));
}

Text RulePhrases::in_months(const std::vector<int>& months, bool of) const {
  std::vector<int> places;
  for (const int month : months) places.push_back(month - 1);
  return format(
      said(of ? StringId::rule_of_months : StringId::rule_in_months),
      words(of ? StringId::rule_months_of : StringId::rule_months_in, places, StringId::rule_and));
}

Text RulePhrases::in_weeks(const std::vector<int>& weeks) const {
  return format(said(StringId::rule_weeks), all_counted(weeks));
}

Text RulePhrases::on_year_days(const std::vector<int>& days) const {
  return format(said(StringId::rule_year_days), all_counted(days));
}

Text RulePhrases::only_some(const std::vector<int>& positions) const {
  return format(said(StringId::rule_only_some), all_counted(positions));
}

Text RulePhrases::at_times(const std::vector<Text>& times) const {
  return format(said(StringId::rule_at_times), joined(times));
}

Text RulePhrases::until(const SystemTime& day) const {
  return format(said(StringId::rule_until), day.day, word(StringId::rule_months_of, day.month - 1),
                day.year);
}

Text RulePhrases::counted(int number) const {
  if (number == -1) return said(StringId::rule_last);
  return numbered(number > 0 ? StringId::rule_number : StringId::rule_number_last,
                  std::abs(number));
}

// "21st": endings go by the last digit, but for 11 to 19, whose own comes last.
Text RulePhrases::numbered(StringId picture, int number) const {
  const std::vector<Text> endings = load_list(StringId::rule_number_endings, language_);
  const auto last = static_cast<std::size_t>(number / 10 % 10 == 1 ? 10 : number % 10);
  return format(said(picture), number, endings[std::min(last, endings.size() - 1)]);
}

Text RulePhrases::joined(const std::vector<Text>& pieces, StringId last) const {
  Text text;
  for (std::size_t i = 0; i < pieces.size(); ++i)
    text = i == 0                   ? pieces[i]
           : i + 1 == pieces.size() ? format(said(last), text, pieces[i])
                                    : text + u", " + pieces[i];
  return text;
}

Text RulePhrases::all_counted(const std::vector<int>& numbers) const {
  std::vector<Text> pieces;
  for (const int number : numbers) pieces.push_back(counted(number));
  return joined(pieces);
}

Text RulePhrases::word(StringId list, int place) const {
  const std::vector<Text> all = load_list(list, language_);
  return all[std::min(static_cast<std::size_t>(place), all.size() - 1)];
}

Text RulePhrases::words(StringId list, const std::vector<int>& places, StringId last) const {
  std::vector<Text> pieces;
  for (const int place : places) pieces.push_back(word(list, place));
  return joined(pieces, last);
}

std::unique_ptr<RulePhrases> phrases_in(Language language) {
  return language == Language::russian ? russian_phrases()
                                       : std::make_unique<RulePhrases>(language);
}

}  // namespace orvello
