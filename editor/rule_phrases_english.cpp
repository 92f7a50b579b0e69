#include "calendar/date_text.h"
#include "editor/rule_phrases.h"

namespace orvello {
namespace {

constexpr TextView kMonths[] = {u"January",   u"February", u"March",    u"April",
                                u"May",       u"June",     u"July",     u"August",
                                u"September", u"October",  u"November", u"December"};
constexpr TextView kEnglishUnits[] = {u"second", u"minute", u"hour", u"day",
                                      u"week",   u"month",  u"year"};
constexpr TextView kOrdinals[] = {u"first", u"second", u"third", u"fourth", u"fifth"};

// "21st"
Text numbered(int number) {
  const int last = number % 10, teens = number / 10 % 10;
  const TextView ending = teens == 1  ? u"th"
                          : last == 1 ? u"st"
                          : last == 2 ? u"nd"
                          : last == 3 ? u"rd"
                                      : u"th";
  return format(u"%d", number) + Text(ending);
}

// "the 15th", "the last", "the 2nd last"
Text counted(int number) {
  if (number > 0) return u"the " + numbered(number);
  return number == -1 ? u"the last" : u"the " + numbered(-number) + u" last";
}

Text spelled(int number) {
  return number >= 1 && number <= 5 ? u"the " + Text(kOrdinals[number - 1]) : counted(number);
}

Text kind_name(int kind) {
  if (kind == kNamedWeekday) return u"weekday";
  if (kind == kNamedWeekendDay) return u"weekend day";
  return kind == kNamedAnyDay ? u"day" : Text(kEnglishDayNames[static_cast<std::size_t>(kind)]);
}

class EnglishPhrases : public RulePhrases {
 public:
  Text every(Frequency frequency, int interval) const override {
    const Text unit(kEnglishUnits[static_cast<int>(frequency)]);
    return interval == 1 ? u"Every " + unit : format(u"Every %d %ss", interval, unit);
  }
  Text on_weekdays(const std::vector<int>& weekdays) const override {
    return u" on " + names(weekdays, conjunction());
  }
  Text on_class(int kind) const override {
    if (kind == kNamedAnyDay) return u" on all days";
    return kind == kNamedWeekday ? u" on weekdays" : u" on weekends";
  }
  Text on_counted_days(const std::vector<CountedDay>& days) const override {
    std::vector<Text> pieces;
    for (const CountedDay& day : days)
      pieces.push_back(spelled(day.ordinal) + u" " + kind_name(day.kind));
    return u" on " + joined(pieces);
  }
  Text on_month_days(const std::vector<int>& days) const override {
    std::vector<Text> pieces;
    for (const int day : days) pieces.push_back(counted(day) + (day < 0 ? u" day" : u""));
    return u" on " + joined(pieces);
  }
  Text on_clipped_day(int day) const override {
    return u" on " + counted(day) + u" or the last day";
  }
  Text if_weekday(const std::vector<int>& weekdays) const override {
    return u" if it is a " + names(weekdays, u" or ");
  }
  Text on_date(int day, int month) const override {
    return format(u" on %d %s", day, Text(kMonths[month - 1]));
  }
  Text of_the_year() const override { return u" of the year"; }
  Text in_months(const std::vector<int>& months, bool of) const override {
    std::vector<Text> pieces;
    for (const int month : months) pieces.emplace_back(kMonths[month - 1]);
    return (of ? u" of " : u" in ") + joined(pieces);
  }
  Text in_weeks(const std::vector<int>& weeks) const override {
    return u" in " + all_counted(weeks) + u" week of the year";
  }
  Text on_year_days(const std::vector<int>& days) const override {
    return u" on " + all_counted(days) + u" day of the year";
  }
  Text only_some(const std::vector<int>& positions) const override {
    return u" (of these only " + all_counted(positions) + u")";
  }
  Text at_times(const std::vector<Text>& times) const override { return u" at " + joined(times); }
  Text at_many_times() const override { return u" at certain times"; }
  Text so_often(int count) const override {
    return count == 1 ? Text(u", once") : format(u", %d times", count);
  }
  Text until(const SystemTime& day) const override {
    return format(u" until %d %s %d", day.day, Text(kMonths[day.month - 1]), day.year);
  }
  Text more_days(int count, bool alone) const override {
    if (alone) return count == 1 ? Text(u"On one day") : format(u"On %d days", count);
    return count == 1 ? Text(u" and one more day") : format(u" and %d more days", count);
  }
  Text except_days(int count) const override {
    return count == 1 ? Text(u", except one day") : format(u", except %d days", count);
  }
  Text except_rule(TextView words) const override { return u", except: " + Text(words); }
  Text rule_of_its_own() const override { return u"By a rule of its own"; }
  TextView conjunction() const override { return u" and "; }

 private:
  Text names(const std::vector<int>& weekdays, TextView last) const {
    Text text;
    for (std::size_t i = 0; i < weekdays.size(); ++i) {
      if (i > 0) text += i + 1 == weekdays.size() ? last : TextView(u", ");
      text += kind_name(weekdays[i]);
    }
    return text;
  }
  Text all_counted(const std::vector<int>& numbers) const {
    std::vector<Text> pieces;
    for (const int number : numbers) pieces.push_back(counted(number));
    return joined(pieces);
  }
};

}  // namespace

std::unique_ptr<RulePhrases> english_phrases() { return std::make_unique<EnglishPhrases>(); }

}  // namespace orvello
