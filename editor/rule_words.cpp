#include "editor/rule_words.h"

#include <algorithm>

#include "calendar/rule_text.h"
#include "editor/rule_phrases.h"
#include "store/record_rules.h"

namespace orvello {
namespace {

constexpr std::size_t kMostTimes = 4;  // of a day that are named

std::vector<int> weekdays_of(const Rule& rule) {
  std::vector<int> days;
  for (const RuleDay& day : rule.by_day) days.push_back(day.weekday);
  std::sort(days.begin(), days.end(), [](int a, int b) { return (a + 6) % 7 < (b + 6) % 7; });
  days.erase(std::unique(days.begin(), days.end()), days.end());
  return days;
}

bool has_ordinals(const Rule& rule) {
  return std::any_of(rule.by_day.begin(), rule.by_day.end(),
                     [](const RuleDay& day) { return day.ordinal != 0; });
}

// The kind of day that these weekdays are together; -1: none with a name.
int kind_of(const std::vector<int>& weekdays) {
  int mask = 0;
  for (const int day : weekdays) mask |= 1 << day;
  if (mask == 62) return kNamedWeekday;
  if (mask == 65) return kNamedWeekendDay;
  if (mask == 127) return kNamedAnyDay;
  return weekdays.size() == 1 ? weekdays[0] : -1;
}

// "The last there is of the 28th to the 31st" is how a rule says the 31st, in months without one
// their last day.
bool is_clipped_day(const Rule& rule) {
  const std::vector<int>& days = rule.by_month_day;
  if (days.size() < 2 || days.front() < 28 || rule.by_set_pos != std::vector<int>{-1}) return false;
  for (std::size_t i = 1; i < days.size(); ++i)
    if (days[i] != days[i - 1] + 1) return false;
  return rule.by_day.empty();
}

// Days of which some are counted and some are not, or counted ones that are to be certain dates:
// no words say that briefly.
bool is_beyond_words(const Rule& rule) {
  const auto counted = std::count_if(rule.by_day.begin(), rule.by_day.end(),
                                     [](const RuleDay& day) { return day.ordinal != 0; });
  return counted > 0 &&
         (static_cast<std::size_t>(counted) < rule.by_day.size() || !rule.by_month_day.empty());
}

class Sentence {
 public:
  Sentence(const Rule& rule, const RulePhrases& phrases) : rule_(rule), phrases_(phrases) {}

  Text words() {
    text_ = phrases_.every(rule_.frequency, rule_.interval);
    add_days();
    if (!rule_.by_week_no.empty()) add(phrases_.in_weeks(rule_.by_week_no));
    if (!rule_.by_year_day.empty()) add(phrases_.on_year_days(rule_.by_year_day));
    if (!positions_said_ && !rule_.by_set_pos.empty()) add(phrases_.only_some(rule_.by_set_pos));
    add_times();
    if (rule_.count > 0) text_ += u", " + phrases_.counting(StringId::rule_so_often, rule_.count);
    if (rule_.until) add(phrases_.until(civil_of(day_of(*rule_.until))));
    return std::move(text_);
  }

 private:
  // Behind a blank, unless it brings a comma.
  void add(const Text& piece) { text_ += (starts_with(piece, u",") ? u"" : u" ") + piece; }

  void add_days() {
    const bool date = rule_.frequency == Frequency::yearly && rule_.by_month.size() == 1 &&
                      rule_.by_month_day.size() == 1 && rule_.by_month_day[0] > 0 &&
                      rule_.by_day.empty();
    if (date) {
      add(phrases_.on_date(rule_.by_month_day[0], rule_.by_month[0]));
      return;
    }
    const bool of_days = add_month_days();
    const bool of_weekdays = add_weekdays();
    if (!rule_.by_month.empty()) add(phrases_.in_months(rule_.by_month, of_days || of_weekdays));
  }

  bool add_month_days() {
    std::vector<int> days = rule_.by_month_day;
    if (days.empty()) return false;
    if (is_clipped_day(rule_)) {
      days = {days.back(), -1};
      positions_said_ = true;
    }
    add(positions_said_ ? phrases_.on_clipped_day(days[0]) : phrases_.on_month_days(days));
    return true;
  }

  // Whether days were counted in something.
  bool add_weekdays() {
    if (rule_.by_day.empty()) return false;
    const std::vector<int> days = weekdays_of(rule_);
    const bool in_year = rule_.frequency == Frequency::yearly && rule_.by_month.empty();
    std::vector<CountedDay> counted;
    const int kind = kind_of(days);
    const bool by_position = !rule_.by_set_pos.empty() && !has_ordinals(rule_) && kind >= 0 &&
                             rule_.by_month_day.empty() && rule_.by_week_no.empty() &&
                             rule_.frequency >= Frequency::monthly;
    if (by_position) {
      for (const int position : rule_.by_set_pos) counted.push_back({position, kind});
      positions_said_ = true;
    } else if (has_ordinals(rule_)) {
      for (const RuleDay& day : rule_.by_day) counted.push_back({day.ordinal, day.weekday});
    }
    if (counted.empty()) {
      add(!rule_.by_month_day.empty() ? phrases_.if_weekday(days)
          : kind >= kNamedWeekday     ? phrases_.on_class(kind)
                                      : phrases_.on_weekdays(days));
      return !rule_.by_month_day.empty();
    }
    add(phrases_.on_counted_days(counted));
    if (in_year) add(phrases_.said(StringId::rule_of_the_year));
    return true;
  }

  void add_times() {
    if (rule_.by_hour.empty() && rule_.by_minute.empty() && rule_.by_second.empty()) return;
    const bool plain = rule_.by_second.empty() && rule_.frequency >= Frequency::daily;
    const std::size_t count = rule_.by_hour.size() * rule_.by_minute.size();
    if (!plain || count == 0 || count > kMostTimes) {
      add(phrases_.said(StringId::rule_at_many_times));
      return;
    }
    std::vector<Text> times;
    for (const int hour : rule_.by_hour)
      for (const int minute : rule_.by_minute) times.push_back(format(u"%d:%.2d", hour, minute));
    add(phrases_.at_times(times));
  }

  const Rule& rule_;
  const RulePhrases& phrases_;
  Text text_;
  bool positions_said_ = false;
};

Text words_of(std::string_view line, const RulePhrases& phrases) {
  const Result<Rule> rule = parse_rule(line);
  return rule && !is_beyond_words(*rule) ? Sentence(*rule, phrases).words()
                                         : phrases.said(StringId::rule_of_its_own);
}

}  // namespace

Text rule_words(std::string_view rules, Language language) {
  const auto phrases = phrases_in(language);
  Text text, exceptions;
  int added = 0, excluded = 0;
  for_each_rule_line(rules, [&](std::string_view name, std::string_view value) {
    const int values = static_cast<int>(split_bytes(value, ',').size());
    if (name == "RRULE") text += (text.empty() ? u"" : u"; ") + words_of(value, *phrases);
    if (name == "EXRULE")
      exceptions +=
          u", " + format(phrases->said(StringId::rule_except_rule), words_of(value, *phrases));
    if (name == "RDATE") added += values;
    if (name == "EXDATE") excluded += values;
  });
  if (added > 0)
    text = text.empty() ? phrases->counting(StringId::rule_days_alone, added)
                        : text + u" " + phrases->counting(StringId::rule_more_days, added);
  if (excluded > 0)
    exceptions = u", " + phrases->counting(StringId::rule_except_days, excluded) + exceptions;
  return text.empty() && !rules.empty() ? phrases->said(StringId::rule_of_its_own)
                                        : text + exceptions;
}

Text pattern_words(const RecurrencePattern& pattern, Language language) {
  return Sentence(rule_from_pattern(pattern), *phrases_in(language)).words();
}

}  // namespace orvello
